#include "viewers/rtf_tables.h"

#include <algorithm>
#include <utility>

#include "platform/code_page.h"

namespace zorvel {
namespace {

using Kind = RtfTokenKind;

std::uint8_t Component(std::int32_t number) {
    return static_cast<std::uint8_t>(std::clamp(number, 0, 255));
}

FontFamily FamilyOf(std::string_view word, FontFamily otherwise) {
    if (word == "froman") return FontFamily::kRoman;
    if (word == "fswiss") return FontFamily::kSwiss;
    if (word == "fmodern") return FontFamily::kModern;
    return otherwise;
}

}  // namespace

void SkipRtfGroup(RtfLexer& lexer) {
    for (std::size_t depth = 1; depth > 0;) {
        const Kind kind = lexer.Next().kind;
        if (kind == Kind::kEnd) return;
        if (kind == Kind::kOpen) ++depth;
        if (kind == Kind::kClose) --depth;
    }
}

void RtfTables::ReadFonts(RtfLexer& lexer) {
    std::int32_t number = 0;
    RichTextFont font;
    // An entry may stand in a group of its own, and hold groups, "\*" being the first token of each.
    for (std::size_t depth = 1; depth > 0;) {
        const RtfToken token = lexer.Next();
        switch (token.kind) {
            case Kind::kEnd:
                return;
            case Kind::kOpen:
                ++depth;
                break;
            case Kind::kClose:
                --depth;
                break;
            case Kind::kWord:
                if (token.text == "f") number = token.number;
                font.family = FamilyOf(token.text, font.family);
                break;
            case Kind::kSymbol:
                if (token.text == "*" && depth > 1) {
                    SkipRtfGroup(lexer);
                    --depth;
                }
                break;
            case Kind::kByte:
                AppendUtf8(font.name, std::string(1, static_cast<char>(token.number)));
                break;
            case Kind::kText:
            case Kind::kHighText:
                for (std::string_view rest = token.text; !rest.empty();) {
                    const std::size_t length = std::min(rest.find(';'), rest.size());
                    AppendUtf8(font.name, rest.substr(0, length));
                    rest.remove_prefix(length);
                    if (rest.empty()) break;
                    rest.remove_prefix(1);
                    AddFont(number, font);
                }
                break;
        }
    }
}

void RtfTables::AddFont(std::int32_t number, RichTextFont& font) {
    if (fonts_.size() < kMostEntries) fonts_.try_emplace(number, std::move(font));
    font = {};
}

void RtfTables::ReadColours(RtfLexer& lexer) {
    RichTextColour colour;
    bool is_default = true;
    for (std::size_t depth = 1; depth > 0;) {
        const RtfToken token = lexer.Next();
        if (token.kind == Kind::kEnd) return;
        if (token.kind == Kind::kOpen) ++depth;
        if (token.kind == Kind::kClose) --depth;
        if (token.kind == Kind::kWord) {
            const std::uint8_t component = Component(token.number);
            if (token.text == "red") colour.red = component;
            if (token.text == "green") colour.green = component;
            if (token.text == "blue") colour.blue = component;
            is_default = is_default && token.text != "red" && token.text != "green" && token.text != "blue";
        }
        if (token.kind != Kind::kText) continue;
        for (auto left = std::count(token.text.begin(), token.text.end(), ';'); left > 0; --left) {
            if (colours_.size() < kMostEntries)
                colours_.push_back(is_default ? std::nullopt : std::optional(colour));
            colour = {};
            is_default = true;
        }
    }
}

const RichTextFont& RtfTables::Font(std::int32_t number) const {
    const auto found = fonts_.find(number);
    return found == fonts_.end() ? nameless_ : found->second;
}

std::optional<RichTextColour> RtfTables::Colour(std::int32_t number) const {
    if (number < 0 || static_cast<std::size_t>(number) >= colours_.size()) return std::nullopt;
    return colours_[static_cast<std::size_t>(number)];
}

}  // namespace zorvel
