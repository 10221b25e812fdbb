#include "host/BreakOff.h"

#include "common/RunError.h"

#include <csignal>

namespace tallyroom::host::BreakOff {

namespace {

volatile std::sig_atomic_t isWanted = 0;

void want(int signal) {
    isWanted = 1;
    std::signal(signal, SIG_DFL);
}

} // namespace

// What is ignored stays so: a program that is to outlive its terminal.
void allow() {
    std::signal(SIGPIPE, SIG_IGN); // who reads no further has not broken it off
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        if (std::signal(signal, want) == SIG_IGN)
            std::signal(signal, SIG_IGN);
    }
}

void check() {
    constexpr int userInterrupt = 18;
    if (isWanted != 0)
        throw RunError(userInterrupt, QStringLiteral("Broken off. Nothing is left of it."),
                       QStringLiteral("Brightclock"));
}

} // namespace tallyroom::host::BreakOff
