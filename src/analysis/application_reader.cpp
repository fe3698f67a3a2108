#include "analysis/application_reader.h"

#include <array>
#include <optional>
#include <utility>

#include "analysis/attribute_text.h"
#include "issues/issue_catalogue.h"
#include "platform/code_page.h"
#include "shell/formats.h"
#include "streams/parse_aot.h"
#include "streams/portable_paths.h"
#include "streams/signature.h"

namespace zorvel {
namespace {

constexpr std::string_view kApplicationEntry = "Application";
constexpr int kReadFlag = 1;
// A stream must be longer than its signature, 8 bytes, to hold anything.
constexpr std::size_t kShortestStream = 9;
// The share of the progress bar that each stream gets: the whole part of 100 / 11.
constexpr std::size_t kWholeStep = 100 / kStreamTable.size();
constexpr auto kProgressStep = static_cast<double>(kWholeStep);
// The icon orders that the launcher accepts.
constexpr double kLowestIconOrder = -1;
constexpr double kHighestIconOrder = 999;

bool IsBlank(std::string_view text) {
    return text.find_first_not_of(' ') == std::string_view::npos;
}

// Closes a stream when it goes out of scope, also after a failed read.
class StreamHandle {
  public:
    StreamHandle(Directory& directory, int handle) : directory_(directory), handle_(handle) {}
    ~StreamHandle() {
        try {
            directory_.CloseHandle(handle_);
        } catch (const Error&) {
            // The bytes are read or the failure is on its way; a handle that will not close changes neither.
        }
    }
    StreamHandle(const StreamHandle&) = delete;
    StreamHandle& operator=(const StreamHandle&) = delete;

  private:
    Directory& directory_;
    int handle_;
};

// Tells a Find run of a stream's begin and end, also when it cannot be read.
class FindScope {
  public:
    FindScope(FindRun* find, std::string_view application_name, std::string_view full_name,
              std::string_view stream_label)
        : find_(find) {
        if (find_ != nullptr) find_->BeginStream(application_name, full_name, stream_label);
    }
    ~FindScope() {
        if (find_ != nullptr) find_->EndStream();
    }
    FindScope(const FindScope&) = delete;
    FindScope& operator=(const FindScope&) = delete;

