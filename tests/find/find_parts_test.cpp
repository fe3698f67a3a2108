// The Find box, its predefined searches and the results file.
#include <gtest/gtest.h>

#include "find/find_box.h"
#include "find/find_results.h"
#include "find/predefined_searches.h"
#include "platform/regex.h"
#include "support/fakes.h"

namespace zorvel::test {
namespace {

constexpr std::string_view kPrompt =
    "Please enter the text to find in the selected applications, or choose one of the pre-defined searches "
    "to "
    "find particular types of data in the applications - click the 'Find' button to start the search.";

TEST(FindBox, DescribesTheChosenSearchAndPromptsForATypedOne) {
    FindBox box;
    EXPECT_EQ(box.comFind(), "(enter text)");
    EXPECT_EQ(box.Focus(), 12U);
    EXPECT_EQ(box.FindPattern(), "(enter text)");

    box.Choose(4);
    EXPECT_EQ(box.comFind(), "Web Addresses");
    EXPECT_EQ(box.chosen(), 4U);
    EXPECT_EQ(box.detail(), "Find items beginning with http://, https://, ftp:// or www.");
    EXPECT_EQ(box.FindPattern(), "http://|https://|ftp://|www\\.");

    EXPECT_FALSE(box.PressKey('a'));
    EXPECT_EQ(box.detail(), kPrompt);
    EXPECT_EQ(box.FindPattern(), "http://|https://|ftp://|www\\.");
    box.Edit("Web Addresses");
    EXPECT_EQ(box.chosen(), std::nullopt);
    EXPECT_EQ(box.FindPattern(), "Web Addresses");  // typed, it is an expression like any other
    box.Choose(0);
    box.Choose(std::nullopt);
    EXPECT_EQ(box.detail(), kPrompt);
}

TEST(FindBox, StartsWithEnterUnlessItIsBlank) {
    const struct {
        std::string_view text;
        bool starts;
    } cases[] = {{"a.b", true}, {"  x ", true}, {"", false}, {"   ", false}};
    for (const auto& c : cases) {
        FindBox box;
        box.Edit(c.text);
        EXPECT_FALSE(box.PressKey('x'));
        EXPECT_EQ(box.PressKey(FindBox::kEnterKey), c.starts) << c.text;
        EXPECT_EQ(box.FindPattern(), c.text);
    }
}

TEST(FindBox, ShowsTheTotalOfTheRunThatHasEnded) {
    FindBox box;
    EXPECT_EQ(box.labInfo(), "Zorvel Find");
    box.HideLabInfo();
    EXPECT_FALSE(box.labInfo_shown());
    box.ShowLabInfo("Total of 3 match(es) found");
    EXPECT_EQ(box.labInfo(), "Total of 3 match(es) found");
    EXPECT_TRUE(box.labInfo_shown());
}

TEST(PredefinedSearches, FindWhatTheyPromise) {
    const struct {
        std::string_view text;
        std::size_t search;
        bool matches;
    } cases[] = {
        {"host 10.1.2.33", 0, true}, {"10.1.2", 0, false},     {"C:\\SETUP.EXE", 1, true},
        {"a.exec", 1, false},        {"run.vbs -x", 1, true},  {"x.reg", 1, false},
        {"x.reg", 2, true},          {"x.wsf", 2, true},       {"Letter.DOC", 3, true},
        {"Letter.docx", 3, false},   {"HTTP://site", 4, true}, {"www.site", 4, true},
        {"wwwsite", 4, false},
    };
    for (const auto& row : cases) {
        const PredefinedSearch& search = PredefinedSearches.at(row.search);
        EXPECT_EQ(Regex(search.expression).Matches(row.text), row.matches) << search.name << ": " << row.text;
    }
    EXPECT_EQ(PredefinedSearches[2].description.substr(0, 60),
              "Extended executable file search - as well as 'normal' execut");
}

TEST(FindResults, ListEntriesUnderTheHeadingOfTheirStream) {
    TestShell shell;
    shell.folder.Write("TempData/Zorvel.$$$", "the log, as rich text");
    FindResults results(shell.files);
    results.Create();
    results.BeginStream("Word", "(Macros)");
    results.EndStream();
    results.BeginStream("Word", "(Copy Files)");
    results.AddEntry("\\\\SRV\\APPS\\setup.exe");
    results.AddEntry("{A}\t");
    results.EndStream();
    results.BeginStream("7-Zip", "(Copy Files)");
    results.AddEntry("a");
    results.BeginStream(" x", "(Registry Settings)");
    results.AddEntry("");
    results.Finish();
    EXPECT_EQ(shell.folder.Read("TempData/Zorvel.$$$"),
              "{\\rtf1\\ansi\\deff0\\deftab720\r\n{\\fonttbl\r\n{\\f0\\fswiss MS Sans Serif;}\r\n"
              "{\\f1\\froman\\fcharset2 Symbol;}\r\n{\\f2\\fmodern\\fprq1 Courier;}\r\n"
              "{\\f3\\froman Times New Roman;}}\r\n"
              "{\\colortbl\\red0\\green0\\blue0;\\red128\\green0\\blue0;\\red255\\green0\\blue0;}\r\n"
              "\\deflang2057\\pard\r\n"
              "\\plain\\f2\\fs20Word - (Copy Files)\\par\r\n"
              "\\plain\\f2\\fs20\\cf1\\b  \\\\\\\\SRV\\\\APPS\\\\setup.exe\\par\r\n"
              "\\plain\\f2\\fs20\\cf1\\b  {A}\t\\par\r\n"
              "\\plain\\f2\\fs20 7-Zip - (Copy Files)\\par\r\n"
              "\\plain\\f2\\fs20\\cf1\\b  a\\par\r\n"
              "\\plain\\f2\\fs20  x - (Registry Settings)\\par\r\n"
              "\\plain\\f2\\fs20\\cf1\\b  \\par\r\n"
              "}\r\n");
}

}  // namespace
}  // namespace zorvel::test
