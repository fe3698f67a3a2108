// A wait that keeps the window alive.
#pragma once

#include "platform/clock.h"
#include "platform/user_interface.h"

namespace zorvel {

// Waits `seconds` (with fractions) while pending window events run, at least once. A wait that spans midnight
// ends there, and one with `stop` as soon as that is set.
void Pause(Clock& clock, UserInterface& ui, double seconds, const bool* stop = nullptr);

}  // namespace zorvel
