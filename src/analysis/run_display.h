// What a run shows while it works: the status tab.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "platform/clock.h"
#include "platform/user_interface.h"
#include "streams/run_counters.h"

namespace zorvel {

class RunStatus;

class RunDisplay {
  public:
    virtual ~RunDisplay() = default;

    // Enables the start of a run, which is disabled while one works.
    virtual void EnableGenerate(bool /*enabled*/) {}
    virtual void ShowStatusTab() {}
    virtual void ShowSelectedCount(std::string_view /*text*/) {}
    virtual void ShowCurrentApplication(std::string_view /*count*/, std::string_view /*name*/) {}
    // The counters and times changed; `status` gives their texts. Called often: a display may skip some.
    virtual void ShowStatusCounts(const RunStatus& /*status*/) {}
    // The two progress bars, 0 to 100.
    virtual void ShowStreamProgress(double /*value*/) {}
    virtual void ShowOverallProgress(double /*value*/) {}
    // Shows the closing summary and asks whether to import the data at once; `question` is both in one text.
    virtual bool OfferImport(const std::string& summary, const std::string& question) = 0;
};

// The counters, times and progress of a run.
class RunStatus {
  public:
    RunStatus(const Clock& clock, UserInterface& ui, RunDisplay& display);

    RunCounters counters;

    // Set everything to the start of a run, and of one application.
    void StartRun();
    void StartApplication();

    // Also lets pending events run: it is called often enough for ESC to be noticed in time.
    void RefreshStatusCounts();
    // The progress bar of the current application's streams, and that of the whole run: 0 to 100.
    double stream_progress() const { return stream_progress_; }
    void SetStreamProgress(double value);
    void SetOverallProgress(double value);

    // A counter as its label shows it: thousands separators, "-" for zero.
    static std::string CounterText(std::int32_t count);
    // The time spent on the current application.
    std::string ApplicationTimeText() const;
    // The time since the run's start, and once there is something to reckon from, how long the rest will
    // take.
    std::string OverallTimeText() const;

  private:
    const Clock& clock_;
    UserInterface& ui_;
    RunDisplay& display_;
    double run_start_ = 0;
    double application_start_ = 0;
    double stream_progress_ = 0;
    double overall_progress_ = 0;
};

}  // namespace zorvel
