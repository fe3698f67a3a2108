// Rich text as lines of one text: where they lie, how they look, and what of them goes to the clipboard.
#include "viewers/rich_lines.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "viewers/rich_lines_export.h"
#include "viewers/rich_text_sinks.h"

namespace zorvel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr RichTextColour kRed{255, 0, 0};
constexpr RichTextColour kBlack{0, 0, 0};

RichLines LinesOf(std::string_view rtf) {
    RichLines lines;
    ReadRichText(rtf, lines);
    return lines;
}

// Three lines: one plain, one black on red, one with a bold word.
RichLines Sample() {
    return LinesOf(
        "{\\rtf1{\\colortbl;\\red0\\green0\\blue0;\\red255\\green0\\blue0;}"
        "\\plain one\\par\\plain\\highlight2\\cf1 two\\par\\plain a {\\b bold} word\\par}");
}

TEST(RichLines, ParagraphsAndLineBreaksMakeLines) {
    const struct {
        std::string rtf;
        std::string text;
        std::size_t lines;
    } kCases[] = {
        {"", "", 0},
        {"{\\rtf1}", "", 0},
        {"{\\rtf1\\par}", "\n", 1},
        {"{\\rtf1 a\\par b\\par}", "a\nb\n", 2},
        {"{\\rtf1 a\\par b}", "a\nb\n", 2},
        {"{\\rtf1 a\\line b\\line\\'e9{\\b c}\\par\\par}",
         "a\nb\n\xE9"
         "c\n\n",
         4},
        {"{\\rtf1 \\u8364? \\u9829?\\par}", "\x80 ?\n", 1},  // the euro has a code, a heart has none
    };
    for (const auto& c : kCases) {
        const RichLines lines = LinesOf(c.rtf);
        EXPECT_EQ(lines.text(), c.text) << c.rtf;
        EXPECT_EQ(lines.size(), c.lines) << c.rtf;
        EXPECT_EQ(lines.End(), c.text.empty() ? 0 : c.text.size() - 1);
        for (std::size_t offset = 0; offset < c.text.size(); ++offset) {
            const std::size_t line = lines.LineAt(offset);
            EXPECT_LE(lines.LineBegin(line), offset);
            EXPECT_GE(lines.LineEnd(line), offset);
            EXPECT_EQ(lines.text()[lines.LineEnd(line)], '\n');
            EXPECT_EQ(lines.OffsetAt(line, lines.Column(offset)), offset);
        }
    }
    EXPECT_EQ(LinesOf("").Column(0), 0U);
    EXPECT_EQ(Sample().Line(1), "two");
}

TEST(RichLines, RunsHaveTheirFormats) {
    const RichLines lines = Sample();
    const LineFormat plain;
    const LineFormat bar{kBlack, kRed};
    LineFormat bold;
    bold.bold = true;
    EXPECT_THAT(lines.Runs(0, lines.text().size()),
                ElementsAre(LineRun{0, 4, plain}, LineRun{4, 8, bar}, LineRun{8, 10, plain},
                            LineRun{10, 14, bold}, LineRun{14, 20, plain}));
    EXPECT_THAT(lines.Runs(11, 16), ElementsAre(LineRun{11, 14, bold}, LineRun{14, 16, plain}));
    EXPECT_THAT(lines.Runs(5, 5), IsEmpty());
    EXPECT_EQ(lines.Background(0), std::nullopt);
    EXPECT_EQ(lines.Background(1), kRed);
    EXPECT_EQ(LinesOf("{\\rtf1{\\colortbl;\\red255\\green0\\blue0;}{\\highlight1 a} b\\par}").Background(0),
              std::nullopt);
    // Empty lines before the first text have no format.
    EXPECT_THAT(LinesOf("{\\rtf1\\par{\\b a}\\par}").Runs(0, 3),
                ElementsAre(LineRun{0, 1, plain}, LineRun{1, 3, bold}));
    EXPECT_EQ(LinesOf("{\\rtf1\\par}").Background(0), std::nullopt);
    EXPECT_THAT(LinesOf("{\\rtf1\\par}").Runs(0, 1), ElementsAre(LineRun{0, 1, plain}));
}

TEST(RichLines, TabsReachToTheNextStop) {
    const RichLines lines = LinesOf("{\\rtf1 a\\tab b\\tab\\tab c\\par 12345678\\tab x\\par}");
    const std::size_t columns[] = {0, 1, 8, 9, 16, 24, 25};
    for (std::size_t offset = 0; offset < std::size(columns); ++offset)
        EXPECT_EQ(lines.Column(offset), columns[offset]) << offset;
    EXPECT_EQ(lines.Column(lines.LineBegin(1) + 9), 16U);
    EXPECT_EQ(lines.columns(), 25U);
    EXPECT_EQ(lines.OffsetAt(0, 7), 1U);  // the tab covers columns 1 to 7
    EXPECT_EQ(lines.OffsetAt(0, 8), 2U);
    EXPECT_EQ(lines.OffsetAt(0, 1000), lines.LineEnd(0));
}

