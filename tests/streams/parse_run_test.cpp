// How a parse runs: signature, Find run, progress, and its end ahead of the last record.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "stream_builder.h"
#include "support/streams_fakes.h"

namespace zorvel::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

const std::string kMacroRow = Lines({TestParser::kFullName, "m", "v", "", ""});

TEST(StreamParse, RejectsWhatHasNoSignatureAndEndsSilentlyBehindTheRecords) {
    const struct {
        std::string stream;
        ParseResult result = ParseResult::kRejected;
        std::string rows = {};
    } cases[] = {
        {""},
        {"AOT FIL"},
        {"AOT file...................."},
        {"XAOT FILE"},
        {"AOT FILE", ParseResult::kParsed},
        {StreamBuilder().Macro("m", "v").Raw("x").bytes(), ParseResult::kParsed, kMacroRow},
    };
    for (const auto& row : cases) {
        TestParser parser;
        EXPECT_EQ(parser.Parse(row.stream), row.result) << row.stream;
        EXPECT_EQ(parser.rows, row.rows);
        EXPECT_EQ(parser.signature == 0, row.rows.empty());
        EXPECT_EQ(parser.failures.noted,
                  std::vector<std::string>(row.result == ParseResult::kRejected ? 1 : 0, "refused"));
    }
}

TEST(StreamParse, OfAFindRunSkipsStreamsWithoutAMatch) {
    TestParser parser;
    FakeFinder finder;
    finder.matches = false;
    parser.context.finder = &finder;
    EXPECT_EQ(parser.Parse(StreamBuilder().FileCopy("s", "t").bytes()), ParseResult::kParsed);
    EXPECT_EQ(parser.rows, "");
    EXPECT_EQ(parser.signature, 0);
    EXPECT_EQ(parser.progress.ended, 0);
    EXPECT_EQ(parser.Parse("no stream at all"), ParseResult::kParsed);
    EXPECT_THAT(parser.failures.noted, IsEmpty());
}

TEST(StreamParse, TellsItsProgressBetweenTheRecordsAndMayEndThere) {
    TestParser parser;
    StreamBuilder stream;  // 8 bytes, and 22 for each macro
    stream.Macro("m", "v").Macro("m", "v").Macro("m", "v");
    EXPECT_EQ(parser.Parse(stream.bytes()), ParseResult::kParsed);
    EXPECT_THAT(parser.progress.places, ElementsAre("31 of 74", "53 of 74"));
    parser.progress.cut_after = 2;
    EXPECT_EQ(parser.Parse(stream.bytes()), ParseResult::kCut);
    EXPECT_EQ(parser.rows, kMacroRow + kMacroRow);
    EXPECT_EQ(parser.progress.ended, 2);
}

}  // namespace
}  // namespace zorvel::test
