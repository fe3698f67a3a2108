// Rich text as tests compare it: the bare text, and the text with its formats written out.
#pragma once

#include <string>
#include <string_view>

#include "viewers/rich_text.h"

namespace zorvel::test {

// The text, each paragraph ended by a line feed.
class PlainText final : public RichTextSink {
  public:
    std::string text;

    void Text(std::string_view utf8, const CharacterFormat&) override { text += utf8; }
    void EndParagraph(const ParagraphFormat&) override { text += '\n'; }
};

// Each run as "[font size attributes|text]", where attributes are b, i, u, the colour as "#rrggbb" and the
// background as "/rrggbb"; each paragraph's end as its format, as far as it is not the default, and a line
// feed.
class Markup final : public RichTextSink {
  public:
    std::string text;

    void Text(std::string_view utf8, const CharacterFormat& format) override {
        text += "[" + format.font->name + " " + std::to_string(format.half_points / 2);
        if (format.half_points % 2 != 0) text += ".5";
        if (format.bold) text += " b";
        if (format.italic) text += " i";
        if (format.underline) text += " u";
        if (format.colour) text += " #" + Hex(*format.colour);
        if (format.background) text += " /" + Hex(*format.background);
        text += "|";
        text += utf8;
        text += "]";
    }
    void EndParagraph(const ParagraphFormat& format) override {
        constexpr ParagraphFormat kDefault;
        if (format.alignment == Alignment::kCentre) text += "<centre>";
        if (format.alignment == Alignment::kRight) text += "<right>";
        Length("left", format.left_indent, kDefault.left_indent);
        Length("first", format.first_indent, kDefault.first_indent);
        Length("before", format.space_before, kDefault.space_before);
        Length("after", format.space_after, kDefault.space_after);
        Length("tab", format.tab_width, kDefault.tab_width);
        text += '\n';
    }

  private:
    void Length(const char* name, int length, int standard) {
        if (length != standard) text += "<" + std::string(name) + " " + std::to_string(length) + ">";
    }
    static std::string Hex(RichTextColour colour) {
        std::string hex;
        for (const unsigned component : {colour.red, colour.green, colour.blue}) {
            hex += "0123456789abcdef"[component >> 4];
            hex += "0123456789abcdef"[component & 15];
        }
        return hex;
    }
};

// What `rtf` reads as.
inline std::string PlainTextOf(std::string_view rtf) {
    PlainText sink;
    ReadRichText(rtf, sink);
    return sink.text;
}
inline std::string MarkupOf(std::string_view rtf) {
    Markup sink;
    ReadRichText(rtf, sink);
    return sink.text;
}

}  // namespace zorvel::test