TEST(RichLines, ColumnsOfLongLinesAreExactEverywhere) {
    // Lines of every kind next to each other: short, long, long with tabs.
    std::string rtf = "{\\rtf1 ";
    for (const std::size_t length : {10U, 50000U, 3U, 20000U}) {
        for (std::size_t i = 0; i < length; ++i)
            rtf += i % 97 == 5 && length > 100 ? "\\tab x" : "x";
        rtf += "\\par ";
    }
    const RichLines lines = LinesOf(rtf + "}");
    ASSERT_EQ(lines.size(), 4U);
    std::size_t widest = 0;
    for (std::size_t line = 0; line < lines.size(); ++line) {
        std::size_t column = 0;
        for (std::size_t offset = lines.LineBegin(line); offset < lines.LineEnd(line); ++offset) {
            const std::size_t width = lines.text()[offset] == '\t' ? 8 - column % 8 : 1;
            if (offset % 61 == 0 || offset % 4096 < 2) {
                ASSERT_EQ(lines.Column(offset), column) << offset;
                ASSERT_EQ(lines.OffsetAt(line, column), offset);
                ASSERT_EQ(lines.OffsetAt(line, column + width - 1), offset);
            }
            column += width;
        }
        EXPECT_EQ(lines.Column(lines.LineEnd(line)), column);
        widest = std::max(widest, column);
    }
    EXPECT_EQ(lines.columns(), widest);
}

TEST(RichLines, AWordEndsWhereItsCharactersEnd) {
    const RichLines lines = LinesOf("{\\rtf1 SetUp_1.exe, \\'c9t\\'e9\\par  x\\par}");
    const struct {
        std::size_t offset;
        std::pair<std::size_t, std::size_t> word;
    } kCases[] = {
        {0, {0, 7}},    {6, {0, 7}},    {7, {7, 8}},    {8, {8, 11}},   {11, {11, 12}}, {12, {12, 13}},
        {14, {13, 16}}, {16, {16, 16}}, {17, {17, 18}}, {18, {18, 19}}, {19, {19, 19}},
    };
    for (const auto& c : kCases)
        EXPECT_EQ(lines.WordAt(c.offset), c.word) << c.offset;
    EXPECT_EQ(LinesOf("").WordAt(0), (std::pair<std::size_t, std::size_t>(0, 0)));
}

TEST(RichLinesExport, EveryFormOfTheTextHasAllOfIt) {
    const RichLines lines = LinesOf(
        "{\\rtf1{\\colortbl;\\red128\\green0\\blue0;}Word & <\\'c9>\\par\\cf1\\b  C:\\\\\\{x\\}\\tab "
        "y\\par}");
    const std::size_t end = lines.text().size();
    EXPECT_EQ(LinesAsText(lines, 0, end), "Word & <\xC3\x89>\n C:\\{x}\ty\n");
    EXPECT_EQ(LinesAsHtml(lines, 0, end),
              "<meta charset=\"utf-8\"><pre>Word &amp; &lt;\xC3\x89&gt;\n"
              "<span style=\"color:#800000;font-weight:bold;\"> C:\\{x}\ty\n</span></pre>");
    EXPECT_EQ(LinesAsText(lines, 5, 8), "& <");
    EXPECT_EQ(LinesAsHtml(lines, 13, 15),
              "<meta charset=\"utf-8\"><pre>"
              "<span style=\"color:#800000;font-weight:bold;\">:\\</span></pre>");
    EXPECT_EQ(test::MarkupOf(LinesAsRtf(lines, 0, end)),
              "[Courier 10|Word & <\xC3\x89>]\n[Courier 10 b #800000| C:\\{x}\ty]\n");
    EXPECT_EQ(test::PlainTextOf(LinesAsRtf(lines, 5, 5)), "");
}

TEST(RichLinesExport, RichTextReadAgainIsTheSame) {
    std::string rtf = "{\\rtf1{\\colortbl;\\red1\\green2\\blue3;\\red255\\green255\\blue0;}";
    for (int byte = 0x20; byte < 0x100; ++byte) {
        constexpr char kHex[] = "0123456789abcdef";
        rtf += byte % 3 == 0   ? "\\plain\\i\\cf1 "
               : byte % 3 == 1 ? "\\plain\\ul\\highlight2 "
                               : "\\plain\\b ";
        rtf += std::string("\\'") + kHex[byte / 16] + kHex[byte % 16];
        if (byte % 16 == 0) rtf += "\\par\\par ";
    }
    const RichLines lines = LinesOf(rtf + "\\par}");
    const RichLines again = LinesOf(LinesAsRtf(lines, 0, lines.text().size()));
    EXPECT_EQ(again.text(), lines.text());
    EXPECT_EQ(again.Runs(0, again.text().size()), lines.Runs(0, lines.text().size()));
}

}  // namespace
}  // namespace zorvel
