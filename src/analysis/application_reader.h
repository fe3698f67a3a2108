// Reads one application of a run: its attributes, associations and streams, and the issues they raise.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/app_issue_slots.h"
#include "analysis/associations.h"
#include "analysis/fingerprint.h"
#include "analysis/run_display.h"
#include "analysis/run_errors.h"
#include "analysis/run_files.h"
#include "analysis/stream_failure_reports.h"
#include "analysis/stream_progress.h"
#include "browser/tree_lists.h"
#include "directory/directory.h"
#include "find/find_run.h"
#include "shell/services.h"

namespace zorvel {

// The waits of a run, in seconds.
struct RunPace {
    double after_application = 0.5;
    double after_parse_error = 1.0;
};

// What a run works with.
struct RunInputs {
    Services& services;
    Directory& directory;
    TreeLists& tree;
    const RuleLists& rules;
    AppIssueSlots& slots;
    std::uint32_t context_handle;
    RunDisplay& display;
    RunPace pace;
    // Tells of a dataset file (a path text) that there is one whose import was completed.
    std::function<bool(const std::string& path)> is_imported = [](const std::string&) { return false; };
};

// The step of a run in which applications are read, as error reports number it.
inline constexpr int kReadApplicationsStep = 8;

class ApplicationReader {
  public:
    // `find` is set in a Find run only.
    ApplicationReader(const RunInputs& inputs, RunFiles& files, RunStatus& status, RunErrors& errors,
                      FindRun* find);

    enum class Outcome { kRead, kNotFound, kFailed };

    // Reads an application and writes all of its records. `number` is its place in the run.
    // Raises only errors that end the run; any other is reported and what can still be read is read.
    Outcome Read(const AppRecord& application, std::int32_t number);

    // The tree and the container (full name) of the application read last.
    const std::string& tree_name() const { return tree_name_; }
    const std::string& container_name() const { return container_name_; }
    // Handled stream parsing errors of the run so far.
    std::int32_t parse_errors() const { return failures_.count(); }
    // The stream that the user interrupted while it had records left, as log lines name it; empty when none.
    const std::string& cut_stream() const { return cut_stream_; }

  private:
    void ReadAttribute(const std::string& attribute);
    void CheckAttribute(const std::string& attribute, std::string& value);
    void ReadStreams();
    void NoteStream(std::string_view attribute);
    void LogStream(const StreamRow& stream);
    // False when the rest of the application's streams is to be left alone.
    bool ReadStream(const StreamRow& stream);
    bool OpenAndRead(const StreamRow& stream, std::string& bytes);
    bool ParseStream(const StreamRow& stream);
    void WriteNotes(const StreamRow& stream);
    void CheckComplexity();
    void WriteSlotIssues();
    void AddIssue(std::string_view entry_type, std::string_view target, std::string_view code);
    // The joined parts, until the next call.
    const std::string& Text(std::initializer_list<std::string_view> parts);

    RunInputs inputs_;
    Services& services_;
    RunFiles& files_;
    RunStatus& status_;
    RunErrors& errors_;
    FindRun* find_;
    AssociationReader association_reader_;
    StreamProgress progress_;
    StreamFailureReports failures_;
    ParseContext parse_;

    // The application at hand.
    std::string_view name_;
    std::string tree_name_;
    std::string full_name_;
    std::string stream_name_;     // how streams are asked for: the full name behind a "."
    std::string container_;       // path
    std::string container_name_;  // full name
    Entry entry_;
    AssociationLists associations_;
    SignatureSet signatures_;
    std::array<bool, kStreamTable.size()> held_streams_{};
    std::size_t logged_streams_ = 0;  // the first so many rows of the stream table
    std::string bytes_;               // of the stream at hand
    std::string text_;                // of Text

    std::string cut_stream_;
    std::vector<std::string> stream_lines_;  // what the log tells of each row of the stream table
};

}  // namespace zorvel
