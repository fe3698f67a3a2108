// The log viewer: what it does to the log, what it shows, and what it tells when it cannot.
#include "viewers/log_view.h"

#include <gmock/gmock.h>

#include <vector>

#include "support/fakes.h"
#include "viewers/log_problems.h"
#include "viewers/log_rtf.h"
#include "viewers/rich_text_sinks.h"

namespace zorvel {
namespace {

using test::MarkupOf;
using test::TestShell;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr std::string_view kHead =
    "{\\rtf1\\ansi\\deff0\\deftab720\r\n{\\fonttbl\r\n{\\f0\\fswiss MS Sans Serif;}\r\n"
    "{\\f1\\froman\\fcharset2 Symbol;}\r\n{\\f2\\fmodern\\fprq1 Courier;}\r\n{\\f3\\froman Times New "
    "Roman;}}\r\n"
    "{\\colortbl;\\red0\\green0\\blue0;\\red0\\green0\\blue255;\\red0\\green255\\blue255;"
    "\\red0\\green255\\blue0;"
    "\\red255\\green0\\blue255;\\red255\\green0\\blue0;\\red255\\green255\\blue0;\\red255\\green255\\blue255;"
    "\\red0\\green0\\blue128;\\red0\\green128\\blue128;\\red0\\green128\\blue0;\\red128\\green0\\blue128;"
    "\\red128\\green0\\blue0;\\red128\\green128\\blue0;\\red128\\green128\\blue128;"
    "\\red192\\green192\\blue192;}"
    "\r\n\\deflang2057\\pard\r\n";

TEST(LogRtf, EachLineIsShownInTheColourOfItsMessage) {
    struct Case {
        std::string line, rtf, markup;
    };
    const std::string time = "16/11/2026 17:28:05";
    for (const Case& c : std::vector<Case>{
             {time + " ERROR: Unexpected error # 53",
              "\\plain\\f2\\fs20\\highlight6\\cf1 " + time + " ERROR: Unexpected error # 53\\par\r\n",
              "[Courier 10 #000000 /ff0000|" + time + " ERROR: Unexpected error # 53]\n"},
             {time + " WARNING: x", "\\plain\\f2\\fs20\\highlight7\\cf1 " + time + " WARNING: x\\par\r\n",
              "[Courier 10 #000000 /ffff00|" + time + " WARNING: x]\n"},
             {time + " Warning: x", "\\plain\\f2\\fs20 " + time + " Warning: x\\par\r\n",
              "[Courier 10|" + time + " Warning: x]\n"},
             {time + "    an ERROR", "\\plain\\f2\\fs20 " + time + "    an ERROR\\par\r\n",
              "[Courier 10|" + time + "    an ERROR]\n"},
             {"C:\\Tool\\TempData", "\\plain\\f2\\fs20 C:\\\\Tool\\\\TempData\\par\r\n",
              "[Courier 10|C:\\Tool\\TempData]\n"},
             {"", "\\plain\\f2\\fs20 \\par\r\n", "\n"},
             {" {x} \\{ } \\par {", "\\plain\\f2\\fs20  {x} \\\\{ } \\\\par {\\par\r\n",
              "[Courier 10| {x} \\{ } \\par {]\n"},
             {"caf\xE9", "\\plain\\f2\\fs20 caf\xE9\\par\r\n", "[Courier 10|caf\u00E9]\n"},
         }) {
        std::string rtf;
        AppendLogLine(rtf, c.line);
        EXPECT_EQ(rtf, c.rtf);
        const std::string before = "{\\par\r\n";  // a line that ends with a brace
        EXPECT_EQ(MarkupOf(std::string(kHead) + before + rtf + "}\r\n"), "[MS Sans Serif 12|{]\n" + c.markup);
    }
}

TEST(LogProblems, AreCountedAndFoundInBothDirections) {
    const std::string time = "16/11/2026 17:28:05";
    std::string rtf(kHead);
    for (const char* line :
         {"    begins", " ERROR: x", "    an ERROR", " WARNING: y", " Warning: z", "    ends"})
        AppendLogLine(rtf, time + line);
    RichLines lines;
    ReadRichText(rtf + "}\r\n", lines);
    const LogProblems problems(lines);
    struct Case {
        std::size_t line;
        std::optional<std::size_t> previous, next;
        const char* text;
    };
    for (const Case& c :
         {Case{0, {}, 1, "2 problems"}, Case{1, {}, 3, "Problem 1 of 2"}, Case{2, 1, 3, "2 problems"},
          Case{3, 1, {}, "Problem 2 of 2"}, Case{5, 3, {}, "2 problems"}}) {
        EXPECT_EQ(problems.Previous(c.line), c.previous) << c.line;
        EXPECT_EQ(problems.Next(c.line), c.next) << c.line;
        EXPECT_EQ(problems.Text(c.line), c.text);
    }
}

TEST(LogView, ShowsTheLogAsItIsAndGoesOnWithIt) {
    TestShell shell;
    shell.folder.Write("TempData/Zorvel.$$$", "results of a Find run");
    shell.log.WriteLog("ERROR: x");
    std::string shown;
    std::vector<std::string> statuses;
    EXPECT_TRUE(LogView(shell.services).Open([&](std::string_view path) {
        EXPECT_EQ(path, shell.files.Path("TempData\\Zorvel.rt$"));
        test::PlainText sink;
        ReadRichTextFile(shell.files, path, sink);
        shown = sink.text;
        statuses = shell.ui.statuses;
    }));
    EXPECT_EQ(shown,
              "16/11/2026 17:28:05 ERROR: x\n"
              "16/11/2026 17:28:05    Committing current Zorvel log file in preparation to view\n");
    const std::string rtf = shell.folder.Read("TempData/Zorvel.rt$");
    EXPECT_EQ(rtf.substr(0, kHead.size()), kHead);
    EXPECT_THAT(rtf, testing::EndsWith("view\\par\r\n}\r\n"));
    EXPECT_THAT(shell.LogLines(),
                ElementsAre(" ERROR: x", "    Committing current Zorvel log file in preparation to view",
                            "    Copy of log file taken successfully"));
    EXPECT_THAT(statuses, ElementsAre("Please wait a moment - Processing log file..."));
    EXPECT_THAT(shell.ui.statuses.back(), HasSubstr("Ready."));
    EXPECT_EQ(shell.ui.picture, StatusPicture::kGreenBall);
    EXPECT_THAT(shell.ui.boxes, IsEmpty());
}

TEST(LogView, AConversionThatFailsIsToldAndTheSessionGoesOn) {
    TestShell shell;
    LogView view(shell.services);
    view.GenerateRTF();
    ASSERT_EQ(shell.ui.boxes.size(), 1U);
    EXPECT_EQ(shell.ui.boxes[0].text,
              "Unexpected error 53 (File not found) occurred in GenerateRTF routine.");
    EXPECT_EQ(shell.ui.boxes[0].detail, shell.files.Path("TempData\\Zorvel.$$$") + ": File not found");
    EXPECT_EQ(shell.ui.boxes[0].title, "Zorvel");
    EXPECT_EQ(shell.ui.boxes[0].icon, MessageIcon::kCritical);
    EXPECT_EQ(shell.LogLines().front(),
              " WARNING: GenerateRTF: Unexpected error # 53 (File not found) occurred - continuing...");
    EXPECT_FALSE(shell.folder.Has("TempData/Zorvel.rt$"));

    // A conversion that cannot be written is told; there is nothing to show, and the window opens empty.
    std::filesystem::create_directory(shell.folder.path() / "TempData/Zorvel.rt$");
    EXPECT_TRUE(view.Open([](std::string_view) { ADD_FAILURE() << "there is no text to show"; }));
    ASSERT_EQ(shell.ui.boxes.size(), 2U);
    EXPECT_THAT(shell.ui.boxes[1].text,
                HasSubstr("(Path/File access error) occurred in GenerateRTF routine."));
    EXPECT_THAT(shell.LogLines(), testing::Contains("    Copy of log file taken successfully"));
}

TEST(LogView, ALogThatCannotBeCopiedIsToldAndGoesOn) {
    TestShell shell;
    std::filesystem::remove(shell.folder.path() / "Zorvel.log");
    EXPECT_FALSE(LogView(shell.services).Open([](std::string_view) { ADD_FAILURE(); }));
    EXPECT_EQ(shell.OnlyBox(), "ERROR: Unexpected error # 53 (File not found) occurred in frmViewLog");
    EXPECT_EQ(shell.LogLines().front(),
              " ERROR: Unexpected error # 53 (File not found) occurred in frmViewLog");
    EXPECT_THAT(shell.ui.statuses.back(), HasSubstr("Ready."));
}

}  // namespace
}  // namespace zorvel
