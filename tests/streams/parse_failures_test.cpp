// What of a stream is left when a record cannot be decoded, and what is told of it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "stream_builder.h"
#include "support/raw_record.h"
#include "support/streams_fakes.h"

namespace zorvel::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// The error and the step of the first report; the second is always the missing progress.
TEST(StreamFailures, OfDamagedRecordsEndTheStreamBehindTheSoundOnes) {
    const std::string space(8, '\0');
    const struct {
        std::string name, record, report;
    } cases[] = {
        {"header cut", Header({.type = 1, .at_first = 5}).substr(0, 19), "9|1"},
        {"header of an unknown type cut", ShortHeader({.type = 7}).substr(0, 15), "9|1"},
        {"an unknown type", ShortHeader({.type = 7, .length = 20, .at_first = 2}) + "abcd", "255|2"},
        {"type 1: target beyond the stream", Header({.type = 1, .at_first = 1}) + "s" + Slot("t", 2), "9|2"},
        {"type 5: key length slot cut", Header({.type = 5}) + Slot("").substr(1), "9|1"},
        {"type 2: length below the header", Header({.type = 2, .length = 19, .at_first = 1}) + "abcd", "5|1"},
        {"type 8: length below the header", ShortHeader({.type = 8, .length = 15}), "5|1"},
        {"type 38: length below the header", ShortHeader({.type = 38, .length = 15}) + space + space, "5|1"},
        {"unknown type: length below the header", ShortHeader({.type = 7, .length = 1}), "5|1"},
        {"type 2: path beyond the stream", Header({.type = 2, .at_first = 5}) + "abcd", "9|2"},
        {"type 3: value beyond the length value",
         Header({.type = 3, .length = 35, .at_first = 1}) + "f" + Slot("s") + Slot("i") + Slot("v"), "9|2"},
        {"type 10: value beyond the length value",
         ShortHeader({.type = 10, .length = 22, .at_first = 1}) + "n" + Slot("vv"), "9|2"},
        {"type 38: prompt beyond the stream",
         ShortHeader({.type = 38, .length = 40}) + space + Slot("n") + Slot("v") + Slot("p", 4), "9|2"},
    };
    for (const auto& row : cases) {
        TestParser parser;
        const std::string stream = StreamBuilder().Macro("m", "v").bytes() + row.record;
        EXPECT_EQ(parser.Parse(stream), ParseResult::kParsed) << row.name;
        EXPECT_EQ(parser.rows, Lines({TestParser::kFullName, "m", "v", "", ""})) << row.name;
        EXPECT_EQ(parser.counters.OfRun(Counter::kFiles), 0) << row.name;
        EXPECT_EQ(parser.progress.ended, 1) << row.name;
        EXPECT_THAT(parser.failures.noted, ElementsAre(row.report, "254|3")) << row.name;
    }
    TestParser parser;
    parser.Parse("AOT FILE\1");  // behind a record it would be the silent end
    EXPECT_THAT(parser.failures.noted, ElementsAre("9|1", "254|3"));
}

TEST(StreamFailures, OfRecordsWithoutProgressComeAfterTheirRow) {
    const std::string space(8, '\0');
    const struct {
        std::string name, record, rows;
    } cases[] = {
        {"type 24 of length 0", Header({.type = 24, .at_first = 'Z'}) + Slot("e") + Slot("f"),
         Lines({"e", "f", "Z"})},
        {"type 38 without name and length",
         ShortHeader({.type = 38}) + space + Slot("") + Slot("v") + Slot(""),
         Lines({TestParser::kFullName, "", "v", "", ""})},
        {"type 8 without lengths", ShortHeader({.type = 8}), ""},
    };
    for (const auto& row : cases) {
        TestParser parser;
        parser.Parse("AOT FILE" + row.record);
        EXPECT_EQ(parser.rows, row.rows) << row.name;
        EXPECT_THAT(parser.failures.noted, ElementsAre("254|3")) << row.name;
    }
}

