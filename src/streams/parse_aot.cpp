#include "streams/parse_aot.h"

#include <exception>
#include <utility>

#include "platform/error.h"
#include "shell/formats.h"
#include "streams/entry_output.h"
#include "streams/record.h"
#include "streams/record_types.h"
#include "streams/stream_failure.h"

namespace zorvel {
namespace {

constexpr std::string_view kStreamSignature = "AOT FILE";
constexpr double kUpdateInterval = 1.0;  // seconds between two updates of the displays
constexpr double kEventInterval = 0.1;   // and between two looks at the pending events

class StreamParser {
  public:
    StreamParser(ParseContext& context, OutputFile& rows, std::string_view full_name, std::string_view stream,
                 std::int32_t& signature_total)
        : context_(context),
          services_(context.services),
          stream_(stream),
          interrupted_before_(context.services.activity.UserInterrupt),
          output_(context, rows, full_name, signature_total),
          failure_(context, full_name, stream) {}

    ParseResult Parse();

  private:
    enum class Outcome { kDone, kFailed, kStop };

    Outcome ParseRecord();
    bool Interrupted() const { return services_.activity.UserInterrupt && !interrupted_before_; }
    void NoteInterruption(bool records_left);
    void AdvanceFrom(std::size_t start) const;
    void UpdateDisplays();
    void FinishDisplays();

    // Runs one phase of the current record; an error in it is handled.
    template <typename Step>
    Outcome Run(ParsePhase phase, Step step) {
        place_.phase = phase;
        try {
            step();
            return Outcome::kDone;
        } catch (const OutputError&) {
            throw;
        } catch (const std::exception&) {
            return failure_.Handle(CurrentError(), place_) ? Outcome::kFailed : Outcome::kStop;
        }
    }

    ParseContext& context_;
    Services& services_;
    std::string_view stream_;
    const bool interrupted_before_;  // the application is to be finished: this stream is read whole
    EntryOutput output_;
    StreamFailure failure_;
    ParsePlace place_;
    double last_update_ = 0;               // on the clock's CoarseTimer
    double next_events_ = kEventInterval;  // seconds after last_update_
    double first_progress_ = 0;            // the progress bar on entry
};

ParseResult StreamParser::Parse() {
    if (context_.finder != nullptr) {
        try {
            if (!context_.finder->MatchesStream(stream_)) return ParseResult::kParsed;
        } catch (const Error& error) {
            if (error.number() != errors::kNoAutomation) throw;
            failure_.Handle(error, place_);
            return ParseResult::kRejected;
        }
    }
    if (!stream_.starts_with(kStreamSignature)) {
        services_.log.WriteLog("WARNING: ParseAOT: string passed to routine doesn't have an AOT ID");
        return ParseResult::kRejected;
    }
    first_progress_ = context_.progress.StreamProgress();
    last_update_ = services_.clock.CoarseTimer();
    place_.position = kStreamSignature.size() + 1;

    bool records_left = place_.position <= stream_.size();
    while (records_left) {
        const Outcome outcome = ParseRecord();
        if (outcome == Outcome::kStop) return ParseResult::kRejected;
        records_left = outcome == Outcome::kDone && place_.position < stream_.size();
        if (Interrupted()) break;
        if (records_left) UpdateDisplays();
    }
    if (services_.activity.UserInterrupt) NoteInterruption(records_left);
    FinishDisplays();
    return ParseResult::kParsed;
}

// Takes the record at the position through its phases. kFailed: it brought no progress, so that the same
// record would be met for ever.
StreamParser::Outcome StreamParser::ParseRecord() {
    const std::size_t start = place_.position;
    const std::string_view rest = stream_.substr(start - 1);
    Record& record = place_.record = Record();
    const RecordType* type = nullptr;
    Outcome outcome = Run(ParsePhase::kHeader, [&] {
        record.type = StreamCursor(rest).ByteAt(0);
        type = &RecordTypeOf(record.type);
        ReadHeader(rest, type->layout, record);
    });
    if (outcome == Outcome::kDone) {
        outcome = Run(ParsePhase::kRecord, [&] { place_.position += type->decode(record, output_); });
    }
    if (outcome == Outcome::kStop) return outcome;
    return Run(ParsePhase::kAdvance, [&] { AdvanceFrom(start); });
}

void StreamParser::AdvanceFrom(std::size_t start) const {
    if (place_.position == start) throw Error(kNoProgress);
}

void StreamParser::NoteInterruption(bool records_left) {
    context_.stream_cut = records_left;
    if (std::exchange(context_.interruption_logged, true)) return;
    services_.log.WriteLog("ParseAOT: User interrupted Zorvelrun with ESC key");
}

void StreamParser::UpdateDisplays() {
    const double since_update = services_.clock.CoarseTimer() - last_update_;
    if (since_update < next_events_) return;
    services_.ui.ProcessEvents();
    next_events_ = since_update + kEventInterval;
    if (since_update < kUpdateInterval) return;
    const double fraction = static_cast<double>(place_.position) / static_cast<double>(stream_.size());
    services_.status.SetStatus(
        'Y', std::string_view("Saving eDirectory information for '" + context_.application_name + " - " +
                              Percentage(fraction)));
    context_.progress.RefreshStatusCounts();
    const double progress = first_progress_ + context_.progress_share * fraction;
    context_.progress.SetStreamProgress(progress);
    if (context_.only_application) context_.progress.SetOverallProgress(progress);
    last_update_ = services_.clock.CoarseTimer();
    next_events_ = kEventInterval;
}

void StreamParser::FinishDisplays() {
    context_.progress.RefreshStatusCounts();
    context_.progress.SetStreamProgress(100);
}

}  // namespace

ParseResult ParseAOT(ParseContext& context, OutputFile& rows, std::string_view full_name,
                     std::string_view stream, std::int32_t& signature_total) {
    signature_total = 0;
    context.stream_cut = false;
    return StreamParser(context, rows, full_name, stream, signature_total).Parse();
}

}  // namespace zorvel
