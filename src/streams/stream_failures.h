// What can be wrong with a stream, and the port through which whoever has it decoded deals with that.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "platform/error.h"
#include "streams/record.h"

namespace zorvel {

// The parser's own errors.
inline constexpr std::int32_t kNoProgress = 254;
inline constexpr std::int32_t kUnrecognisedType = 255;

// The steps of a record, by the numbers that messages call them.
enum class ParsePhase : int { kHeader = 1, kRecord = 2, kAdvance = 3 };

// Where the parser stood when an error struck.
struct ParsePlace {
    std::string_view full_name;  // of the application
    std::string_view stream;
    ParsePhase phase = ParsePhase::kHeader;
    std::size_t position = 1;  // in the stream, counted from 1
    Record record{};
};

class StreamFailures {
  public:
    virtual ~StreamFailures() = default;
    // The stream does not begin with the signature: it is rejected.
    virtual void RefuseStream() = 0;
    // A record could not be decoded, or the search of a Find run cannot be used (error 430). True when the
    // parser shall go on behind the step that failed; else the stream is rejected.
    virtual bool Handle(const Error& error, const ParsePlace& place) = 0;
};

}  // namespace zorvel
