// The search of a Find run: what it counts, lists and hands on, and what it says when it fails.
#include "find/stream_finder.h"

#include <gmock/gmock.h>

#include "platform/regex.h"
#include "stream_builder.h"
#include "support/errors.h"
#include "support/fakes.h"
#include "support/file_size_limit.h"
#include "support/streams_fakes.h"

namespace zorvel {
namespace {

using test::RaisedBy;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

// Notes what the Find tab shows and what was found.
class FakeFind final : public FindDisplay, public FindListener {
  public:
    std::vector<std::string> shown;
    std::vector<std::string> matches;

    void HideLabInfo() override { shown.emplace_back("hidden"); }
    void LoadResults(std::string_view path) override { shown.emplace_back(path.substr(path.rfind('\\'))); }
    void ShowLabInfo(std::string_view text) override { shown.emplace_back(text); }
    void AddMatch(std::string_view full_name, std::string_view stream_label,
                  std::string_view entry_text) override {
        matches.push_back(std::string(full_name) + "|" + std::string(stream_label) + "|" +
                          std::string(entry_text));
    }
};

class StreamFinding : public testing::Test {
  protected:
    void Parse(StreamFinder& finder, const std::string& label, std::string_view stream) {
        parser_.context.finder = &finder;
        finder.BeginStream("Word", test::TestParser::kFullName, label);
        result_ = parser_.Parse(stream);
        finder.EndStream();
    }
    // The results behind the header, without what is the same in every line.
    std::string Results() const {
        std::string text = shell_.folder.Read("TempData/Zorvel.$$$");
        text.erase(0, text.find("\\pard\r\n") + 7);
        return text;
    }

