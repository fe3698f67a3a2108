// A stand-in for the clock.
#pragma once

#include "platform/clock.h"

namespace zorvel::test {

// A clock that stands still except while somebody sleeps, or moves on by `tick` seconds whenever its timer is
// read. It begins at 16 November 2026, 17:28:05.
class FakeClock final : public Clock {
  public:
    DateTime now{2026, 11, 16, 17, 28, 5};
    mutable double timer = 17 * 3600 + 28 * 60 + 5;
    double tick = 0;
    double slept = 0;
    int days = 0;  // midnights since it began

    DateTime Now() const override { return now; }
    double Timer() const override { return timer += tick; }
    double CoarseTimer() const override { return days * 86400 + Timer(); }
    void Sleep(double seconds) override {
        slept += seconds;
        timer += seconds;
        if (timer < 86400) return;
        timer -= 86400;
        ++days;
    }
};

}  // namespace zorvel::test
