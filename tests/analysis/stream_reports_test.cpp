// What the user, the log, the displays and the dump file tell of a stream that is decoded in a run.
#include <gmock/gmock.h>

#include <filesystem>
#include <string>

#include "analysis/stream_failure_reports.h"
#include "analysis/stream_progress.h"
#include "stream_builder.h"
#include "support/fake_window.h"
#include "support/fakes.h"
#include "support/raw_record.h"
#include "support/streams_fakes.h"

namespace zorvel::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

// A first record that is sound, one of an unknown type, and one that is never reached.
const std::string kUnknownType = StreamBuilder()
                                     .Macro("m", "v")
                                     .Raw(ShortHeader({.type = 7, .action = 3, .length = 20, .at_first = 2}))
                                     .Raw("abcd")
                                     .Macro("n", "w")
                                     .bytes();

class StreamReports : public testing::Test {
  protected:
    StreamReports() { progress_.BeginApplication("Word"); }

    ParseResult Parse(std::string_view stream) {
        OutputFile rows("/dev/null", "rows", OutputFile::Mode::kTruncate);
        const ParseContext context{.rules = parser_.rules,
                                   .issues = parser_.issues,
                                   .counters = parser_.counters,
                                   .progress = progress_,
                                   .failures = failures_,
                                   .finder = parser_.context.finder};
        std::int32_t signature = 0;
        return ParseAOT(context, rows, TestParser::kFullName, stream, signature);
    }
    std::string Advice(const std::string& dump = {}) const {
        const std::string folder = shell_.files.ProgramFolder();
        return " - to aid diagnosis of this problem, please send the " +
               (dump.empty() ? "" : "created .DMP file (" + folder + "\\Tempdata\\" + dump + ") and the ") +
               "Zorvel log file (" + folder +
               "\\Zorvel.log) to the maintainer, using the data-sending option of the Help menu.";
    }

    TestShell shell_;
    SessionOptions& session_ = shell_.options.session;
    FakeRunDisplay display_;
    RunStatus status_{shell_.clock, shell_.ui, display_};
    StreamProgress progress_{shell_.services, status_, 40, true};
    StreamFailureReports failures_{shell_.services, 1.0};
    TestParser parser_;
};

TEST_F(StreamReports, TellTwiceOfAnUnknownTypeUntilTheAnswerNo) {
    shell_.options.warning_boxes = true;
    session_.SoundsEnabled = true;
    session_.WarningSound = "warn";
    shell_.folder.Write("warn.WAV", "x");
    shell_.ui.answers = {Answer::kYes, Answer::kYes, Answer::kNo};
    EXPECT_EQ(Parse(kUnknownType), ParseResult::kParsed);
    EXPECT_EQ(failures_.count(), 2);
    EXPECT_EQ(shell_.ui.sounds.size(), 2U);
    EXPECT_GE(shell_.clock.slept, 2.0);
    EXPECT_EQ(display_.stream_progress.back(), 100);
    const std::string type = " WARNING: ParseAOT: Unrecognised data type 7 encountered - " + Advice();
    const std::string loop = " WARNING: ParseAOT: Infinite Loop encountered! - " + Advice();
    EXPECT_THAT(shell_.LogLines(), ElementsAre(type, loop));
    ASSERT_EQ(shell_.ui.boxes.size(), 2U);
    const MessageBox& box = shell_.ui.boxes[0];
    EXPECT_EQ(box.text,
              "Zorvel is unable to correctly interpret this application stream file" + Advice() +
                  "\n\nDo you want to see any further occurrences of this message during this run?");
    EXPECT_EQ(box.buttons, Buttons::kYesNo);
    EXPECT_EQ(box.icon, MessageIcon::kExclamation);
    EXPECT_EQ(box.default_answer, Answer::kYes);
    EXPECT_EQ(shell_.ui.boxes[1].text, box.text);

    Parse(kUnknownType);
    EXPECT_EQ(shell_.ui.boxes.size(), 3U);
    EXPECT_FALSE(shell_.options.warning_boxes);
    EXPECT_EQ(failures_.count(), 4);
    EXPECT_THAT(shell_.LogLines(), ElementsAre(type, loop, type, loop));
    EXPECT_TRUE(std::filesystem::is_empty(shell_.folder.path() / "TempData")) << "no dump file";
}

