// Text between UTF-8 and the code page, and its upper case.
#include "platform/code_page.h"

#include <gtest/gtest.h>

#include <set>

namespace zorvel {
namespace {

std::string EveryCode() {
    std::string text;
    for (int code = 0; code < 256; ++code)
        text += static_cast<char>(code);
    return text;
}

TEST(CodePage, EveryCodeComesBackFromUtf8) {
    std::set<std::string> characters;
    for (const char code : EveryCode()) {
        EXPECT_EQ(FromUtf8(ToUtf8({&code, 1})), std::string(1, code));
        characters.insert(ToUtf8({&code, 1}));
    }
    EXPECT_EQ(characters.size(), 256U) << "two codes are one character";
    EXPECT_EQ(FromUtf8(ToUtf8(EveryCode())), EveryCode());
    EXPECT_EQ(ToUtf8("a\x80\x8A\x9F\xA0\xFF"), "a\xE2\x82\xAC\xC5\xA0\xC5\xB8\xC2\xA0\xC3\xBF");
}

TEST(CodePage, WhatHasNoCodeOrIsNoUtf8IsAQuestionMark) {
    using Case = std::pair<const char*, const char*>;
    for (const auto& [utf8, text] :
         {// Letters of others, the control character whose code is the euro's, and the last of each length.
          Case{"a\xCE\xA9z", "a?z"}, Case{"a\xC2\x80z", "a?z"},
          Case{"\xDF\xBF\xEF\xBF\xBF\xF4\x8F\xBF\xBF", "???"},
          // Cut, at the end and before what is whole.
          Case{"a\xC3", "a?"}, Case{"\xE2\x82", "?"}, Case{"\xF0\x9F\x98", "?"}, Case{"\xE2\x82z", "?z"},
          Case{"\xF0\x9F\x98\xC3\xA9", "?\xE9"}, Case{"\xC3\xC3\xA9", "?\xE9"},
          // Bytes that begin nothing, and what is beyond the last character.
          Case{"\x80z\xBF", "?z?"}, Case{"\xFE\xFF", "??"}, Case{"\xF5\x80\x80\x80", "????"},
          Case{"\xF4\x90\x80\x80", "????"},
          // Longer than need be: "/" does not come in that way.
          Case{"\xC0\xAF", "??"}, Case{"\xC1\xBF", "??"}, Case{"\xE0\x80\xAF", "???"},
          Case{"\xE0\x9F\xBF", "???"}, Case{"\xF0\x80\x80\xAF", "????"}, Case{"\xF0\x8F\xBF\xBF", "????"},
          // Surrogates, alone and in pairs, and their neighbours.
          Case{"\xED\xA0\x80", "???"}, Case{"\xED\xBF\xBF", "???"},
          Case{"\xED\xA0\xBD\xED\xB8\x80", "??????"}, Case{"\xED\x9F\xBF\xEE\x80\x80", "??"}}) {
        EXPECT_EQ(FromUtf8(utf8), text);
    }
    EXPECT_EQ(FromUtf8(std::string_view("\0\xC3\xA9\0", 4)), std::string("\0\xE9\0", 3));
}

TEST(CodePage, AnyCharacterIsWrittenAsUtf8) {
    std::string utf8;
    for (const char32_t character : {0x7Fu, 0x80u, 0x7FFu, 0x800u, 0xFFFFu, 0x10000u, 0x10FFFFu})
        AppendUtf8(utf8, character);
    EXPECT_EQ(utf8, "\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF\xF0\x90\x80\x80\xF4\x8F\xBF\xBF");
}

TEST(CodePage, UpperCaseIsThatOfTheCodePage) {
    const std::string lower =
        "abcdefghijklmnopqrstuvwxyz\x9A\x9C\x9E\xFF\xE0\xE1\xE2\xE3\xE4\xE5\xE6\xE7\xE8\xE9\xEA\xEB\xEC\xED"
        "\xEE\xEF\xF0\xF1\xF2\xF3\xF4\xF5\xF6\xF8\xF9\xFA\xFB\xFC\xFD\xFE";
    const std::string upper =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZ\x8A\x8C\x8E\x9F\xC0\xC1\xC2\xC3\xC4\xC5\xC6\xC7\xC8\xC9\xCA\xCB\xCC\xCD"
        "\xCE\xCF\xD0\xD1\xD2\xD3\xD4\xD5\xD6\xD8\xD9\xDA\xDB\xDC\xDD\xDE";
    for (const char code : EveryCode()) {
        const std::string text(1, code);
        const std::size_t letter = lower.find(code);
        const std::string expected(1, letter == std::string::npos ? code : upper[letter]);
        for (const std::string beside : {"", "A", "\xC9"}) {  // ASCII alone is told in a way of its own
            EXPECT_EQ(UpperCase(text + beside), expected + beside);
            EXPECT_EQ(IsUpperCase(text + beside), text == expected);
            EXPECT_TRUE(EqualIgnoringCase(text + beside, expected + beside));
        }
        const char other = kOtherCase[static_cast<unsigned char>(code)];
        EXPECT_EQ(kOtherCase[static_cast<unsigned char>(other)], code);
        EXPECT_EQ(UpperChar(other), expected[0]);
    }
    EXPECT_FALSE(EqualIgnoringCase("ab", "abc") || EqualIgnoringCase("abc", "ab") ||
                 EqualIgnoringCase("\xD7", "\xF7") || BeginsIgnoringCase("x", "xy"));
    EXPECT_TRUE(BeginsIgnoringCase("\x9A-1", "\x8A") && BeginsIgnoringCase("x", ""));
}

}  // namespace
}  // namespace zorvel
