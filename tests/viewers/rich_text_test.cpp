// What a reader of rich text sees of it: texts, formats, and what is left of damaged documents.
#include "viewers/rich_text.h"

#include <gmock/gmock.h>

#include <vector>

#include "platform/error.h"
#include "support/temp_folder.h"
#include "viewers/rich_text_sinks.h"

namespace zorvel {
namespace {

using test::MarkupOf;
using test::PlainTextOf;
using namespace std::string_literals;

struct Case {
    std::string rtf, expected;
};

TEST(RichText, CharactersAreWhatTheyStandFor) {
    for (const Case& c :
         {Case{R"({\rtf1 a\\b\{c\}})", "a\\b{c}\n"},
          Case{"{\\rtf1 a\r\nb\\par\r\nc\\\nd\\line e\tf\\tab g}", "ab\nc\nd\u2028e\tf\tg\n"},
          Case{R"({\rtf1 caf\'e9 \'80 \'4a})", "caf\u00E9 \u20AC J\n"},
          Case{"{\\rtf1 caf\xE9 \x80 \x93q\x94}", "caf\u00E9 \u20AC \u201Cq\u201D\n"},
          Case{R"({\rtf1 a\~b\-c\_d\|e\:f})", "a\u00A0b\u00ADc\u2011def\n"},
          Case{R"({\rtf1 \emdash\endash\bullet\lquote\rquote\ldblquote\rdblquote})",
               "\u2014\u2013\u2022\u2018\u2019\u201C\u201D\n"},
          Case{R"({\rtf1 \u1046?\u-4064?x})", "\u0416\uF020x\n"},
          Case{R"({\rtf1 \u-10179?\u-8704?})", "\U0001F600\n"},
          Case{R"({\rtf1 \uc2\u1046abc\u1046 \'e9\'e9d})", "\u0416c\u0416d\n"},
          Case{R"({\rtf1 {\uc0\u1046}\u1047?b\u1048{\b c}})", "\u0416\u0417b\u0418c\n"},
          Case{"{\\rtf1 a\\bin4 {}\\}b}", "ab\n"}, Case{R"({\rtf1 no\unknown32 thing\*\cell})", "nothing\n"},
          Case{R"({\rtf1 last\par})", "last\n"}, Case{R"({\rtf1 last\par\par})", "last\n\n"}}) {
        EXPECT_EQ(PlainTextOf(c.rtf), c.expected) << c.rtf;
    }
}

TEST(RichText, FormatsHoldUntilTheyAreEnded) {
    const std::string head =
        "{\\rtf1\\ansi\\deff1{\\fonttbl{\\f0\\fswiss{\\*\\panose 02}Arial;}\r\n{\\f1\\froman Caf\\'e9;}}"
        "{\\colortbl;\\red255\\green0\\blue0;\\red0\\green16\\blue255;}";
    for (const Case& c :
         {Case{"a", "[Caf\u00E9 12|a]\n"}, Case{"\\f0\\fs19 a\\fs20 b", "[Arial 9.5|a][Arial 10|b]\n"},
          Case{"\\b a\\b0 b\\i\\ul c\\i0 d\\ulnone e",
               "[Caf\u00E9 12 b|a][Caf\u00E9 12|b][Caf\u00E9 12 i u|c][Caf\u00E9 12 u|d][Caf\u00E9 12|e]\n"},
          Case{"\\cf1 a\\cf2\\highlight1 b\\cf0\\highlight0 c\\cb2 d\\cf9\\cb9 e",
               "[Caf\u00E9 12 #ff0000|a][Caf\u00E9 12 #0010ff /ff0000|b][Caf\u00E9 12|c]"
               "[Caf\u00E9 12 /0010ff|d][Caf\u00E9 12|e]\n"},
          Case{"\\f0\\b\\cf1 a\\plain b", "[Arial 12 b #ff0000|a][Caf\u00E9 12|b]\n"},
          Case{"a{\\b b{\\i\\f0 c}d}e",
               "[Caf\u00E9 12|a][Caf\u00E9 12 b|b][Arial 12 b i|c][Caf\u00E9 12 b|d][Caf\u00E9 12|e]\n"},
          Case{"\\f7 a", "[ 12|a]\n"}, Case{"\\b\\b0 one{\\b}run", "[Caf\u00E9 12|onerun]\n"},
          Case{"\\qc a\\par\\qr b\\par\\ql c\\par\\pard\\li720\\fi-360\\sb60\\sa120 d\\par{\\li0 "
               "e\\par}f\\par\\pard g",
               "[Caf\u00E9 12|a]<centre>\n[Caf\u00E9 12|b]<right>\n[Caf\u00E9 12|c]\n"
               "[Caf\u00E9 12|d]<left 720><first -360><before 60><after 120>\n"
               "[Caf\u00E9 12|e]<first -360><before 60><after 120>\n"
               "[Caf\u00E9 12|f]<left 720><first -360><before 60><after 120>\n[Caf\u00E9 12|g]\n"},
          Case{"\\deftab360\\pard a\\par\\deftab0 b",
               "[Caf\u00E9 12|a]<tab 360>\n[Caf\u00E9 12|b]<tab 360>\n"},
          Case{"\\fs99999999999 a\\fs-5\\li-99999999999 b",
               "[Caf\u00E9 1638|a][Caf\u00E9 1|b]<left -31680>\n"}}) {
        EXPECT_EQ(MarkupOf(head + c.rtf + "}"), c.expected) << c.rtf;
    }
}

TEST(RichText, AColourTableMayBeginWithoutADefault) {
    EXPECT_EQ(MarkupOf("{\\rtf1{\\fonttbl\\f0\\fmodern A;\\f2 B;}"
                       "{\\colortbl\\red0\\green0\\blue0;\\red128\\green0\\blue0;}"
                       "\\plain\\f2\\fs20Word - (Copy Files)\\par\r\n"
                       "\\plain\\f2\\fs20\\cf1\\b  \\\\\\\\SRV\\\\setup.exe\\par\r\n}\r\n"),
              "[B 10|Word - (Copy Files)]\n[B 10 b #800000| \\\\SRV\\setup.exe]\n");
}

TEST(RichText, WhatIsNoTextStaysAway) {
    for (const char* group :
         {"{\\info{\\title T}{\\author A}}", "{\\stylesheet{\\s0 Normal;}}", "{\\pict\\bin3 }}}00ff}",
          "{\\*\\generator G {nested} \\} more;}", "{\\*\\unheardof x}", "{\r\n\\info x}",
          "{\\header h\\par}", "{\\fonttbl{\\f0 A;}}", "{\\colortbl;;}",
          "{\\field{\\*\\fldinst HYPERLINK \"x\"}}"}) {
        EXPECT_EQ(PlainTextOf("{\\rtf1 a"s + group + "b\\par}"), "ab\n") << group;
    }
}

TEST(RichText, BracesOfTheTextAreText) {
    for (const Case& c :
         {Case{"key {0002-11D0} x", "key {0002-11D0} x\n"}, Case{"{}{{a}b}", "{}{{a}b}\n"},
          Case{"{\\\\\\\\SRV\\\\x}", "{\\\\SRV\\x}\n"}, Case{"a } b", "a } b\n"}, Case{"a { b", "a { b\n"},
          Case{"ends with {", "ends with {\n"}, Case{"}{", "}{\n"}, Case{"{a\\par\r\nb}", "{a\nb}\n"},
          Case{"{\\b bold {x} } rest}", "bold {x}  rest}\n"}}) {
        EXPECT_EQ(PlainTextOf("{\\rtf1{\\fonttbl{\\f2 C;}}\r\n\\pard\r\n\\plain " + c.rtf + "\\par\r\n}\r\n"),
                  c.expected)
            << c.rtf;
    }
}

TEST(RichText, DamagedDocumentsGiveWhatIsThere) {
    for (const Case& c : {Case{"", ""},
                          Case{"plain", "plain\n"},
                          Case{"}", "}\n"},
                          Case{"{", "{\n"},
                          Case{"{\\", "{\n"},
                          Case{"{\\rtf1 a{b}", "a{b}\n"},
                          Case{"{\\rtf1 a\\", "a\n"},
                          Case{"{\\rtf1 a\\'", "a\n"},
                          Case{"{\\rtf1 a\\'e", "ae\n"},
                          Case{"{\\rtf1 a\\'zz", "azz\n"},
                          Case{"{\\rtf1 a{\\b b", "ab\n"},
                          Case{"{\\rtf1 a{\\info b", "a\n"},
                          Case{"{\\rtf1 a{\\fonttbl{\\f0 b", "a\n"},
                          Case{"{\\rtf1 a{\\colortbl\\red1;", "a\n"},
                          Case{"{\\rtf1 a\\bin99999999999 b", "a\n"},
                          Case{"{\\rtf1 a\\bin-1 b", "ab\n"},
                          Case{"{\\rtf1 a\\u99999999999?\\u55357?\\u8233?\\u10?\\u64976?\\u65535?b", "ab\n"},
                          Case{"{\\rtf1 a\\uc-1\\u1046\\uc99999999999\\u1047 gone}", "a\u0416\u0417\n"},
                          Case{"{\\rtf1 a\\'00\\'0a\\'7f"s + '\0' + "\x07\x7F" + "b}" + '\0', "ab\n"},
                          Case{"{\\rtf1 a}\r\n \r\n", "a\n"}}) {
        EXPECT_EQ(PlainTextOf(c.rtf), c.expected) << c.rtf;
    }
}

TEST(RichText, NothingIsTooDeepTooLongOrTooMany) {
    constexpr std::size_t kMany = 300'000;
    const auto repeat = [](const std::string& text) {
        std::string all;
        for (std::size_t count = 0; count < kMany; ++count)
            all += text;
        return all;
    };
    EXPECT_EQ(PlainTextOf("{\\rtf1 " + repeat("{\\b ") + "x" + repeat("}") + "y\\par}"), "xy\n");
    EXPECT_EQ(PlainTextOf("{\\rtf1 " + repeat("{") + repeat("}") + "\\par}"),
              repeat("{") + repeat("}") + "\n");
    EXPECT_EQ(PlainTextOf("{\\rtf1{\\info " + repeat("{") + repeat("}") + "}y\\par}"), "y\n");
    EXPECT_EQ(PlainTextOf("{\\rtf1\\" + repeat("a") + " x\\fs" + repeat("9") + " y}"), "xy\n");
    EXPECT_EQ(PlainTextOf("{" + repeat("\r\n") + "\\rtf1 x}"), "x\n");
    EXPECT_EQ(MarkupOf("{\\rtf1{\\colortbl" + repeat(";") + "\\red1;}{\\fonttbl" + repeat("\\f1 x;") +
                       "\\f2 y;}\\f2\\cf300000 z}"),
              "[y 12|z]\n");
}

TEST(RichText, AFileIsReadWhole) {
    const test::TempFolder folder;
    const std::string line(100, 'x');
    std::string rtf = "{\\rtf1 ";
    std::string expected;
    for (int count = 0; count < 10'000; ++count) {
        rtf += line + "\\par\r\n";
        expected += line + "\n";
    }
    folder.Write("x.rtf", rtf + "}");
    const Files files(folder.path());
    test::PlainText sink;
    ReadRichTextFile(files, files.Path("X.RTF"), sink);
    EXPECT_EQ(sink.text, expected);
    EXPECT_THROW(ReadRichTextFile(files, files.Path("none.rtf"), sink), Error);
}

}  // namespace
}  // namespace zorvel
