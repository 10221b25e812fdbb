#include "common/ui/Events.h"

#include "common/RunError.h"
#include "common/ui/Messages.h"

#include <QPointer>
#include <new>

namespace tallyroom::Events {

bool run(QWidget* window, const std::function<void()>& command) noexcept {
    const QPointer<QWidget> parent = window; // the command may close its window
    try {
        command();
        return true;
    } catch (const RunError& error) {
        Messages::showRunTimeError(parent, error);
    } catch (const std::bad_alloc&) {
        Messages::showRunTimeError(parent, RunError::make(ErrorNumber::outOfMemory));
    } catch (const std::exception& error) {
        Messages::showRunTimeError(
            parent, {ErrorNumber::internalError, QString::fromUtf8(error.what()), {}});
    }
    return false;
}

} // namespace tallyroom::Events
