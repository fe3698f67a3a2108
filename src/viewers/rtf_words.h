// The control words that the rich-text reader knows.
#pragma once

#include <string_view>

namespace zorvel {

enum class RtfWord {
    kUnknown,
    // Destinations; they count at the beginning of a group only.
    kSkipped,  // holds no text of the document
    kFontTable,
    kColourTable,
    // Character formats.
    kBackground,
    kBold,
    kColour,
    kFont,
    kFontSize,
    kItalic,
    kNoUnderline,
    kPlain,
    kUnderline,
    // Paragraphs and their formats.
    kAlignCentre,
    kAlignLeft,
    kAlignRight,
    kFirstIndent,
    kLeftIndent,
    kParagraph,
    kParagraphDefaults,
    kSpaceAfter,
    kSpaceBefore,
    // The document.
    kDefaultFont,
    kDefaultTab,
    // Characters.
    kCharacter,
    kUnicode,
    kUnicodeFallback,
};

struct RtfMeaning {
    RtfWord word = RtfWord::kUnknown;
    char32_t character = 0;  // the code point of kCharacter
};

RtfMeaning FindRtfWord(std::string_view name);

}  // namespace zorvel
