#include "gui/widgets/qt_text.h"

#include <gtest/gtest.h>

#include "gui/tool_tip.h"

namespace zorvel {
namespace {

TEST(QtText, KeepsEveryCharacterOfTheCodePage) {
    for (int code = 1; code < 256; ++code) {
        const std::string text(1, static_cast<char>(code));
        EXPECT_EQ(FromQString(ToQString(text)), text) << code;
    }
    EXPECT_EQ(ToQString("\x80 \xE9"), QStringLiteral("\u20AC \u00E9"));
    EXPECT_EQ(FromQString(QStringLiteral("\u4E2D")), "?");
}

TEST(QtText, AToolTipShowsWhateverStandsInAName) {
    for (const char* text : {"Word", "<b>Word</b> &amp; Co.", "one\ntwo  <i>three", "<!-- gone -->", ""})
        EXPECT_EQ(test::ShownTip(PlainToolTip(text)), text);
}

}  // namespace
}  // namespace zorvel
