// How long the searches of a run may take, all together.
#pragma once

#include <cstddef>

#include "platform/clock.h"

namespace zorvel {

class FindBudget {
  public:
    // Charges the time from its beginning to its end for the search of `bytes`.
    class Charge {
      public:
        Charge(FindBudget& budget, const Clock& clock, std::size_t bytes)
            : budget_(budget), clock_(clock), start_(clock.CoarseTimer()) {
            budget_.bytes_ += static_cast<double>(bytes);
        }
        ~Charge() { budget_.seconds_ += clock_.CoarseTimer() - start_; }
        Charge(const Charge&) = delete;
        Charge& operator=(const Charge&) = delete;

      private:
        FindBudget& budget_;
        const Clock& clock_;
        double start_;
    };

    // What was charged so far, in seconds.
    double seconds() const { return seconds_; }
    // True when that is more than sensible expressions take: a fixed time, and what a slow one needs for its
    // bytes.
    bool IsSpent() const { return seconds_ > kSeconds + bytes_ / kBytesPerSecond; }

  private:
    static constexpr double kSeconds = 30;
    static constexpr double kBytesPerSecond = 4e6;

    double seconds_ = 0;
    double bytes_ = 0;
};

}  // namespace zorvel
