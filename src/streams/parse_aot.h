// ParseAOT: decodes one binary stream of an Application object into rows, issues, counters and a signature.
#pragma once

#include <cstdint>
#include <string_view>

#include "platform/output_file.h"
#include "streams/parse_context.h"

namespace zorvel {

enum class ParseResult {
    kParsed,    // to its end or to a record without progress, or there was nothing to find in it
    kCut,       // ended by `progress` with records left
    kRejected,  // not a stream of this format, or error 430
};

// Decodes `stream` of the application `full_name`: writes its rows to `rows`, its issues, and sets
// `signature_total` to the sum of its entries' signatures. Decoding errors go to `failures` and are never
// raised; an OutputError is raised, and in a Find run whatever else the search of the whole stream raises.
ParseResult ParseAOT(const ParseContext& context, OutputFile& rows, std::string_view full_name,
                     std::string_view stream, std::int32_t& signature_total);

}  // namespace zorvel
