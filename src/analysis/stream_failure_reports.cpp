#include "analysis/stream_failure_reports.h"

#include <array>
#include <string>
#include <utility>

#include "find/engine_failure.h"
#include "shell/formats.h"
#include "shell/pause.h"
#include "shell/report_error.h"

namespace zorvel {

StreamFailureReports::StreamFailureReports(Services& services, double wait)
    : services_(services), wait_(wait) {}

void StreamFailureReports::RefuseStream() {
    services_.log.WriteLog("WARNING: ParseAOT: string passed to routine doesn't have an AOT ID");
}

bool StreamFailureReports::Handle(const Error& error, const ParsePlace& place) {
    services_.sounds.PlayEventSound(services_.options.session.WarningSound);
    if (error.number() == errors::kNoAutomation) {
        services_.activity.UserInterrupt = true;
        OfferEngineDownload(services_.ui, error, "ParseAOT");
        services_.log.WriteLog("ERROR: Error #" + ErrorText(error) + " occurred in ParseAOT");
        return false;
    }
    Pause(services_.clock, services_.ui, wait_);
    Report(error, place, Advice(CreateDump(place)));
    ++count_;
    return true;
}

std::string StreamFailureReports::CreateDump(const ParsePlace& place) {
    if (!services_.options.session.CreateDMPFileOnError) return {};
    std::string dump_file = NewDumpPath();
    try {
        WriteDump(dump_file, place);
        return dump_file;
    } catch (const Error& error) {
        ReportLostDump(dump_file, error);
        return {};
    }
}

// Named after the second; a second of many dump files numbers them from the second one on.
std::string StreamFailureReports::NewDumpPath() {
    std::string name = "Tempdata\\Zorvel_" + TimeStamp(services_.clock.Now());
    const int number = ++dumps_[name];
    if (number > 1) name += '_' + std::to_string(number);
    return services_.files.Path(name + ".dmp");
}

void StreamFailureReports::ReportLostDump(const std::string& dump_file, const Error& error) {
    const std::string text =
        "Error" + ErrorText(error) + " occurred while the .DMP file (" + dump_file + ") was written";
    services_.log.WriteLog("WARNING: ParseAOT: " + text);
    LogDetail(services_.log, error);
    if (std::exchange(lost_dump_told_, true)) return;
    services_.ui.Tell(text + " - the run goes on without it", MessageIcon::kExclamation);
}

std::string StreamFailureReports::Advice(const std::string& dump_file) const {
    std::string advice = " - to aid diagnosis of this problem, please send the ";
    if (!dump_file.empty()) advice += "created .DMP file (" + dump_file + ") and the ";
    advice += "Zorvel log file (" + services_.log.LogFileName() +
              ") to the maintainer, using the data-sending option of the Help menu.";
    return advice;
}

void StreamFailureReports::Report(const Error& error, const ParsePlace& place, const std::string& advice) {
    if (error.number() == kUnrecognisedType) {
        Warn(advice);
        services_.log.WriteLog("WARNING: ParseAOT: Unrecognised data type" + PlainNumber(place.record.type) +
                               " encountered - " + advice);
        return;
    }
    if (error.number() == kNoProgress) {
        Warn(advice);
        services_.log.WriteLog("WARNING: ParseAOT: Infinite Loop encountered! - " + advice);
        return;
    }
    const std::string where = " at Line" + PlainNumber(static_cast<int>(place.phase)) + ". " + advice;
    services_.ui.Tell("Error no." + ErrorText(error) + " occurred in ParseAOT" + where,
                      MessageIcon::kExclamation, error.detail());
    services_.log.WriteLog("ERROR: ParseAOT: Error #" + ErrorText(error) + " occurred" + where);
    LogDetail(services_.log, error);
}

void StreamFailureReports::Warn(const std::string& advice) {
    if (!services_.options.warning_boxes) return;
    services_.options.warning_boxes = services_.ui.Ask(
        "Zorvel is unable to correctly interpret this application stream file" + advice +
            "\n\nDo you want to see any further occurrences of this message during this run?",
        MessageIcon::kExclamation, Answer::kYes);
}

// Three lines: the application, eight numbers that say where and at what the parser stood, and the stream.
void StreamFailureReports::WriteDump(const std::string& dump_file, const ParsePlace& place) const {
    const Record& record = place.record;
    const std::array<std::int64_t, 8> numbers = {
        static_cast<int>(place.phase), record.type,   static_cast<std::int64_t>(place.position),
        record.header_length,          record.action, record.length_value,
        record.first_length,           record.flags};
    std::string line;
    for (const std::int64_t number : numbers) {
        if (!line.empty()) line += ',';
        line += PlainNumber(number) + ' ';
    }
    services_.files.WriteInPlace(dump_file, [&](OutputFile& file) {
        for (const std::string_view text : {place.full_name, std::string_view(line), place.stream}) {
            file.Write(text);
            file.Write("\r\n");
        }
    });
}

}  // namespace zorvel