  private:
    FindRun* find_;
};

}  // namespace

ApplicationReader::ApplicationReader(const RunInputs& inputs, RunFiles& files, RunStatus& status,
                                     RunErrors& errors, FindRun* find)
    : inputs_(inputs),
      services_(inputs.services),
      files_(files),
      status_(status),
      errors_(errors),
      find_(find),
      association_reader_(
          services_, inputs.directory, files, status,
          [&errors](const Error& error) { errors.Report(error, kReadApplicationsStep, " - continuing"); }),
      progress_(services_, status, kProgressStep, inputs.tree.counts.SelectedCount == 1),
      failures_(services_, inputs.pace.after_parse_error),
      parse_{.rules = inputs.rules,
             .issues = files,
             .counters = status.counters,
             .progress = progress_,
             .failures = failures_,
             .finder = find} {
    for (const StreamRow& stream : kStreamTable)
        stream_lines_.push_back(Text({"Zorvelling Stream '", stream.label, "'..."}));
}

ApplicationReader::Outcome ApplicationReader::Read(const AppRecord& application, std::int32_t number) {
    constexpr int kLine = kReadApplicationsStep;
    Directory& directory = inputs_.directory;
    name_ = application.Name;
    progress_.BeginApplication(name_);
    signatures_ = {};
    associations_ = {};
    held_streams_.fill(false);
    logged_streams_ = 0;
    status_.StartApplication();
    inputs_.slots.Reset();
    inputs_.display.ShowCurrentApplication(Grouped(number), name_);

    const std::string path = std::string(application.Container) + '\\' + std::string(name_);
    // Without its names nothing can be written of an application: every record begins with them.
    const bool named = errors_.Try(kLine, [&] {
        tree_name_ = directory.TreeNameOf(path);
        if (application.Container != container_) {
            container_name_ = directory.FullName(application.Container);
            container_ = application.Container;
        }
        full_name_ = directory.FullName(path);
        stream_name_ = '.' + full_name_;
    });
    if (!named) return Outcome::kFailed;
    if (services_.options.session.AppNamesWithSpacesIllegal && name_.find(' ') != std::string_view::npos) {
        AddIssue(kApplicationEntry, "", CodeOf(Issue::kInvalidName));
    }
    try {
        entry_ = directory.LookUp(path);
    } catch (const Interrupted&) {
        throw;
    } catch (...) {
        const Error error = CurrentError();
        if (error.number() == errors::kNoSuchObject) return Outcome::kNotFound;
        if (EndsRun(error)) throw;
        // Without the object there is nothing to judge: no record is better than a wrong one.
        errors_.Report(error, kLine, " - continuing");
        return Outcome::kFailed;
    }

    std::vector<std::string> attributes;
    errors_.Try(kLine, [&] { attributes = directory.AttributeNames(entry_); });
    services_.log.WriteLog(
        Text({"Zorvelling Attributes for app #", std::to_string(number), ",'", path, "'..."}));
    for (const std::string& attribute : attributes) {
        errors_.TryAt(kLine, full_name_, attribute, [&] { ReadAttribute(attribute); });
    }
    ReadStreams();
    files_.WriteAppAssociations(full_name_, JoinValues(associations_.groups),
                                JoinValues(associations_.containers), JoinValues(associations_.workstations),
                                associations_.users, signatures_.AppFingerPrint());
    CheckComplexity();
    WriteSlotIssues();
    return Outcome::kRead;
}

void ApplicationReader::ReadAttribute(const std::string& attribute) {
    status_.RefreshStatusCounts();
    services_.status.SetStatus(StatusPicture::kYellowBall, Text({"Zorvelling attributes - ", attribute}));
    const std::string_view syntax = inputs_.directory.AttributeSyntax(entry_, attribute);
    if (syntax == kStreamSyntax) return NoteStream(attribute);
    const bool acl = syntax == kAclSyntax;
    std::string value;
    if (!acl || find_ == nullptr) {
        std::vector<std::string> values;
        try {
            values = inputs_.directory.AttributeValues(entry_, attribute);
        } catch (const Error& error) {
            if (error.number() != errors::kNoSuchValue) throw;
        }
        if (acl) association_reader_.Read(full_name_, values, associations_);
        value = AttributeText(syntax, std::move(values));
    }
    files_.WriteAttribute(full_name_, attribute, value);
    CheckAttribute(attribute, value);
}

void ApplicationReader::CheckAttribute(const std::string& attribute, std::string& value) {
    const auto is = [&](std::string_view name) { return EqualIgnoringCase(attribute, name); };
    const bool path = is("APP:PATH");
    if (path || is("APP:WORKING DIRECTORY")) {
        const std::int32_t signature = ConvertToSig(value);
        if (CheckMacroReplacements(value)) {
            AddIssue(path ? "Path to Executable" : "Working Directory", value, CodeOf(Issue::kFilePortable));
        }
        signatures_.Add(Signature::kApplication, signature);
    } else if (is("APP:PARAMETERS")) {
        signatures_.Add(Signature::kApplication, ConvertToSig(value));
    } else if (is("APP:DESCRIPTION") || is("ZENAPPPACKAGEDESCRIPTION")) {
        if (!IsBlank(value)) inputs_.slots.Set(AppIssue::kNoDescription, false);
    } else if (is("ACL")) {
        inputs_.slots.Set(AppIssue::kNoAssociations, false);
    } else if (is("APP:ICON ORDER")) {
        const double order = NumericValue(value);
        if (order < kLowestIconOrder || order > kHighestIconOrder)
            AddIssue(kApplicationEntry, "", CodeOf(Issue::kInvalidRunOrder));
    }
}

void ApplicationReader::ReadStreams() {
    services_.status.SetStatus(StatusPicture::kYellowBall, "Zorvelling Streams..");
    bool go_on = true;
    double progress = 0;
    for (const StreamRow& stream : kStreamTable) {
        const auto read = [&] { go_on = ReadStream(stream); };
        if (go_on) errors_.TryAt(kReadApplicationsStep, full_name_, stream.label, read);
        progress += kProgressStep;
        status_.SetStreamProgress(progress);
    }
}

// Marks a stream as one that the object holds.
void ApplicationReader::NoteStream(std::string_view attribute) {
    for (std::size_t row = 0; row < kStreamTable.size(); ++row)
        held_streams_[row] = held_streams_[row] || EqualIgnoringCase(attribute, kStreamTable[row].attribute);
}

// Logs that a stream is read, unless that was done. Where the object holds no stream, nothing comes between
// its line and the next: such lines are written at once.
void ApplicationReader::LogStream(const StreamRow& stream) {
    const auto row = static_cast<std::size_t>(&stream - kStreamTable.data());
    if (row < logged_streams_) return;
    const std::size_t first = logged_streams_;
    while (!held_streams_[logged_streams_++] && logged_streams_ < kStreamTable.size()) {
    }
    services_.log.WriteLog(std::span(stream_lines_).subspan(first, logged_streams_ - first));
}

bool ApplicationReader::ReadStream(const StreamRow& stream) {
    LogStream(stream);
    services_.status.SetStatus(StatusPicture::kYellowBall,
                               Text({"Querying eDirectory for '", name_, "' ", stream.label}));
    status_.RefreshStatusCounts();
    if (!OpenAndRead(stream, bytes_)) return true;
    const FindScope scope(find_, name_, full_name_, stream.label);
    if (stream.file != nullptr) return ParseStream(stream);
    WriteNotes(stream);
    return true;
}

bool ApplicationReader::OpenAndRead(const StreamRow& stream, std::string& bytes) {
    Directory& directory = inputs_.directory;
    int handle = 0;
    if (directory.NWDSOpenStream(inputs_.context_handle, stream_name_, stream.attribute, kReadFlag, handle) !=
        0) {
        return false;  // many applications have no such stream
    }
    const StreamHandle closer(directory, handle);
    const std::size_t size = directory.GetFileSize(handle);
    if (size < kShortestStream && stream.file != nullptr) return false;
    directory.ReadFile(handle, size, bytes);
    return true;
}

bool ApplicationReader::ParseStream(const StreamRow& stream) {
    const std::int32_t errors_before = failures_.count();
    std::int32_t signature = 0;
    const ParseResult result = ParseAOT(parse_, files_.StreamFile(stream), full_name_, bytes_, signature);
    if (result == ParseResult::kRejected || failures_.count() != errors_before) {
        services_.log.WriteLog(Text(
            {"WARNING: Stream '", stream.label, "' of '", full_name_, "' could not be read to its end"}));
    }
    if (result == ParseResult::kCut) {
        cut_stream_ = Text({"Stream '", stream.label, "' of '", full_name_, "'"});
        services_.log.WriteLog(Text({"WARNING: ", cut_stream_, " was cut by the user's interruption"}));
    }
    if (result == ParseResult::kRejected) return false;
    if (stream.signature) signatures_.Add(*stream.signature, signature);
    return true;
}

void ApplicationReader::WriteNotes(const StreamRow& stream) {
    if (IsBlank(bytes_)) return;
    inputs_.slots.Set(AppIssue::kNoAdminNotes, false);
    files_.WriteAttribute(full_name_, stream.attribute, bytes_);
}

void ApplicationReader::CheckComplexity() {
    struct Threshold {
        CheckGeneral enabled;
        NumberText number;
        Counter counter;
        AppIssue issue;
    };
    constexpr std::array<Threshold, 3> kThresholds = {{
        {CheckGeneral::kSlowINIFileThreshold, &OptionControls::txtSlowINIThreshold, Counter::kIni,
         AppIssue::kComplexIni},
        {CheckGeneral::kSlowTextFileThreshold, &OptionControls::txtSlowTextThreshold, Counter::kText,
         AppIssue::kComplexText},
        {CheckGeneral::kSlowRegistryThreshold, &OptionControls::txtSlowRegistryThreshold, Counter::kRegistry,
         AppIssue::kComplexRegistry},
    }};
    Options& options = services_.options;
    for (const Threshold& threshold : kThresholds) {
        if (!options.controls.Checked(threshold.enabled)) continue;
        const std::optional<double> limit = options.Number(threshold.number);
        if (limit && status_.counters.OfApplication(threshold.counter) > *limit)
            inputs_.slots.Set(threshold.issue, true);
    }
}

void ApplicationReader::WriteSlotIssues() {
    for (const AppIssueSlots::Slot& slot : inputs_.slots.slots) {
        if (slot.on && !slot.code.empty()) AddIssue(kApplicationEntry, "", slot.code);
    }
}

void ApplicationReader::AddIssue(std::string_view entry_type, std::string_view target,
                                 std::string_view code) {
    status_.counters.Add(Counter::kIssues);
    files_.WriteIssue(full_name_, entry_type, target, "", code);
    status_.RefreshStatusCounts();
}

const std::string& ApplicationReader::Text(std::initializer_list<std::string_view> parts) {
    text_.clear();
    for (const std::string_view part : parts)
        text_ += part;
    return text_;
}

}  // namespace zorvel
