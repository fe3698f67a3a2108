// The analysis of the selected applications: a Zorvelrun, or with a search a Find run.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "analysis/application_reader.h"

namespace zorvel {

// The word for what a run does, in messages and in the capture record.
enum class RunMode { kZorvelrun, kFind };
std::string_view RunModeWord(RunMode mode);

// How a run ended.
enum class RunOutcome {
    kAbandoned,  // the user kept the data of the last run, or another program writes to the folder
    kFailed,     // it could not write its files or reach the directory; there is no capture record
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
    // How many applications could not be read, other than those that no longer exist. Each was reported.
    std::int32_t failed_applications() const { return tally_.failed; }

  private:
    // What the run learns of its applications.
    struct Tally {
        std::int32_t processed = 0;
        std::int32_t not_found = 0;
        std::int32_t failed = 0;
        std::int32_t parse_errors = 0;
        std::string tree;
        std::string container;  // of the application read last
        bool multiple_containers = false;
        std::string cut_stream;  // as the log names it; empty when no stream was cut
    };

    bool MayReplaceLastRun();
    // When the last run ended, if its data was not imported; nothing when there is no data to lose.
    std::optional<std::string> UnimportedRun();
    // Raises error 13 when the record's date does not tell the name of its dataset.
    bool WasImported(const CaptureRecord& record) const;
    // Makes the data files and the capture record; false when the run had to end, which was reported.
    bool Generate();
    void ReadApplications(RunFiles& files);
    void PauseAfter(std::int32_t processed);
    void WriteCapture();
    RunOutcome FinishFind();
    void OfferImport();
    void LogEarlyEnd();
    RunMode mode() const { return find_ != nullptr ? RunMode::kFind : RunMode::kZorvelrun; }

    RunInputs inputs_;
    Services& services_;
    FindRun* find_;
    RunStatus status_;
    RunErrors errors_;
    Tally tally_;
    bool import_wanted_ = false;
};

}  // namespace zorvel
