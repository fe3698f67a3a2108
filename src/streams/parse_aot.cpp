#include "streams/parse_aot.h"

#include <exception>

#include "platform/error.h"
#include "streams/entry_output.h"
#include "streams/record.h"
#include "streams/record_types.h"

namespace zorvel {
namespace {

constexpr std::string_view kStreamSignature = "AOT FILE";

class StreamParser {
  public:
    StreamParser(const ParseContext& context, OutputFile& rows, std::string_view full_name,
                 std::string_view stream, std::int32_t& signature_total)
        : context_(context),
          stream_(stream),
          output_(context, rows, full_name, signature_total),
          place_{.full_name = full_name, .stream = stream} {}

    ParseResult Parse();

  private:
    enum class Outcome { kDone, kFailed, kStop };

    Outcome ParseRecord();
    void AdvanceFrom(std::size_t start) const;

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
            return context_.failures.Handle(CurrentError(), place_) ? Outcome::kFailed : Outcome::kStop;
        }
    }

    const ParseContext& context_;
    std::string_view stream_;
    EntryOutput output_;
    ParsePlace place_;
};

ParseResult StreamParser::Parse() {
    if (context_.finder != nullptr) {
        try {
            if (!context_.finder->MatchesStream(stream_)) return ParseResult::kParsed;
        } catch (const Error& error) {
            if (error.number() != errors::kNoAutomation) throw;
            context_.failures.Handle(error, place_);
            return ParseResult::kRejected;
        }
    }
    if (!stream_.starts_with(kStreamSignature)) {
        context_.failures.RefuseStream();
        return ParseResult::kRejected;
    }
    context_.progress.Begin();
    place_.position = kStreamSignature.size() + 1;
    bool records_left = place_.position <= stream_.size();
    while (records_left) {
        const Outcome outcome = ParseRecord();
        if (outcome == Outcome::kStop) return ParseResult::kRejected;
        records_left = outcome == Outcome::kDone && place_.position < stream_.size();
        if (records_left && !context_.progress.GoOn(place_.position, stream_.size())) break;
    }
    context_.progress.End();
    return records_left ? ParseResult::kCut : ParseResult::kParsed;
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

}  // namespace

ParseResult ParseAOT(const ParseContext& context, OutputFile& rows, std::string_view full_name,
                     std::string_view stream, std::int32_t& signature_total) {
    signature_total = 0;
    return StreamParser(context, rows, full_name, stream, signature_total).Parse();
}

}  // namespace zorvel
