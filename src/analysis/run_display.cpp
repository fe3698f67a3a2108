#include "analysis/run_display.h"

#include "shell/formats.h"

namespace zorvel {
namespace {

constexpr double kProgressMaximum = 100;
// A run must have come this far, in percent and in seconds, before its end is reckoned.
constexpr double kReckonAfter = 4;

std::string Elapsed(double seconds) {
    return FormatElapsed(static_cast<std::int64_t>(seconds));
}

}  // namespace

RunStatus::RunStatus(const Clock& clock, UserInterface& ui, RunDisplay& display)
    : clock_(clock), ui_(ui), display_(display) {}

void RunStatus::RefreshStatusCounts() {
    display_.ShowStatusCounts(*this);
    ui_.ProcessEvents();
}

void RunStatus::StartRun() {
    SetStreamProgress(0);
    SetOverallProgress(0);
    counters.run.fill(0);
    run_start_ = clock_.Timer();
}

void RunStatus::StartApplication() {
    counters.application.fill(0);
    application_start_ = clock_.Timer();
    RefreshStatusCounts();
    SetStreamProgress(0);
}

void RunStatus::SetStreamProgress(double value) {
    stream_progress_ = value;
    display_.ShowStreamProgress(value);
}

void RunStatus::SetOverallProgress(double value) {
    overall_progress_ = value;
    display_.ShowOverallProgress(value);
}

std::string RunStatus::CounterText(std::int32_t count) {
    return GroupedOrDash(count);
}

std::string RunStatus::ApplicationTimeText() const {
    return Elapsed(SecondsSince(clock_, application_start_));
}

std::string RunStatus::OverallTimeText() const {
    const double elapsed = SecondsSince(clock_, run_start_);
    std::string text = Elapsed(elapsed);
    if (overall_progress_ > kReckonAfter && elapsed > kReckonAfter && overall_progress_ < kProgressMaximum) {
        const double seconds_per_percent = elapsed / overall_progress_;
        text += "   (" + Elapsed((kProgressMaximum - overall_progress_) * seconds_per_percent) + " remains)";
    }
    return text;
}

}  // namespace zorvel
