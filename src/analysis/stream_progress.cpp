#include "analysis/stream_progress.h"

#include <utility>

#include "shell/formats.h"

namespace zorvel {
namespace {

constexpr double kProgressMaximum = 100;
constexpr double kUpdateInterval = 1.0;  // seconds between two updates of the displays
constexpr double kEventInterval = 0.1;   // and between two looks at the pending events

}  // namespace

StreamProgress::StreamProgress(Services& services, RunStatus& status, double share, bool only_application)
    : services_(services), status_(status), share_(share), only_application_(only_application) {}

void StreamProgress::Begin() {
    interrupted_before_ = services_.activity.UserInterrupt;
    first_progress_ = status_.stream_progress();
    last_update_ = services_.clock.CoarseTimer();
    next_events_ = kEventInterval;
}

bool StreamProgress::GoOn(std::size_t position, std::size_t size) {
    if (services_.activity.UserInterrupt && !interrupted_before_) return false;
    const double since_update = services_.clock.CoarseTimer() - last_update_;
    if (since_update < next_events_) return true;
    services_.ui.ProcessEvents();
    next_events_ = since_update + kEventInterval;
    if (since_update >= kUpdateInterval)
        UpdateDisplays(static_cast<double>(position) / static_cast<double>(size));
    return true;
}

void StreamProgress::UpdateDisplays(double fraction) {
    services_.status.SetStatus(StatusPicture::kYellowBall,
                               std::string_view("Saving eDirectory information for '" + application_name_ +
                                                " - " + Percentage(fraction)));
    status_.RefreshStatusCounts();
    const double progress = first_progress_ + share_ * fraction;
    status_.SetStreamProgress(progress);
    if (only_application_) status_.SetOverallProgress(progress);
    last_update_ = services_.clock.CoarseTimer();
    next_events_ = kEventInterval;
}

void StreamProgress::End() {
    if (services_.activity.UserInterrupt && !std::exchange(interruption_logged_, true))
        services_.log.WriteLog("ParseAOT: User interrupted Zorvelrun with ESC key");
    status_.RefreshStatusCounts();
    status_.SetStreamProgress(kProgressMaximum);
}

}  // namespace zorvel
