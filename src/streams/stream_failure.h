// What happens when a record of a stream cannot be decoded: messages, log lines and the dump file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "platform/error.h"
#include "streams/parse_context.h"
#include "streams/record.h"

namespace zorvel {

// The parser's own errors.
inline constexpr std::int32_t kNoProgress = 254;
inline constexpr std::int32_t kUnrecognisedType = 255;

// The steps of a record, by the numbers that messages call them.
enum class ParsePhase : int { kHeader = 1, kRecord = 2, kAdvance = 3 };

// Where the parser stood when an error struck.
struct ParsePlace {
    ParsePhase phase = ParsePhase::kHeader;
    std::size_t position = 1;  // in the stream, counted from 1
    Record record;
};

class StreamFailure {
  public:
    // All are used as long as the object lives.
    StreamFailure(ParseContext& context, std::string_view full_name, std::string_view stream);

    // Waits, writes the dump file when the options ask for it, reports a decoding error to the user and in
    // the log, and counts it. Error 430 stops the whole run instead. True when the parser shall go on. A dump
    // file that cannot be written is reported, too.
    bool Handle(const Error& error, const ParsePlace& place);

  private:
    // Writes the dump file and gives its path; an empty text when none is wanted or it could not be written.
    std::string CreateDump(const ParsePlace& place);
    std::string NewDumpPath();
    void ReportLostDump(const std::string& dump_file, const Error& error);
    // `dump_file` is empty when there is none.
    std::string Advice(const std::string& dump_file) const;
    void Report(const Error& error, const ParsePlace& place, const std::string& advice);
    void Warn(const std::string& advice);
    void WriteDump(const std::string& dump_file, const ParsePlace& place) const;

    ParseContext& context_;
    Services& services_;
    std::string_view full_name_;
    std::string_view stream_;
};

}  // namespace zorvel
