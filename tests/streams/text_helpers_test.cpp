#include "streams/text_helpers.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "platform/error.h"
#include "streams/signature.h"

namespace zorvel {
namespace {

using namespace std::string_literals;

TEST(TextHelpers, TellPrintableTextFromBinary) {
    EXPECT_TRUE(IsPrintable(""));
    EXPECT_TRUE(IsPrintable("plain"));
    EXPECT_TRUE(IsPrintable("\x1F"));
    EXPECT_TRUE(IsPrintable("\xC8\x7F\xFF"));
    EXPECT_FALSE(IsPrintable("a\tb"));
    EXPECT_FALSE(IsPrintable("\x1E"));
    EXPECT_FALSE(IsPrintable("end\0"s));
}

TEST(TextHelpers, ConvertTexts) {
    const struct {
        std::string (*convert)(std::string_view);
        std::string text, result;
    } cases[] = {
        {MakePrintable, "A\tB\xC8", "A.B."},
        {MakePrintable, "\x1F ~\x7F", ". ~."},
        {MakeHEX, "", ""},
        {MakeHEX, "\0\n\xFF"s, "000AFF"},
        {MakeHEX, "A", "41"},
        {CRLF2LF, "a\r\nb\rc", "a\nbc"},
        {CRLF2LF, "a\n\r", "a\n"},
        {GetShortName, "C:\\APPS\\TOOL.EXE", "TOOL.EXE"},
        {GetShortName, "TOOL.EXE", "TOOL.EXE"},
        {GetShortName, "C:\\APPS\\", ""},
        {EscapeQuotes, "O'Brien", "O''Brien"},
        {EscapeQuotes, "''", "''''"},
        {EscapeQuotes, "plain", "plain"},
    };
    for (const auto& row : cases)
        EXPECT_EQ(row.convert(row.text), row.result) << "text: " << row.text;
}

TEST(TextHelpers, ShowBinaryValuesAsDotsAndEscapeTheOthers) {
    std::string buffer = "left over";
    EXPECT_EQ(DisplayForm("plain \x1F\xE9", buffer), "plain \x1F\xE9");
    EXPECT_EQ(DisplayForm("it's", buffer), "it''s");
    EXPECT_EQ(DisplayForm("it's\x01\xE9", buffer), "it's..");
}

TEST(Signature, SumsUpperCaseCodesAndLeavesTheTextInUpperCase) {
    std::string text = "abc";
    EXPECT_EQ(ConvertToSig(text), 198);
    EXPECT_EQ(text, "ABC");
    text = "\xE9";  // e acute becomes E acute, C9
    EXPECT_EQ(ConvertToSig(text), 0xC9);
    text.clear();
    EXPECT_EQ(ConvertToSig(text), 0);
}

TEST(Signature, RaisesOverflowBeyond32Bits) {
    EXPECT_EQ(AddSignature(2147483600, 47), 2147483647);
    EXPECT_THROW(AddSignature(2147483600, 48), Error);
    std::string text;
    text.resize(8421504, '\xDF');  // a code of 223 without an upper case of its own
    EXPECT_EQ(ConvertToSig(text), 8421504 * 223);
    text.append(2000000, '\xDF');
    EXPECT_THROW(ConvertToSig(text), Error);
}

}  // namespace
}  // namespace zorvel