TEST(StreamFailures, OfASignatureThatOverflowsComeAfterTheRow) {
    // Values of 65535 characters of code 223, more of them than 31 bits hold the sum of.
    StreamBuilder builder;
    const std::string data(65535, '\xDF');
    int records = 0;
    for (; builder.bytes().size() < 10'000'000; ++records)
        builder.RegistryValue("k", "", data);
    TestParser parser;
    parser.Parse(builder.bytes());
    EXPECT_THAT(parser.failures.noted, ElementsAre("6|2", "254|3"));
    const std::int32_t each = 65535 * 0xDF + 'K';
    EXPECT_EQ(parser.signature, 2147483647 / each * each);
    EXPECT_EQ(parser.counters.OfRun(Counter::kRegistry), 2147483647 / each + 1);
    EXPECT_LT(parser.counters.OfRun(Counter::kRegistry), records);
}

// The rows before the cut stay as they are, and at most one record is reported, twice.
TEST(StreamFailures, OfAStreamCutAnywhereLeaveTheRowsBeforeTheCut) {
    const std::string stream = StreamBuilder()
                                   .FileCopy("source", "C:\\WINDOWS\\target.dll", 513)
                                   .FileDelete("C:\\old")
                                   .DirectoryCreate("C:\\a\\b")
                                   .IniValue("file", "section", "item", "value")
                                   .RegistryValue("HKLM\\key", "name", "\\\\data")
                                   .RegistryValueDelete("key", "name")
                                   .RegistryKeyCreate("key")
                                   .RegistryKeyDelete("key")
                                   .NoEntry()
                                   .Macro("SHORT_TARGET_PATH", "C:\\Program Files")
                                   .TextFileChange(4, "file", "text", "new")
                                   .IniSectionDelete("file", "section")
                                   .EnvironmentSetting("name", "value", 'S')
                                   .PromptedMacro("name", "value", 5, "prompt")
                                   .IniValue("file", "section", "item", std::string(300, 'v'))
                                   .RegistryValue("key", "name", std::string(300, 'd'))
                                   .bytes();
    TestParser parser;
    parser.Parse(stream);
    EXPECT_TRUE(parser.failures.noted.empty());
    const std::string all_rows = parser.rows;
    std::size_t last_size = 0;
    for (std::size_t size = 0; size <= stream.size(); ++size) {
        // A copy of its own size, so that a sanitizer sees a read behind the cut.
        parser.Parse(std::string(stream.data(), size));
        EXPECT_LE(parser.failures.noted.size(), 2U);
        EXPECT_GE(parser.signature, 0);
        EXPECT_TRUE(all_rows.starts_with(parser.rows)) << "cut at " << size;
        EXPECT_GE(parser.rows.size(), last_size) << "cut at " << size;
        last_size = parser.rows.size();
    }
    EXPECT_EQ(last_size, all_rows.size());
}

TEST(StreamFailures, OfTheSearchEngineRejectTheStream) {
    for (const bool within_stream : {false, true}) {
        TestParser parser;
        FakeFinder finder;
        (within_stream ? finder.entry_error : finder.stream_error) = errors::kNoAutomation;
        parser.context.finder = &finder;
        EXPECT_EQ(parser.Parse(StreamBuilder().FileCopy("s", "t").Macro("m", "v").bytes()),
                  ParseResult::kRejected);
        EXPECT_THAT(parser.failures.noted, ElementsAre(within_stream ? "430|2" : "430|1"));
        EXPECT_EQ(parser.counters.OfRun(Counter::kMacros), 0);
    }
}

TEST(StreamFailures, OfABadExpressionAndOfTheDiskGoToTheRun) {
    TestParser parser;
    parser.issues.on_issue = [] { throw OutputError(Error(errors::kDiskFull)); };
    EXPECT_THROW(parser.Parse(StreamBuilder().Macro("m", "\\\\v").bytes()), OutputError);
    FakeFinder finder;
    finder.stream_error = errors::kInvalidCall;
    parser.context.finder = &finder;
    EXPECT_THROW(parser.Parse(StreamBuilder().FileCopy("s", "t").bytes()), Error);
    EXPECT_THAT(parser.failures.noted, IsEmpty());
}

}  // namespace
}  // namespace zorvel::test
