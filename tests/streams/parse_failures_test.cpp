// What the user, the log and the dump file tell of a stream that cannot be decoded.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "stream_builder.h"
#include "support/streams_fakes.h"

namespace zorvel::test {
namespace {

using namespace std::string_literals;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

// A first record that is sound, one of an unknown type, and one that is never reached.
std::string StreamWithUnknownType() {
    return StreamBuilder()
        .Macro("m", "v")
        .Raw("\7\0\0\0\3\0\0\0\24\0\0\0\2\0\0\0abcd"s)
        .Macro("n", "w")
        .bytes();
}

std::string LogAdvice(const TestParser& parser) {
    return " - to aid diagnosis of this problem, please send the Zorvel log file (" +
           parser.shell.files.ProgramFolder() +
           "\\Zorvel.log) to the maintainer, using the data-sending option of the Help menu.";
}

TEST(StreamFailures, OfAnUnknownTypeGiveTwoReportsAndEndTheStream) {
    TestParser parser;
    parser.shell.options.warning_boxes = true;
    parser.shell.options.session.SoundsEnabled = true;
    parser.shell.options.session.WarningSound = "warn";
    parser.shell.folder.Write("warn.WAV", "x");
    EXPECT_EQ(parser.Parse(StreamWithUnknownType()), ParseResult::kParsed);

    EXPECT_EQ(parser.rows, Lines({TestParser::kFullName, "m", "v", "", ""}));
    EXPECT_EQ(parser.context.parse_errors, 2);
    EXPECT_EQ(parser.shell.ui.sounds.size(), 2U);
    EXPECT_GE(parser.shell.clock.slept, 2.0);
    EXPECT_EQ(parser.progress.stream_progress, 100);
    const std::string advice = LogAdvice(parser);
    EXPECT_THAT(parser.shell.LogLines(),
                ElementsAre(" WARNING: ParseAOT: Unrecognised data type 7 encountered - " + advice,
                            " WARNING: ParseAOT: Infinite Loop encountered! - " + advice));
    ASSERT_EQ(parser.shell.ui.boxes.size(), 2U);
    const MessageBox& box = parser.shell.ui.boxes[0];
    EXPECT_EQ(box.text,
              "Zorvel is unable to correctly interpret this application stream file" + advice +
                  "\n\nDo you want to see any further occurrences of this message during this run?");
    EXPECT_EQ(box.buttons, Buttons::kYesNo);
    EXPECT_EQ(box.icon, MessageIcon::kExclamation);
    EXPECT_EQ(box.default_answer, Answer::kYes);
    EXPECT_EQ(parser.shell.ui.boxes[1].text, box.text);
    EXPECT_FALSE(parser.shell.folder.Has("TempData/Zorvel_261116172807.dmp"));
}

TEST(StreamFailures, ShowNoMoreWarningsAfterTheAnswerNo) {
    TestParser parser;
    parser.shell.options.warning_boxes = true;
    parser.shell.ui.answers = {Answer::kNo};
    parser.Parse(StreamWithUnknownType());
    EXPECT_EQ(parser.shell.ui.boxes.size(), 1U);
    EXPECT_FALSE(parser.shell.options.warning_boxes);
    EXPECT_EQ(parser.context.parse_errors, 2);
}

TEST(StreamFailures, LeaveDumpFilesOfTheirOwnWhenTheOptionsAskForThem) {
    TestParser parser;
    parser.shell.options.session.CreateDMPFileOnError = true;
    const std::string stream = StreamWithUnknownType();
    for (const int second : {5, 6, 5}) {  // at the end the clock was put back
        parser.shell.clock.now.second = second;
        parser.Parse(stream);
    }
    // Each stream gives two reports.
    const std::vector<std::string> log = parser.shell.LogLines();
    const std::string names[] = {"05", "05_2", "06", "06_2", "05_3", "05_4"};
    ASSERT_EQ(log.size(), std::size(names));
    for (std::size_t i = 0; i < log.size(); ++i) {
        const std::string name = "Zorvel_2611161728" + names[i] + ".dmp";
        const std::string phase = i % 2 == 0 ? "2" : "3";
        EXPECT_EQ(parser.shell.folder.Read("TempData/" + name),
                  "Word.APPS.SITE\r\n " + phase + " , 7 , 31 , 16 , 3 , 20 , 2 , 0 \r\n" + stream + "\r\n");
        const std::string dump = parser.shell.files.ProgramFolder() + "\\Tempdata\\" + name;
        EXPECT_EQ(log[i].substr(log[i].find(" - ")),
                  " -  - to aid diagnosis of this problem, please send the created .DMP file (" + dump +
                      ") and the Zorvel log file (" + parser.shell.files.ProgramFolder() +
                      "\\Zorvel.log) to the maintainer, using the data-sending option of the Help menu.");
    }
}

TEST(StreamFailures, GoOnWithoutADumpFileThatCannotBeWritten) {
    TestParser parser;
    parser.shell.options.session.CreateDMPFileOnError = true;
    const char* const ways[] = {"05", "05_2"};
    for (const char* name : ways)
        std::filesystem::create_directory(parser.shell.folder.path() / "TempData" /
                                          ("Zorvel_2611161728" + std::string(name) + ".dmp"));
    EXPECT_EQ(parser.Parse(StreamWithUnknownType()), ParseResult::kParsed);
    EXPECT_EQ(parser.context.parse_errors, 2);
    const std::string dump = parser.shell.files.ProgramFolder() + "\\Tempdata\\Zorvel_261116172805";
    const auto lost = [&](const std::string& name) {
        return "Error 75 (Path/File access error) occurred while the .DMP file (" + dump + name +
               ") was written";
    };
    EXPECT_EQ(parser.shell.OnlyBox(), lost(".dmp") + " - the run goes on without it");
    const std::string advice = LogAdvice(parser);
    EXPECT_THAT(parser.shell.LogLines(),
                ElementsAre(" WARNING: ParseAOT: " + lost(".dmp"), HasSubstr(dump + ".dmp"),
                            " WARNING: ParseAOT: Unrecognised data type 7 encountered - " + advice,
                            " WARNING: ParseAOT: " + lost("_2.dmp"), HasSubstr(dump + "_2.dmp"),
                            " WARNING: ParseAOT: Infinite Loop encountered! - " + advice));
}

TEST(StreamFailures, LeaveTheLengthOfANameThatIsCutInTheDumpFile) {
    const struct {
        std::string record, numbers;
    } cases[] = {
        {"\30\0\0\0\0\0\0\0\42\0\0\0\0\0\0\0A\0\0\0\2\0\0\0"s, " 3 , 24 , 9 , 20 , 0 , 34 , 2 , 0 "},
        {"\46\0\0\0\0\0\0\0\50\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\3\0\0\0n"s,
         " 3 , 38 , 9 , 16 , 0 , 40 , 3 , 0 "},
    };
    for (const auto& row : cases) {
        TestParser parser;
        parser.shell.options.session.CreateDMPFileOnError = true;
        parser.Parse("AOT FILE" + row.record);
        EXPECT_THAT(parser.shell.folder.Read("TempData/Zorvel_261116172805_2.dmp"), HasSubstr(row.numbers));
    }
}

TEST(StreamFailures, TellTheErrorAndTheStepItStruckAt) {
    TestParser parser;
    parser.shell.options.warning_boxes = false;
    const std::string stream = StreamBuilder().FileCopy("source", "target").bytes();
    parser.Parse(stream.substr(0, stream.size() - 1));
    EXPECT_EQ(parser.rows, "");
    EXPECT_EQ(parser.counters.OfRun(Counter::kFiles), 0);
    EXPECT_EQ(parser.context.parse_errors, 2);
    const std::string advice = LogAdvice(parser);
    ASSERT_EQ(parser.shell.ui.boxes.size(), 1U);
    EXPECT_EQ(parser.shell.ui.boxes[0].text,
              "Error no. 9 (Subscript out of range) occurred in ParseAOT at Line 2. " + advice);
    EXPECT_EQ(parser.shell.ui.boxes[0].buttons, Buttons::kOk);
    EXPECT_EQ(parser.shell.ui.boxes[0].icon, MessageIcon::kExclamation);
    EXPECT_THAT(
        parser.shell.LogLines(),
        ElementsAre(" ERROR: ParseAOT: Error # 9 (Subscript out of range) occurred at Line 2. " + advice,
                    " WARNING: ParseAOT: Infinite Loop encountered! - " + advice));
}

// The number of the error and the step of the first report; the second is always the missing progress.
TEST(StreamFailures, OfDamagedRecords) {
    const struct {
        std::string name, record, report;
    } cases[] = {
        {"one byte", "\1"s, "9|1"},
        {"header cut", "\1\0\0\0\1\0\0\0\0\0\0\0\1\0\0\0\5\0\0"s, "9|1"},
        {"header of an unknown type cut", "\7\0\0\0\0\0\0\0\0\0\0\0\0\0\0"s, "9|1"},
        {"type 5: key length slot cut", "\5\0\0\0\1\0\0\0\0\0\0\0\1\0\0\0\1\0\0\0\0\0\0"s, "9|1"},
        {"type 2: length below the header", "\2\0\0\0\1\0\0\0\23\0\0\0\0\0\0\0\1\0\0\0abcd"s, "5|1"},
        {"type 8: length below the header", "\10\0\0\0\0\0\0\0\17\0\0\0\0\0\0\0"s, "5|1"},
        {"type 38: length below the header", "\46\0\0\0\0\0\0\0\17"s + std::string(40, '\0'), "5|1"},
        {"unknown type: length below the header", "\7\0\0\0\0\0\0\0\1\0\0\0\0\0\0\0"s, "5|1"},
        {"type 2: path beyond the stream", "\2\0\0\0\1\0\0\0\0\0\0\0\0\0\0\0\5\0\0\0abcd"s, "9|2"},
        {"type 3: value beyond the length value",
         "\3\0\0\0\1\0\0\0\43\0\0\0\0\0\0\0\1\0\0\0f\1\0\0\0s\1\0\0\0i\1\0\0\0v"s, "9|2"},
        {"type 10: value beyond the length value", "\12\0\0\0\1\0\0\0\26\0\0\0\1\0\0\0n\2\0\0\0vv"s, "9|2"},
        {"type 38: prompt beyond the stream",
         "\46\0\0\0\0\0\0\0\50\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\1\0\0\0n\1\0\0\0v\4\0\0\0p"s, "9|2"},
    };
    for (const auto& row : cases) {
        TestParser parser;
        EXPECT_EQ(parser.Parse("AOT FILE" + row.record), ParseResult::kParsed) << row.name;
        EXPECT_EQ(parser.rows, "") << row.name;
        EXPECT_EQ(parser.context.parse_errors, 2) << row.name;
        const std::string log = parser.shell.LogLines().at(0);
        const std::string number = log.substr(log.find('#') + 2, 1);
        const std::string line = log.substr(log.find("at Line") + 8, 1);
        EXPECT_EQ(number + "|" + line, row.report) << row.name << ": " << log;
    }
}

TEST(StreamFailures, OfRecordsWithoutProgressComeAfterTheirRow) {
    const struct {
        std::string name, record, rows;
    } cases[] = {
        {"type 24 of length 0", "\30\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0Z\0\0\0\1\0\0\0e\1\0\0\0f"s,
         Lines({"e", "f", "Z"})},
        {"type 38 without name and length",
         "\46\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\1\0\0\0v\0\0\0\0"s,
         Lines({TestParser::kFullName, "", "v", "", ""})},
        {"type 8 without lengths", std::string("\10") + std::string(15, '\0'), ""},
    };
    for (const auto& row : cases) {
        TestParser parser;
        parser.Parse("AOT FILE" + row.record);
        EXPECT_EQ(parser.rows, row.rows) << row.name;
        EXPECT_EQ(parser.context.parse_errors, 1) << row.name;
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
    EXPECT_EQ(parser.context.parse_errors, 2);
    EXPECT_EQ(parser.shell.LogLines().at(0).substr(0, 67),
              " ERROR: ParseAOT: Error # 6 (Overflow) occurred at Line 2.  - to ai");
    const std::int32_t each = 65535 * 0xDF + 'K';
    EXPECT_EQ(parser.signature, 2147483647 / each * each);
    EXPECT_EQ(parser.counters.OfRun(Counter::kRegistry), 2147483647 / each + 1);
    EXPECT_LT(parser.counters.OfRun(Counter::kRegistry), records);
}

TEST(StreamFailures, OfTheSearchEngineStopTheRun) {
    for (const bool within_stream : {false, true}) {
        TestParser parser;
        FakeFinder finder;
        (within_stream ? finder.entry_error : finder.stream_error) = errors::kNoAutomation;
        parser.context.finder = &finder;
        if (within_stream) parser.shell.ui.answers = {Answer::kYes};
        EXPECT_EQ(parser.Parse(StreamBuilder().FileCopy("s", "t").bytes()), ParseResult::kRejected);
        EXPECT_TRUE(parser.shell.activity.UserInterrupt);
        EXPECT_EQ(parser.context.parse_errors, 0);
        EXPECT_EQ(parser.shell.ui.opened.size(), within_stream ? 1U : 0U);
        ASSERT_EQ(parser.shell.ui.boxes.size(), 1U);
        EXPECT_EQ(
            parser.shell.ui.boxes[0].text,
            "Error 430 (Class does not support Automation or does not support expected interface) occurred "
            "during ParseAOT - this error may be due to your Windows Scripting Host system files being out "
            "of "
            "date - would you like to visit the Microsoft Windows Script download page to get the latest "
            "version "
            "for your Operating System?");
        EXPECT_EQ(parser.shell.ui.boxes[0].default_answer, Answer::kNo);
        EXPECT_THAT(
            parser.shell.LogLines(),
            ElementsAre(" ERROR: Error # 430 (Class does not support Automation or does not support expected "
                        "interface) occurred in ParseAOT"));
    }
}

TEST(StreamFailures, OfABadExpressionGoToTheRun) {
    TestParser parser;
    FakeFinder finder;
    finder.stream_error = errors::kInvalidCall;
    parser.context.finder = &finder;
    EXPECT_THROW(parser.Parse(StreamBuilder().FileCopy("s", "t").bytes()), Error);
    EXPECT_THAT(parser.shell.LogLines(), IsEmpty());
}

TEST(StreamFailures, OfTheDiskGoToTheRun) {
    TestParser parser;
    parser.issues.on_issue = [] { throw OutputError(Error(errors::kDiskFull)); };
    EXPECT_THROW(parser.Parse(StreamBuilder().Macro("m", "\\\\v").bytes()), OutputError);
    EXPECT_THAT(parser.shell.ui.boxes, IsEmpty());
}

}  // namespace
}  // namespace zorvel::test
