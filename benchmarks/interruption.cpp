#include "interruption.h"

#include "failure.h"

#include <csignal>

namespace stowlark {
namespace {

volatile std::sig_atomic_t interrupted = 0;

} // namespace

void noteInterruptions() {
    for (const int number : {SIGHUP, SIGINT, SIGTERM}) {
        std::signal(number, [](int) { interrupted = 1; });
    }
}

void failIfInterrupted() {
    if (interrupted != 0) {
        throw Failure(QStringLiteral("Interrupted."));
    }
}

} // namespace stowlark