TEST_F(StreamReports, LeaveDumpFilesOfTheirOwnWhenTheOptionsAskForThem) {
    session_.CreateDMPFileOnError = true;
    for (const int second : {5, 6, 5}) {  // at the end the clock was put back
        shell_.clock.now.second = second;
        Parse(kUnknownType);
    }
    // Each stream gives two reports.
    const std::vector<std::string> log = shell_.LogLines();
    const std::string names[] = {"05", "05_2", "06", "06_2", "05_3", "05_4"};
    ASSERT_EQ(log.size(), std::size(names));
    for (std::size_t i = 0; i < log.size(); ++i) {
        const std::string dump = "Zorvel_2611161728" + names[i] + ".dmp";
        const std::string phase = i % 2 == 0 ? "2" : "3";
        EXPECT_EQ(
            shell_.folder.Read("TempData/" + dump),
            "Word.APPS.SITE\r\n " + phase + " , 7 , 31 , 16 , 3 , 20 , 2 , 0 \r\n" + kUnknownType + "\r\n");
        EXPECT_EQ(log[i].substr(log[i].find(" - ")), " - " + Advice(dump));
    }
}

TEST_F(StreamReports, GoOnWithoutADumpFileThatCannotBeWritten) {
    session_.CreateDMPFileOnError = true;
    const std::string dump = "Zorvel_261116172805";
    for (const char* name : {".dmp", "_2.dmp"})
        std::filesystem::create_directory(shell_.folder.path() / "TempData" / (dump + name));
    EXPECT_EQ(Parse(kUnknownType), ParseResult::kParsed);
    EXPECT_EQ(failures_.count(), 2);
    const auto lost = [&](const std::string& name) {
        return "Error 75 (Path/File access error) occurred while the .DMP file (" +
               shell_.files.ProgramFolder() + "\\Tempdata\\" + dump + name + ") was written";
    };
    EXPECT_EQ(shell_.OnlyBox(), lost(".dmp") + " - the run goes on without it");
    EXPECT_THAT(shell_.LogLines(),
                ElementsAre(" WARNING: ParseAOT: " + lost(".dmp"), HasSubstr(dump + ".dmp"),
                            " WARNING: ParseAOT: Unrecognised data type 7 encountered - " + Advice(),
                            " WARNING: ParseAOT: " + lost("_2.dmp"), HasSubstr(dump + "_2.dmp"),
                            " WARNING: ParseAOT: Infinite Loop encountered! - " + Advice()));
}

TEST_F(StreamReports, LeaveTheLengthOfANameThatIsCutInTheDumpFile) {
    session_.CreateDMPFileOnError = true;
    Parse("AOT FILE" + Header({.type = 24, .action = 0, .length = 34, .at_first = 'A'}) + Slot("", 2));
    EXPECT_THAT(shell_.folder.Read("TempData/Zorvel_261116172805_2.dmp"),
                HasSubstr(" 3 , 24 , 9 , 20 , 0 , 34 , 2 , 0 "));
    Parse("AOT FILE" + ShortHeader({.type = 38, .action = 0, .length = 40}) + std::string(8, '\0') +
          Slot("n", 3));
    EXPECT_THAT(shell_.folder.Read("TempData/Zorvel_261116172805_4.dmp"),
                HasSubstr(" 3 , 38 , 9 , 16 , 0 , 40 , 3 , 0 "));
}

TEST_F(StreamReports, TellTheErrorAndTheStepItStruckAt) {
    shell_.options.warning_boxes = false;
    const std::string stream = StreamBuilder().FileCopy("source", "target").bytes();
    Parse(stream.substr(0, stream.size() - 1));
    const std::string where = " at Line 2. " + Advice();
    ASSERT_EQ(shell_.ui.boxes.size(), 1U);
    EXPECT_EQ(shell_.ui.boxes[0].text, "Error no. 9 (Subscript out of range) occurred in ParseAOT" + where);
    EXPECT_EQ(shell_.ui.boxes[0].buttons, Buttons::kOk);
    EXPECT_EQ(shell_.ui.boxes[0].icon, MessageIcon::kExclamation);
    EXPECT_THAT(shell_.LogLines(),
                ElementsAre(" ERROR: ParseAOT: Error # 9 (Subscript out of range) occurred" + where,
                            " WARNING: ParseAOT: Infinite Loop encountered! - " + Advice()));
}

