#include "platform/ending_signals.h"

#include <array>
#include <csignal>

namespace zorvel {
namespace {

constexpr std::array<int, 3> kEndingSignals = {SIGINT, SIGTERM, SIGHUP};

// Signals reach a process, not an object.
void (*ending_handler)() = nullptr;

bool IsIgnored(int signal) {
    struct sigaction present {};
    sigaction(signal, nullptr, &present);
    return present.sa_handler == SIG_IGN;
}

void SetHandler(void (*handler)(int)) {
    struct sigaction action {};
    action.sa_handler = handler;
    for (const int signal : kEndingSignals) {
        if (signal != SIGHUP || !IsIgnored(signal)) sigaction(signal, &action, nullptr);
    }
}

void HandleFirst(int /*signal*/) {
    SetHandler(SIG_DFL);
    ending_handler();
}

}  // namespace

void OnEndingSignal(void (*handler)()) {
    ending_handler = handler;
    SetHandler(HandleFirst);
}

}  // namespace zorvel
