// How the user ends an operation that takes long.
#pragma once

#include <cstddef>
#include <functional>

namespace zorvel {

// Asked time and again by an operation: true once the user wants it to end. An empty one never does.
using AskInterrupted = std::function<bool()>;

// What an operation raises that ends because the user wants it to. No Error: nothing has failed, and there is
// nothing to tell.
struct Interrupted {};

// Raises Interrupted when the user wants the operation to end.
inline void EndIfInterrupted(const AskInterrupted& ask) {
    if (ask && ask()) throw Interrupted{};
}

// Asks at some steps of a loop whose steps are short. What it asks must outlive it.
class InterruptionPoint {
  public:
    explicit InterruptionPoint(const AskInterrupted& ask) : ask_(ask) {}

    // To be called at each step. Raises Interrupted.
    void Pass() {
        constexpr std::size_t kSteps = 1024;
        if (++steps_ % kSteps == 0) EndIfInterrupted(ask_);
    }

  private:
    const AskInterrupted& ask_;
    std::size_t steps_ = 0;
};

}  // namespace zorvel
