#include "analysis/analysis_run.h"

#include <optional>

#include "platform/code_page.h"
#include "platform/interruption.h"
#include "shell/formats.h"
#include "shell/pause.h"
#include "shell/report_error.h"

namespace zorvel {
namespace {

// Steps of the run, as error reports number them.
constexpr int kCheckStep = 2;
constexpr int kModeStep = 4;
constexpr int kOpenStep = 6;
constexpr int kCloseStep = 9;
constexpr int kFindStep = 11;
constexpr int kOfferStep = 12;

constexpr double kProgressMaximum = 100;

std::string SummaryText(std::int32_t parse_errors, std::int32_t not_found) {
    std::string text = "Zorvelrun finished without any stream parsing errors.";
    if (parse_errors != 0) {
        text =
            "Zorvelrun finished but there were " + Digits(parse_errors) +
            " minor stream parsing error(s), refer to the log file (via Help/Zorvel log file...) for further "
            "information.";
    }
    if (not_found != 0) {
        text += parse_errors == 0 ? "\r\rHowever, " : "\r\rAlso, ";
        text += "Zorvel encountered " + Grouped(not_found) +
                " application(s) which couldn't be Zorvelled as it wasn't physically found in the NDS - this "
                "may be due to the cached version of the Tree not accurately reflecting the current physical "
                "version and you are advised to refresh the cache as soon as possible.";
    }
    return text;
}

}  // namespace

std::string_view RunModeWord(RunMode mode) {
    return mode == RunMode::kFind ? "Find" : "Zorvelrun";
}

AnalysisRun::AnalysisRun(const RunInputs& inputs, FindRun* find)
    : inputs_(inputs),
      services_(inputs.services),
      find_(find),
      status_(inputs.services.clock, inputs.services.ui, inputs.display),
      errors_(inputs.services) {}

RunOutcome AnalysisRun::Run() {
    services_.activity.UserInterrupt = false;
    const auto hold = services_.writers.Acquire();
    if (!hold) return RunOutcome::kAbandoned;
    bool may_replace = true;
    errors_.Try(kCheckStep, [&] { may_replace = MayReplaceLastRun(); });
    if (!may_replace) return RunOutcome::kAbandoned;

    services_.activity.Busy = true;
    inputs_.display.EnableGenerate(false);
    const bool complete = Generate();
    services_.activity.Busy = false;
    services_.activity.UserInterrupt = false;  // it was meant for this run, not for what comes after it
    inputs_.display.EnableGenerate(true);

    RunOutcome outcome = RunOutcome::kFailed;
    if (complete) {
        services_.sounds.PlayEventSound(services_.options.session.FinishedSound);
        outcome = find_ != nullptr ? FinishFind() : RunOutcome::kFinished;
    }
    LogEarlyEnd();
    if (complete && find_ == nullptr) errors_.Try(kOfferStep, [&] { OfferImport(); });
    return outcome;
}

RunOutcome AnalysisRun::FinishFind() {
    try {
        find_->Finish();
        return RunOutcome::kFinished;
    } catch (...) {
        errors_.Report(CurrentError(), kFindStep, " - the results of the Find are incomplete");
        return RunOutcome::kFailed;
    }
}

bool AnalysisRun::MayReplaceLastRun() {
    const std::optional<std::string> captured = UnimportedRun();
    if (!captured) return true;
    return services_.ui.Ask(
        "The data from the last Zorvelrun (on " + *captured +
            ") doesn't appear to have been imported yet.\n\nStarting a new " +
            std::string(RunModeWord(mode())) +
            " will generate a new set of raw data, overwriting the existing one - are you sure you "
            "wish to continue and generate a new data set?",
        MessageIcon::kExclamation, Answer::kNo);
}

// A capture record that is damaged stands for a run that was not imported.
std::optional<std::string> AnalysisRun::UnimportedRun() {
    try {
        const std::optional<CaptureRecord> last = ReadCaptureRecord(services_.files);
        if (!last || UpperCase(last->mode) == "FIND" || WasImported(*last)) return std::nullopt;
        return last->captured;
    } catch (...) {
        const Error error = CurrentError();
        services_.log.WriteWarning("The capture record of the last run is damaged -" + ErrorText(error) +
                                   (error.detail().empty() ? "" : ": " + error.detail()));
        return CapturedOrWritten(services_.files);
    }
}

bool AnalysisRun::WasImported(const CaptureRecord& record) const {
    return inputs_.is_imported(services_.files.Path("Databases\\" + DatasetName(record.captured)));
}

bool AnalysisRun::Generate() {
    int step = kModeStep;
    try {
        if (find_ != nullptr) errors_.Try(kModeStep, [&] { find_->Start(); });
        inputs_.display.ShowStatusTab();
        inputs_.display.ShowSelectedCount(Grouped(inputs_.tree.counts.SelectedCount));
        status_.StartRun();

        step = kOpenStep;
        services_.log.WriteLog("Generate: Opening temp data files...");
        RemoveCaptureRecord(services_.files);  // first: it marks the files as complete
        RunFiles files(services_.files);

        step = kReadApplicationsStep;
        services_.log.WriteLog(std::to_string(inputs_.tree.counts.SelectedCount) +
                               " application(s) selected to Zorvel");
        ReadApplications(files);

        step = kCloseStep;
        services_.status.SetIdle();
        services_.log.WriteLog("Generate: Closing temp data files...");
        files.Close();
        WriteCapture();
        return true;
    } catch (...) {
        const Error error = CurrentError();
        const std::string mode_word(RunModeWord(mode()));
        errors_.Report(error, step, " - the " + mode_word + " has ended, its data files are incomplete");
        services_.status.SetStatus(StatusPicture::kRedBall,
                                   "The " + mode_word + " has ended: " + error.description());
        return false;
    }
}

void AnalysisRun::ReadApplications(RunFiles& files) {
    ApplicationReader reader(inputs_, files, status_, errors_, find_);
    for (const AppRecord& application : inputs_.tree.AppList) {
        if (!application.Selected) continue;
        ++tally_.processed;
        ApplicationReader::Outcome outcome{};
        try {
            outcome = reader.Read(application, tally_.processed);
        } catch (const Interrupted&) {  // the directory was waited for
            services_.activity.UserInterrupt = true;
            --tally_.processed;
            tally_.cut_stream = "Application '" + std::string(application.Name) + "'";
            break;
        }
        tally_.parse_errors = reader.parse_errors();
        tally_.cut_stream = reader.cut_stream();
        if (outcome == ApplicationReader::Outcome::kFailed) {
            ++tally_.failed;
        } else {
            tally_.tree = reader.tree_name();
            if (!tally_.container.empty() && tally_.container != reader.container_name()) {
                tally_.multiple_containers = true;
            }
            tally_.container = reader.container_name();
        }
        if (outcome == ApplicationReader::Outcome::kNotFound) {
            ++tally_.not_found;
            services_.ui.ProcessEvents();
        }
        if (services_.activity.UserInterrupt) break;
        if (outcome != ApplicationReader::Outcome::kNotFound) PauseAfter(tally_.processed);
        if (services_.activity.UserInterrupt) break;
    }
}

void AnalysisRun::PauseAfter(std::int32_t processed) {
    // ESC is not kept waiting by a long throttle.
    const bool* const stop = &services_.activity.UserInterrupt;
    Pause(services_.clock, services_.ui, inputs_.pace.after_application, stop);
    const std::int32_t selected = inputs_.tree.counts.SelectedCount;
    status_.SetOverallProgress(static_cast<double>(processed) / selected * kProgressMaximum);
    Options& options = services_.options;
    if (!options.controls.Checked(CheckGeneral::kEDirThrottle) || processed == selected) return;
    const std::optional<double> throttle = options.Number(&OptionControls::txtThrottle);
    if (!throttle) return;
    services_.status.SetStatus(StatusPicture::kYellowBall, "Throttling option enabled - pausing for " +
                                                               options.controls.txtThrottle + " second(s)");
    Pause(services_.clock, services_.ui, *throttle, stop);
}

void AnalysisRun::WriteCapture() {
    CaptureRecord record;
    record.captured = DateAndTime(services_.clock.Now());
    record.tree = tally_.tree;
    record.container = tally_.multiple_containers ? "[Multiple OUs]" : tally_.container;
    record.app_count = Digits(tally_.processed - tally_.not_found - tally_.failed);
    for (std::size_t i = 0; i < kCounterCount; ++i)
        record.totals[i] = Digits(status_.counters.run[i]);
    record.mode = RunModeWord(mode());
    WriteCaptureRecord(services_.files, record);
}

// The last line of a run that did not read all that was selected.
void AnalysisRun::LogEarlyEnd() {
    const std::int32_t selected = inputs_.tree.counts.SelectedCount;
    if (tally_.processed == selected && tally_.cut_stream.empty()) return;
    std::string line = "The " + std::string(RunModeWord(mode())) + " ended after" +
                       PlainNumber(tally_.processed) + " of" + PlainNumber(selected) + " application(s)";
    if (!tally_.cut_stream.empty()) line += " - " + tally_.cut_stream + " was cut";
    services_.log.WriteWarning(line);
}

void AnalysisRun::OfferImport() {
    const std::string summary = SummaryText(tally_.parse_errors, tally_.not_found);
    import_wanted_ = inputs_.display.OfferImport(
        summary, summary + "\r\rWould you like to import the generated data now?");
    if (import_wanted_) return;
    services_.ui.Tell(
        "When convenient, you can import the generated data from the LAST Zorvelrun via the Database menu..",
        MessageIcon::kInformation);
}

}  // namespace zorvel
