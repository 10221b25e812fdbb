// The only way by which a signal reaches a handler.
#pragma once

#include <QObject>
#include <QWidget>
#include <functional>
#include <type_traits>
#include <utility>

namespace tallyroom::Events {

// Runs a command of `window`. A RunError that the command does not handle ends it with the
// old run time's error message, and the window lives on: nothing may be thrown through the host's
// event loop. True when the command came to its end.
bool run(QWidget* window, const std::function<void()>& command) noexcept;

// Connects a signal to a handler of `window` that takes the signal's arguments, or none.
template<class Sender, class Signal, class Handler>
QMetaObject::Connection connect(const Sender* sender, Signal signal, QWidget* window,
                                Handler handler) {
    return QObject::connect(sender, signal, window, [window, handler](auto&&... args) {
        run(window, [&] {
            if constexpr (std::is_invocable_v<Handler, decltype(args)...>)
                handler(std::forward<decltype(args)>(args)...);
            else if constexpr (std::is_invocable_v<Handler>)
                handler();
            else
                static_assert(sizeof...(args) == 0, "the handler does not fit the signal");
        });
    });
}

} // namespace tallyroom::Events
