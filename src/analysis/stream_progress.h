// What a run does between the records of a long stream: the displays, pending events, and its end at ESC.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "analysis/run_display.h"
#include "shell/services.h"
#include "streams/parse_context.h"

namespace zorvel {

class StreamProgress final : public ParseProgress {
  public:
    // That of one run. Each stream moves the progress bar of an application's streams by `share`, and with
    // `only_application` the overall bar, too.
    StreamProgress(Services& services, RunStatus& status, double share, bool only_application);

    // The streams that follow are those of the application `name`, as the status line calls it.
    void BeginApplication(std::string_view name) { application_name_ = name; }

    void Begin() override;
    // Ends the stream when ESC was pressed behind its beginning. What was interrupted before is an
    // application that is to be finished: its later streams are read whole.
    bool GoOn(std::size_t position, std::size_t size) override;
    void End() override;

  private:
    void UpdateDisplays(double fraction);

    Services& services_;
    RunStatus& status_;
    const double share_;
    const bool only_application_;
    std::string application_name_;
    bool interruption_logged_ = false;  // the log tells of the user's interruption of the run

    // Of the stream at hand.
    bool interrupted_before_ = false;
    double first_progress_ = 0;  // the progress bar at its beginning
    double last_update_ = 0;     // on the clock's CoarseTimer
    double next_events_ = 0;     // seconds after last_update_
};

}  // namespace zorvel
