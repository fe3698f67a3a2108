// What expressions match, and what is said of those that are none.
#include "platform/regex.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "platform/code_page.h"
#include "platform/hex.h"
#include "platform/regex_syntax.h"
#include "platform/regex_tables.h"
#include "support/errors.h"

namespace zorvel {
namespace {

using namespace std::string_view_literals;
using test::RaisedBy;

TEST(Regex, ReadsExpressionsAsECMAScriptDoes) {
    struct Case {
        std::string_view expression, text;
        bool matches;
    };
    const Case cases[] = {
        // Case and characters.
        Case{"setup", "SETUP.EXE", true}, Case{"r\xE9serve", "R\xC9SERVE", true},
        Case{"R\xC9SERVE", "r\xE9serve", true}, Case{R"(^\u0161$)", "\x8A", true}, Case{"\xDF", "SS", false},
        Case{"\xF7", "\xD7", false}, Case{R"(\w)", "\xE9", false}, Case{R"(\xe9)", "\xE9", true},
        Case{R"(\u00E9)", "\xE9", true}, Case{R"(^\u20AC$)", "\x80", true}, Case{R"(\u4E00)", "?", false},
        Case{R"(x\u4E00*y)", "xy", true}, Case{R"(^\x4$)", "x4", true}, Case{R"(\cj)", "\n", true},
        Case{R"(^\c!$)", "\\c!", true}, Case{R"(^\0$)", "\0"sv, true}, Case{R"(^\101\8$)", "A8", true},
        Case{R"(^\v$)", "\v", true}, Case{R"(^\v$)", "\n", false}, Case{R"(^\A\Z\Q\R\h$)", "AZQRh", true},
        Case{R"(\s)", "\xA0", false},
        // Dots, anchors and line ends.
        Case{"a.b", "a\rb", false}, Case{"a.b", "a\nb", false}, Case{"[^a]b", "\r\nb", true},
        Case{"^b", "a\nb", false}, Case{"a$", "a\n", false}, Case{R"(\bexe\b)", "a.exe!", true},
        // Classes.
        Case{"[]", "a", false}, Case{"^[]*x[^]{2}$", "x\n[", true}, Case{"[^]", "\n", true},
        Case{"[[:alpha:]]", "p]", true}, Case{"[[:alpha:]]", "q", false}, Case{R"(^[\w-.]$)", "-", true},
        Case{R"(^[\b]$)", "\b", true}, Case{R"(^[\]\-]$)", "]", true},
        Case{R"([\u2018-\u201D])", "\x93", true}, Case{R"(^[^\0-\u007F]$)", "\xFF", true},
        Case{R"([\u4E00-\uFFFF])", "\xFF", false}, Case{R"([a-\uFFFF])", "\xFF", true},
        Case{"^[\xE0-\xEF]+$", "\xC9\xE9", true}, Case{"[^\xE9]", "\xE9\xC9", false},
        Case{"[\xFF-\xFF]", "\x9F", true},
        // Quantifiers and braces.
        Case{"^a{2}$", "aa", true}, Case{"^a{,2}{$", "a{,2}{", true}, Case{"^x{a}$", "x{a}", true},
        Case{"^<.+?>$", "<a><b>", true},
        // Groups and references.
        Case{R"((a)|\1b)", "b", true}, Case{R"(^(ab)\1$)", "ABab", true},
        Case{"^(\xE9\x9E)\\1$", "\xE9\x8E\xC9\x9E", true}, Case{R"(^(?<n>a)\k<n>$)", "aa", true},
        Case{R"(^\k$)", "k", true}, Case{R"(^(a)\2$)", "a\2"sv, true}, Case{R"(^(a)\10$)", "a\b", true},
        Case{"(?<=a)b", "ab", true}, Case{"a(?!b)", "ab", false}, Case{"", "", true}};
    for (const auto& c : cases) {
        EXPECT_EQ(Regex(c.expression).Matches(c.text), c.matches) << c.expression << " in " << c.text;
    }
}

// Every code as a part of expressions that the engine looks for in ways of their own, as machine code and
// by its interpreter.
TEST(Regex, FindsEveryCodeInBothItsCasesAndInNoOther) {
    const auto filler = [](int code) {
        return std::string_view("!7-").find(static_cast<char>(code)) != std::string_view::npos;
    };
    for (int code = 0; code < 256; ++code) {
        if (filler(code)) continue;
        std::string written = "\\x00";
        written[2] = kHexDigits[static_cast<std::size_t>(code / 16)];
        written[3] = kHexDigits[static_cast<std::size_t>(code % 16)];
        const char same = static_cast<char>(code);
        const char upper = UpperChar(same);
        for (const std::string& part :
             {written, '[' + written + ']', "[7" + written + ']', "-" + written + "|7"}) {
            const Regex machine("7*(?:" + part + ")7*-");
            const Regex interpreted("(?:7*){3}(?:" + part + ")-");
            for (int other = 0; other < 256; ++other) {
                const char c = static_cast<char>(other);
                if (filler(other)) continue;
                const std::string text = std::string(40, '!') + '-' + c + '-';
                const bool matches = UpperChar(c) == upper;
                ASSERT_EQ(machine.Matches(text), matches) << part << " in " << text;
                ASSERT_EQ(interpreted.Matches(text), matches) << part << " in " << text;
            }
        }
    }
}

TEST(Regex, AboveAsciiThereAreNoWordsDigitsOrBlanks) {
    for (int code = 128; code < 256; ++code) {
        const std::string text(1, static_cast<char>(code));
        EXPECT_FALSE(Regex(R"([\w\d\s]|\b|[^\W]|[^\D]|[^\S])").Matches(text)) << code;
    }
}

TEST(Regex, TablesThatAreNotAsKnownAreNoEngine) {
    std::vector<std::uint8_t> tables(1087);
    EXPECT_EQ(RaisedBy([&] { CharacterTables(tables); }).number(), errors::kNoAutomation) << "another size";
    tables.push_back(0);
    EXPECT_EQ(RaisedBy([&] { CharacterTables(tables); }).number(), errors::kNoAutomation) << "another order";
}

// What would be machine code, which does not count them all, if nothing were left of their number.
TEST(Regex, ARepetitionOfNothingLeavesTheWaysToMatchAsTheyAre) {
    for (const char* nothing : {"x{0,0}", "x{0}", "(?:x){0,0}"}) {
        EXPECT_GE(TranslateExpression(std::string("(a*)*(b*)*c") + nothing).ways,
                  TranslateExpression("(a*)*(b*)*c").ways)
            << nothing;
    }
}

TEST(Regex, TellsWhatIsWrongWithAnExpressionAndWhere) {
    const struct {
        std::string_view expression;
        std::string message;
    } cases[] = {
        {"(ab", "Invalid expression at character 4: missing closing parenthesis"},
        {"a\\.b)", "Invalid expression at character 5: unmatched closing parenthesis"},
        {"ab[c", "Invalid expression at character 3: a class without its \"]\""},
        {"a++", "Invalid expression at character 3: nothing to repeat"},
        {"a|*", "Invalid expression at character 3: nothing to repeat"},
        {"(*UTF)a", "Invalid expression at character 2: nothing to repeat"},
        {"^{3}", "Invalid expression at character 2: nothing to repeat"},
        {"(?i)a", "Invalid expression at character 3: unknown kind of group"},
        {"(?>a)", "Invalid expression at character 3: unknown kind of group"},
        {"[z-a]", "Invalid expression at character 2: a range out of order"},
        {"abc\\", "Invalid expression at character 4: a backslash at the end"},
        {"[\\", "Invalid expression at character 2: a backslash at the end"},
        {"(?<n>a)\\kb", "Invalid expression at character 8: no name of a group"},
    };
    for (const auto& c : cases) {
        const Error error = RaisedBy([&c] { const Regex regex(c.expression); });
        EXPECT_EQ(error.number(), errors::kInvalidCall) << c.expression;
        EXPECT_EQ(error.description(), c.message);
    }
}

TEST(Regex, FindsMatchesWhereverTheyStandInALongText) {
    std::string text(100'000, 'x');
    const Regex dashed("-y");
    const Regex lines(".*-y");
    const Regex texts("xx-y|:");
    for (const std::size_t at : {0U, 1022U, 1023U, 1024U, 3071U, 99'998U}) {
        text[at] = '-';
        text[at + 1] = 'y';
        EXPECT_TRUE(dashed.Matches(text)) << at;
        EXPECT_TRUE(lines.Matches(text)) << at;
        EXPECT_EQ(texts.Matches(text), at >= 2) << at;
        text[at] = text[at + 1] = 'x';
        EXPECT_FALSE(dashed.Matches(text)) << at;
        EXPECT_FALSE(lines.Matches(text)) << at;
        EXPECT_FALSE(texts.Matches(text)) << at;
    }
}

// An expression in a group is searched as it stands; without the group it may be searched in a faster way.
TEST(Regex, MatchesTheSameTextsWhicheverWayItIsSearched) {
    std::uint32_t state = 1;
    const auto random = [&state](std::uint32_t limit) {
        state = state * 1664525U + 1013904223U;
        return (state >> 16U) % limit;
    };
    for (const char* expression : {"ab.|a:|:b",
                                   "ab:b|b:|aab.",
                                   "b\\.a|b\\.b\\.|a\\.",
                                   "aab:|:b\\.|\\.:",
                                   "a:b|b:b:",
                                   "ab|a:|b\\.",
                                   "bab:|aa||b",
                                   "A:b|B::|\\:\\.:",
                                   "\r\na:|b\r",
                                   "aa:\\.|b\\:a|\r:",
                                   "b+a",
                                   "b+?\\.:",
                                   "[ab]{2,4}:a\\.",
                                   "[ab]{2,}?::",
                                   "\\w{3,3}:",
                                   "b{1,3}|a:a:",
                                   ".+:\\.",
                                   "[^]+a:b",
                                   "a+\\b:b",
                                   "b{0,2}::",
                                   "b*\\.a\\.",
                                   "\\.+(?<=bb\\.)",
                                   "a+(?!a)b\\.",
                                   "\xE9.b|a\xC9:|\xC9\xE9\\.",
                                   "\xE9\xC9:|a\xE9\\.",
                                   "\xC9+.:",
                                   "[\r\n]+:a"}) {
        const Regex plain(expression);
        const Regex grouped(std::string("(?:") + expression + ")");
        int matches = 0;
        for (int round = 0; round < 3000; ++round) {
            std::string text(random(14), ' ');
            for (char& c : text)
                c = "aabbAB:..\r\n\xE9\xC9"[random(13)];
            ASSERT_EQ(plain.Matches(text), grouped.Matches(text)) << expression << "\n" << text;
            matches += plain.Matches(text) ? 1 : 0;
        }
        EXPECT_GT(matches, 0) << expression;
    }
}

TEST(Regex, GivesUpWhatWouldNotEnd) {
    const struct {
        std::string_view expression;
        std::string text;
    } cases[] = {
        {"(a+)+$", std::string(60, 'a') + "b"},
        {"(?:.|\\n)*?z[pq]", std::string(4'000'000, 'z')},
        {"[^-]*[^-]*7q", std::string(4'000'000, 'q')},
    };
    for (const auto& c : cases) {
        const Error error = RaisedBy([&c] { Regex(c.expression).Matches(c.text); });
        EXPECT_EQ(error.description().substr(0, 24), "The search was given up:") << c.expression;
    }
    // The engine is as good as new after that.
    const Regex regex("(a+)+$");
    EXPECT_THROW(regex.Matches(cases[0].text), Error);
    EXPECT_TRUE(regex.Matches("aaa"));
}

}  // namespace
}  // namespace zorvel