TEST_F(StreamReports, OfAStreamWithoutASignatureAreALineOfTheLog) {
    EXPECT_EQ(Parse("AOT FIL"), ParseResult::kRejected);
    EXPECT_THAT(shell_.LogLines(),
                ElementsAre(" WARNING: ParseAOT: string passed to routine doesn't have an AOT ID"));
    EXPECT_THAT(shell_.ui.boxes, IsEmpty());
}

TEST_F(StreamReports, OfTheSearchEngineStopTheRunAndOfferItsDownload) {
    FakeFinder finder;
    finder.stream_error = errors::kNoAutomation;
    parser_.context.finder = &finder;
    for (const bool accepted : {false, true}) {
        shell_.activity.UserInterrupt = false;
        if (accepted) shell_.ui.answers = {Answer::kYes};
        EXPECT_EQ(Parse(StreamBuilder().FileCopy("s", "t").bytes()), ParseResult::kRejected);
        EXPECT_TRUE(shell_.activity.UserInterrupt);
        EXPECT_EQ(shell_.ui.opened.size(), accepted ? 1U : 0U);
        EXPECT_EQ(shell_.ui.boxes.at(0).default_answer, Answer::kNo);
        EXPECT_EQ(
            shell_.OnlyBox(),
            "Error 430 (Class does not support Automation or does not support expected interface) occurred "
            "during ParseAOT - this error may be due to your Windows Scripting Host system files being out "
            "of date - would you like to visit the Microsoft Windows Script download page to get the latest "
            "version for your Operating System?");
    }
    const std::string line =
        " ERROR: Error # 430 (Class does not support Automation or does not support "
        "expected interface) occurred in ParseAOT";
    EXPECT_THAT(shell_.LogLines(), ElementsAre(line, line));
    EXPECT_EQ(failures_.count(), 0);
}

TEST_F(StreamReports, ShowTheProgressOfALongStreamOnceASecond) {
    status_.SetStreamProgress(20);
    parser_.issues.on_issue = [this] { shell_.clock.Sleep(0.6); };  // for every record
    StreamBuilder slow_stream;
    for (int count = 0; count < 4; ++count)
        slow_stream.Macro("m", "\\\\v");  // 24 bytes each, 104 in all
    shell_.clock.timer = 86399;           // over midnight
    int events = 0;
    shell_.ui.on_events = [&events] { ++events; };
    EXPECT_EQ(Parse(slow_stream.bytes()), ParseResult::kParsed);
    // Only the second record's end is a second after the start; the fourth ends the stream.
    const double progress = 20 + 40 * (57.0 / 104.0);
    EXPECT_THAT(shell_.ui.statuses, ElementsAre("Saving eDirectory information for 'Word - 54.8%"));
    EXPECT_EQ(shell_.ui.picture, StatusPicture::kYellowBall);
    EXPECT_THAT(display_.stream_progress, ElementsAre(20, progress, 100));
    EXPECT_THAT(display_.overall_progress, ElementsAre(progress));
    EXPECT_EQ(events, 5) << "ESC is noticed between the records, too";
}

TEST_F(StreamReports, OfEscComeOnceAndTheStreamEndsAtItsNextRecord) {
    const struct {
        const char* what;
        int pressed_after;
        std::int32_t read;
        ParseResult result;
    } cases[] = {
        {"ESC within the stream", 2, 3, ParseResult::kCut},
        {"ESC before its last record", 3, 4, ParseResult::kParsed},
        {"ESC before the stream", 0, 4, ParseResult::kParsed},
    };
    shell_.clock.tick = 0.11;  // pending events run after every record
    const std::string macros =
        StreamBuilder().Macro("m", "v").Macro("m", "v").Macro("m", "v").Macro("m", "v").bytes();
    for (const auto& row : cases) {
        int events = 0;
        parser_.counters = {};
        shell_.activity.UserInterrupt = row.pressed_after == 0;
        shell_.ui.on_events = [&] {
            if (++events == row.pressed_after) shell_.activity.UserInterrupt = true;
        };
        EXPECT_EQ(Parse(macros), row.result) << row.what;
        EXPECT_EQ(parser_.counters.OfRun(Counter::kMacros), row.read) << row.what;
    }
    EXPECT_THAT(shell_.LogLines(), ElementsAre("    ParseAOT: User interrupted Zorvelrun with ESC key"));
}

}  // namespace
}  // namespace zorvel::test
