// How a parse runs: signature, Find run, progress, interruption.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "stream_builder.h"
#include "support/streams_fakes.h"

namespace zorvel::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr const char* kNoSignature = " WARNING: ParseAOT: string passed to routine doesn't have an AOT ID";

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
        {StreamBuilder().Macro("m", "v").Raw("x").bytes(), ParseResult::kParsed,
         Lines({TestParser::kFullName, "m", "v", "", ""})},
    };
    for (const auto& row : cases) {
        TestParser parser;
        EXPECT_EQ(parser.Parse(row.stream), row.result) << row.stream;
        EXPECT_EQ(parser.rows, row.rows);
        EXPECT_EQ(parser.signature == 0, row.rows.empty());
        EXPECT_EQ(parser.shell.LogLines(),
                  std::vector<std::string>(row.result == ParseResult::kRejected ? 1 : 0, kNoSignature));
        EXPECT_EQ(parser.context.parse_errors, 0);
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
    EXPECT_THAT(parser.progress.stream_values, IsEmpty());
    EXPECT_EQ(parser.Parse("no stream at all"), ParseResult::kParsed);
    EXPECT_THAT(parser.shell.LogLines(), IsEmpty());
}

TEST(StreamParse, ShowsItsProgressOnceASecond) {
    TestParser parser;
    parser.progress.stream_progress = 20;
    parser.context.only_application = true;
    parser.context.progress_share = 40;
    parser.issues.on_issue = [&parser] { parser.shell.clock.Sleep(0.6); };  // for every record
    StreamBuilder slow_stream;
    for (int count = 0; count < 4; ++count)
        slow_stream.Macro("m", "\\\\v");  // 24 bytes each, 104 in all
    parser.shell.clock.timer = 86399;     // over midnight
    int events = 0;
    parser.shell.ui.on_events = [&events] { ++events; };
    EXPECT_EQ(parser.Parse(slow_stream.bytes()), ParseResult::kParsed);
    // Only the second record's end is a second after the start; the fourth ends the stream.
    const double progress = 20 + 40 * (57.0 / 104.0);
    EXPECT_THAT(parser.shell.ui.statuses, ElementsAre("Saving eDirectory information for 'Word - 54.8%"));
    EXPECT_EQ(parser.shell.ui.picture, StatusPicture::kYellowBall);
    EXPECT_THAT(parser.progress.stream_values, ElementsAre(progress, 100));
    EXPECT_THAT(parser.progress.overall_values, ElementsAre(progress));
    EXPECT_EQ(parser.progress.refreshes, 2);
    EXPECT_EQ(events, 3) << "ESC is noticed between the records, too";
}

TEST(StreamParse, EndsAtTheNextRecordAfterEscAndTellsItOnce) {
    const auto macros = [](int count) {
        StreamBuilder stream;
        while (count-- > 0)
            stream.Macro("\\\\m", "v");
        return stream.bytes();
    };
    const struct {
        const char* what;
        int records, pressed_after, read;
        bool cut;
    } cases[] = {
        {"ESC within the stream", 4, 2, 3, true},
        {"ESC before its last record", 4, 3, 4, false},
        {"ESC before the stream", 4, 0, 4, false},
    };
    TestParser parser;
    parser.shell.clock.tick = 0.11;  // pending events run after every record
    for (const auto& row : cases) {
        int events = 0;
        parser.shell.activity.UserInterrupt = row.pressed_after == 0;
        parser.shell.ui.on_events = [&] {
            if (++events == row.pressed_after) parser.shell.activity.UserInterrupt = true;
        };
        EXPECT_EQ(parser.Parse(macros(row.records)), ParseResult::kParsed);
        EXPECT_EQ(std::count(parser.rows.begin(), parser.rows.end(), '\n'), 5 * row.read) << row.what;
        EXPECT_EQ(parser.context.stream_cut, row.cut) << row.what;
    }
    EXPECT_THAT(parser.shell.LogLines(),
                ElementsAre("    ParseAOT: User interrupted Zorvelrun with ESC key"));
}

}  // namespace
}  // namespace zorvel::test
