// Application names, and values as they stand in statements.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "database/application_name.h"
#include "database/sql_text.h"

namespace zorvel {
namespace {

TEST(SplitApp, SplitsAtTheFirstDotThatIsNotEscaped) {
    struct Case {
        const char *full_name, *application, *container;
    };
    for (const Case& test :
         {Case{"Word.APPS.SITE", "Word", "APPS.SITE"},
          Case{R"(Reader 7\.0.APPS.SITE)", "Reader 7.0", "APPS.SITE"},
          Case{R"(A\.B\.C.OU\.1.SITE)", "A.B.C", R"(OU\.1.SITE)"}, Case{"Notepad", "Notepad", "Notepad"},
          Case{R"(Reader 7\.0)", "Reader 7.0", R"(Reader 7\.0)"},
          Case{".APPS.SITE", ".APPS.SITE", ".APPS.SITE"}, Case{"Word.", "Word", ""},
          Case{R"(C:\Path.APPS)", R"(C:\Path)", "APPS"}, Case{"", "", ""}}) {
        const ApplicationName name = SplitApp(test.full_name);
        EXPECT_EQ(name.application, test.application) << test.full_name;
        EXPECT_EQ(name.container, test.container) << test.full_name;
    }
}

TEST(CutEscaped, CutsAfterApostrophesWereDoubled) {
    EXPECT_EQ(CutEscaped("O'Brien", 100), "O'Brien");
    EXPECT_EQ(CutEscaped("O'Brien", 4), "O'B");
    EXPECT_EQ(CutEscaped("abcdef", 5), "abcde");
    EXPECT_EQ(CutEscaped("abc'def", 5), "abc'");
    EXPECT_EQ(CutEscaped("abc'def", 4), "abc") << "half of a doubled apostrophe is dropped";
    EXPECT_EQ(CutEscaped("''''", 4), "''");
    EXPECT_EQ(CutEscaped(std::string(300, '\''), 255).size(), 127U);
    EXPECT_EQ(CutEscaped("it's", kUncut), "it's");
}

TEST(LiteralValue, HoldsOnlyWhatStaysWithinTheApostrophes) {
    EXPECT_EQ(LiteralValue("plain"), "plain");
    EXPECT_EQ(LiteralValue("doubled '' once"), "doubled ' once");
    EXPECT_EQ(LiteralValue("O'Brien"), std::nullopt);
    EXPECT_EQ(LiteralValue("'''"), std::nullopt);
    EXPECT_EQ(LiteralValue("a' || 'b"), std::nullopt);
}

}  // namespace
}  // namespace zorvel
