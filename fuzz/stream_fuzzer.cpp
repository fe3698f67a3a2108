// Feeds arbitrary records to ParseAOT: it must end, report at most one faulty record, and keep to the
// stream's bytes.
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz_input.h"
#include "support/streams_fakes.h"

namespace zorvel::fuzz {

using namespace zorvel::test;

void TestOneInput(std::string_view input) {
    static TestParser parser;
    static OutputFile rows("/dev/null", "rows", OutputFile::Mode::kTruncate);
    static FakeFinder finder;

    // The first byte chooses between an analysis run and a Find run, and whether the signature is right.
    const std::uint8_t choice = input.empty() ? 0 : static_cast<std::uint8_t>(input[0]);
    const bool sound = (choice & 1U) == 0;
    std::string stream = sound ? "AOT FILE" : "";
    if (!input.empty()) stream += input.substr(1);

    parser.issues.issues.clear();
    parser.failures.noted.clear();
    finder.entries.clear();
    parser.context.finder = (choice & 2U) == 0 ? nullptr : &finder;

    std::int32_t signature = 0;
    const ParseResult result = ParseAOT(parser.context, rows, TestParser::kFullName, stream, signature);
    Require(result == (stream.starts_with("AOT FILE") ? ParseResult::kParsed : ParseResult::kRejected));
    Require(parser.failures.noted.size() <= 2);
    Require(signature >= 0);
}

}  // namespace zorvel::fuzz
