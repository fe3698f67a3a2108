// The analysis of the selected applications: a Zorvelrun, or with a search a Find run.
#pragma once

#include <cstdint>
#include <string>

#include "analysis/application_reader.h"

namespace zorvel {

// The word for what a run does, in messages and in the capture record.
enum class RunMode { kZorvelrun, kFind };
std::string_view RunModeWord(RunMode mode);

// How a run ended.
enum class RunOutcome {
    kAbandoned,  // the user kept the data of the last run
    kFailed,     // its files could not be written; there is no capture record
    kFinished,   // its data is complete for the applications that it read
};

class AnalysisRun {
  public:
    // `find` makes it a Find run.
    explicit AnalysisRun(const RunInputs& inputs, FindRun* find = nullptr);

    // Reads every selected application and leaves the temporary data files. Errors are reported, never
    // raised.
    RunOutcome Run();

    // After a Zorvelrun that finished: whether the user wants its data imported at once.
    bool import_wanted() const { return import_wanted_; }

  private:
    // What the run learns of its applications.
    struct Tally {
        std::int32_t processed = 0;
        std::int32_t not_found = 0;
        std::int32_t failed = 0;
        std::int32_t parse_errors = 0;
        std::string tree;
        std::string container;
    };

    bool MayReplaceLastRun();
    RunOutcome Generate();
    // Reads the selected applications. Raises OutputErrors.
    void ReadApplications(RunFiles& files, Tally& tally);
    void PauseAfter(std::int32_t processed);
    void WriteCapture(const Tally& tally);
    void OfferImport(const Tally& tally);
    RunMode mode() const { return find_ != nullptr ? RunMode::kFind : RunMode::kZorvelrun; }

    RunInputs inputs_;
    Services& services_;
    FindRun* find_;
    RunStatus status_;
    RunErrors errors_;
    int step_ = 0;  // of the run, for error reports
    bool import_wanted_ = false;
};

}  // namespace zorvel
