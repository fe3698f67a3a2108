// A stand-in for standard error that presses Ctrl-C.
#pragma once

#include <sstream>

#include "batch/batch_window.h"

namespace zorvel::test {

// Interrupts the program at the first message or progress line.
class InterruptingBuffer final : public std::stringbuf {
  public:
    int sync() override {
        BatchWindow::Interrupt();
        return 0;
    }
};

}  // namespace zorvel::test