    test::TestShell shell_;
    test::TestParser parser_;
    FakeFind find_;
    ParseResult result_ = ParseResult::kParsed;
};

TEST_F(StreamFinding, ListsFileAndRegistryEntriesOnceEach) {
    StreamFinder finder(shell_.services, find_, &find_);
    ASSERT_TRUE(finder.Prepare("find.?me"));
    finder.Start();
    Parse(finder, "(Copy Files)",
          StreamBuilder()
              .FileCopy("findme", "C:\\other")
              .FileCopy("s", "\\\\SRV\\FindMe\\find-me.exe")
              .FileDelete("findme")
              .DirectoryCreate("C:\\FINDME\\x")
              .bytes());
    Parse(finder, "(Registry Settings)",
          StreamBuilder()
              .RegistryValue("HKEY_CURRENT_USER\\A", "name", "it's findme")
              .RegistryValue("HKEY_CURRENT_USER\\A", "find", "me")
              .RegistryKeyCreate("hkey_findme")
              .bytes());
    Parse(finder, "(INI Settings)", StreamBuilder().IniValue("findme", "a", "b", "c").bytes());
    Parse(finder, "(Macros)", StreamBuilder().Macro("findme", "v").bytes());
    finder.Finish();
    EXPECT_THAT(find_.matches,
                ElementsAre("Word.APPS.SITE|(Copy Files)|\\\\SRV\\FINDME\\FIND-ME.EXE",
                            "Word.APPS.SITE|(Copy Files)|C:\\FINDME\\x",
                            "Word.APPS.SITE|(Registry Settings)|HKEY_CURRENT_USER\\A  name  it''s findme",
                            "Word.APPS.SITE|(Registry Settings)|HKEY_FINDME"));
    EXPECT_EQ(Results(),
              "\\plain\\f2\\fs20Word - (Copy Files)\\par\r\n"
              "\\plain\\f2\\fs20\\cf1\\b  \\\\\\\\SRV\\\\FINDME\\\\FIND-ME.EXE\\par\r\n"
              "\\plain\\f2\\fs20\\cf1\\b  C:\\\\FINDME\\\\x\\par\r\n"
              "\\plain\\f2\\fs20Word - (Registry Settings)\\par\r\n"
              "\\plain\\f2\\fs20\\cf1\\b  HKEY_CURRENT_USER\\\\A  name  it''s findme\\par\r\n"
              "\\plain\\f2\\fs20\\cf1\\b  HKEY_FINDME\\par\r\n}\r\n");
    EXPECT_THAT(find_.shown, ElementsAre("hidden", "\\Zorvel.$$$", "Total of 4 match(es) found"));
    EXPECT_THAT(shell_.ui.boxes, IsEmpty());
}

TEST_F(StreamFinding, ARunStartsAnewAndFindsNothingGladly) {
    StreamFinder finder(shell_.services, find_);
    ASSERT_TRUE(finder.Prepare("a"));
    for (int run = 0; run < 2; ++run) {
        finder.Start();
        Parse(finder, "(Copy Files)", StreamBuilder().FileCopy("s", "a").bytes());
        finder.Finish();
        EXPECT_EQ(find_.shown.back(), "Total of 1 match(es) found");
    }
    ASSERT_TRUE(finder.Prepare("http://"));
    finder.Start();
    Parse(finder, "(Copy Files)", StreamBuilder().FileCopy("s", "a").bytes());
    finder.Finish();
    EXPECT_EQ(Results(), "}\r\n");
    EXPECT_EQ(find_.shown.back(), "Total of 0 match(es) found");
}

TEST_F(StreamFinding, AnInvalidExpressionIsToldOnceAndBeforeTheRun) {
    shell_.folder.Write("TempData/Zorvel.$$$", "kept");
    StreamFinder finder(shell_.services, find_);
    EXPECT_FALSE(finder.Prepare("a(b"));
    ASSERT_EQ(shell_.ui.boxes.size(), 1U);
    const MessageBox& box = shell_.ui.boxes[0];
    EXPECT_EQ(
        box.text,
        "Error 5 (Invalid expression at character 4: missing closing parenthesis) occurred during Find");
    EXPECT_EQ(box.icon, MessageIcon::kCritical);
    EXPECT_EQ(box.buttons, Buttons::kOk);
    EXPECT_THAT(
        shell_.LogLines(),
        ElementsAre(" ERROR: Unexpected error # 5 (Invalid expression at character 4: missing closing "
                    "parenthesis) occurred in Finder"));
    EXPECT_EQ(shell_.folder.Read("TempData/Zorvel.$$$"), "kept");
}

TEST_F(StreamFinding, AnEntryThatIsTooMuchIsLoggedAndTheNextOneTried) {
    StreamFinder finder(shell_.services, find_, &find_);
    ASSERT_TRUE(finder.Prepare("(a+)+$"));
    finder.Start();
    const std::string hard = std::string(60, 'A') + "?";
    Parse(finder, "(Registry Settings)",
          StreamBuilder().RegistryKeyCreate(hard).RegistryKeyCreate("xaa").bytes());
    EXPECT_THAT(find_.matches, ElementsAre("Word.APPS.SITE|(Registry Settings)|XAA"));
    EXPECT_EQ(finder.failed_entries(), 1);
    EXPECT_EQ(shell_.ui.boxes.size(), 1U);
    EXPECT_THAT(
        shell_.LogLines(),
        ElementsAre(HasSubstr("could not be searched as a whole (The search was given up: match limit "
                              "exceeded), its entries are searched one by one"),
                    " ERROR: Unexpected error # 5 (The search was given up: match limit exceeded) "
                    "occurred in Finder",
                    HasSubstr("of 'Word.APPS.SITE', entry '" + hard + "'")));
}

// A search that fails for what begins with a digit: with that number as its error.
StreamFinder::Search FailingSearch(std::string_view /*expression*/) {
    return [](std::string_view text) {
        if (text.starts_with("430")) throw Error(errors::kNoAutomation);
        if (text.starts_with("5")) throw Error(errors::kInvalidCall, "too much");
        return Regex("hit").Matches(text);
    };
}

TEST_F(StreamFinding, AFailureIsToldOnceLoggedEachTimeAndTheRunGoesOn) {
    StreamFinder finder(shell_.services, find_, &find_, FailingSearch);
    ASSERT_TRUE(finder.Prepare(""));
    finder.Start();
    Parse(finder, "(Registry Settings)",
          StreamBuilder().RegistryKeyCreate("5a").RegistryKeyCreate("hit").RegistryKeyCreate("5b").bytes());
    EXPECT_THAT(find_.matches, ElementsAre("Word.APPS.SITE|(Registry Settings)|HIT"));
    EXPECT_EQ(finder.failed_entries(), 2);
    EXPECT_EQ(shell_.OnlyBox(), "Error 5 (too much) occurred during Find");
    EXPECT_THAT(
        shell_.LogLines(),
        ElementsAre(" ERROR: Unexpected error # 5 (too much) occurred in Finder",
                    HasSubstr("stream '(Registry Settings)' of 'Word.APPS.SITE', entry '5A'"),
                    " ERROR: Unexpected error # 5 (too much) occurred in Finder", HasSubstr("entry '5B'")));
}

TEST_F(StreamFinding, AStreamThatIsTooMuchIsReadEntryByEntry) {
    StreamFinder finder(shell_.services, find_, &find_, [](std::string_view) {
        return [](std::string_view text) {
            if (text.starts_with("AOT FILE")) throw Error(errors::kInvalidCall, "too much");
            return true;
        };
    });
    ASSERT_TRUE(finder.Prepare(""));
    finder.Start();
    Parse(finder, "(Registry Settings)", StreamBuilder().RegistryKeyCreate("a").bytes());
    EXPECT_THAT(find_.matches, ElementsAre("Word.APPS.SITE|(Registry Settings)|A"));
    EXPECT_THAT(shell_.ui.boxes, IsEmpty());
    EXPECT_THAT(shell_.LogLines(),
                ElementsAre(" WARNING: Find: stream '(Registry Settings)' of 'Word.APPS.SITE' could not be "
                            "searched as a whole (too much), its entries are searched one by one"));
}

TEST_F(StreamFinding, AnEngineThatIsNotThereOffersItsDownload) {
    StreamFinder finder(shell_.services, find_, &find_, FailingSearch);
    ASSERT_TRUE(finder.Prepare(""));
    finder.Start();
    shell_.ui.answers = {Answer::kYes};
    Parse(finder, "(Registry Settings)",
          StreamBuilder().RegistryKeyCreate("hit").RegistryKeyCreate("430").bytes());
    ASSERT_EQ(shell_.ui.boxes.size(), 1U);
    EXPECT_THAT(
        shell_.ui.boxes[0].text,
        HasSubstr("Error 430 (Class does not support Automation or does not support expected "
                  "interface) occurred during Find - this error may be due to your Windows Scripting"));
    EXPECT_EQ(shell_.ui.boxes[0].buttons, Buttons::kYesNo);
    EXPECT_EQ(shell_.ui.opened.size(), 1U);
    EXPECT_THAT(shell_.LogLines(), Contains(HasSubstr("Unexpected error # 430 (Class does not")));

    Parse(finder, "(Registry Settings)", "430");  // the search of a whole stream: a failure of the parse
    EXPECT_EQ(result_, ParseResult::kRejected);
    EXPECT_THAT(parser_.failures.noted, ElementsAre("430|1"));
}

TEST_F(StreamFinding, AnExpressionThatTakesTooLongAltogetherEndsTheRun) {
    double seconds = 0;
    const auto slow = [&](std::string_view) -> StreamFinder::Search {
        return [&](std::string_view text) {
            if (!text.starts_with("AOT FILE")) shell_.clock.Sleep(seconds);
            return true;
        };
    };
    StreamFinder finder(shell_.services, find_, &find_, slow);
    ASSERT_TRUE(finder.Prepare("(a+)+"));
    StreamBuilder stream;
    for (int entry = 0; entry < 6; ++entry)
        stream.RegistryKeyCreate("a");
    const struct {
        double seconds;
        bool refused;
    } cases[] = {{4.9, false}, {5.3, true}, {4.9, false}};
    for (const auto& c : cases) {
        seconds = c.seconds;
        finder.Start();
        const auto parse = [&] { Parse(finder, "(Registry Settings)", stream.bytes()); };
        if (!c.refused) {
            EXPECT_NO_THROW(parse());
            continue;
        }
        const Error error = RaisedBy(parse);
        EXPECT_EQ(error.description(), "The expression '(a+)+' is refused: its searches took 31 seconds");
        EXPECT_THAT(error.detail(), HasSubstr("stream '(Registry Settings)' of 'Word.APPS.SITE'"));
        EXPECT_TRUE(error.IsOutputError()) << "it ends the run";
    }
    EXPECT_EQ(finder.failed_entries(), 0);
}

TEST_F(StreamFinding, ResultsThatCannotBeWrittenEndTheRun) {
    StreamFinder finder(shell_.services, find_);
    ASSERT_TRUE(finder.Prepare("a"));
    finder.Start();
    const test::FileSizeLimit full_disk(300);
    Parse(finder, "(Copy Files)", StreamBuilder().FileCopy("s", "a").bytes());
    EXPECT_THROW(finder.BeginStream("Word", "Word.SITE", "(Macros)"), OutputError);
    EXPECT_THROW(finder.Finish(), OutputError);
    EXPECT_THAT(find_.shown, ElementsAre("hidden"));
}

}  // namespace
}  // namespace zorvel
