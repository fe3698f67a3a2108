#include "shell/pause.h"

#include <algorithm>

namespace zorvel {
namespace {

constexpr double kRound = 0.02;  // seconds between two looks at the pending events

}  // namespace

void Pause(Clock& clock, UserInterface& ui, double seconds, const bool* stop) {
    const double start = clock.Timer();
    ui.ProcessEvents();
    for (double now = clock.Timer(); now >= start && now < start + seconds; now = clock.Timer()) {
        if (stop != nullptr && *stop) return;
        clock.Sleep(std::min(kRound, start + seconds - now));
        ui.ProcessEvents();
    }
}

}  // namespace zorvel
