#include "viewers/rich_text.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "platform/code_page.h"
#include "viewers/rtf_lexer.h"
#include "viewers/rtf_tables.h"
#include "viewers/rtf_words.h"

namespace zorvel {
namespace {

using Kind = RtfTokenKind;

constexpr int kLargestFont = 3276;         // half points, the format's own limit
constexpr int kLongestLength = 22 * 1440;  // twips, the format's own limit
constexpr std::size_t kDeepest = 1000;     // groups whose formats are kept apart
constexpr std::int32_t kNoColour = -1;     // a number outside every table

struct CharacterState {
    std::int32_t font = 0;
    std::int32_t half_points = 24;
    std::int32_t colour = kNoColour;
    std::int32_t background = kNoColour;
    bool bold = false;
    bool italic = false;
    bool underline = false;
};

// What braces save and restore.
struct State {
    CharacterState characters;
    ParagraphFormat paragraph;
    std::int32_t fallback = 1;    // the characters that follow \uN for readers without Unicode
    std::size_t text_braces = 0;  // "{" of the text that wait for their "}"
};

bool IsHighSurrogate(std::int32_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}

bool IsLowSurrogate(std::int32_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

// True for the code points that may stand in a run's text: neither a control character, nor what document
// builders take for the end of a paragraph, nor half a surrogate pair.
bool IsText(std::int32_t code_point) {
    if (code_point < 0x20) return code_point == '\t';
    if (code_point == 0x7F || code_point == 0x2029) return false;
    if (code_point >= 0xFDD0 && code_point <= 0xFDEF) return false;
    return code_point <= 0x10FFFF && (code_point & 0xFFFE) != 0xFFFE && !IsHighSurrogate(code_point) &&
           !IsLowSurrogate(code_point);
}

class Reader {
  public:
    Reader(std::string_view rtf, RichTextSink& sink) : lexer_(rtf), sink_(sink) {}

    void Read();

  private:
    void OpenGroup();
    void Close();
    void Apply(const RtfToken& token);
    bool ApplyToCharacters(RtfWord word, const RtfToken& token);
    bool ApplyToParagraph(RtfWord word, const RtfToken& token);
    void Byte(std::int32_t byte);
    void Symbol(char symbol);
    void Unicode(std::int32_t number);

    // Whether the next character is part of the fallback of a \uN, and so no text.
    bool IsFallback();
    // `text` without what is part of a fallback.
    std::string_view BehindFallback(std::string_view text);

    // The current run, to which text in the current format can be appended.
    std::string& Run();
    CharacterFormat Format() const;
    void EndRun();
    void EndParagraph();

    RtfLexer lexer_;
    RichTextSink& sink_;
    RtfTables tables_;
    State state_;
    std::vector<State> outer_;  // the states to return to, outermost first
    std::size_t too_deep_ = 0;  // open groups that share the state of the deepest one
    bool ended_ = false;        // the document's last brace was read
    std::int32_t default_font_ = 0;
    int tab_width_ = ParagraphFormat{}.tab_width;
    std::int32_t fallback_left_ = 0;
    std::int32_t high_surrogate_ = 0;  // of a pair whose second half is to come

    std::string run_;
    CharacterFormat run_format_;
    bool format_changed_ = true;
    bool paragraph_has_text_ = false;
};

void Reader::Read() {
    for (RtfToken token = lexer_.Next(); token.kind != Kind::kEnd && !ended_; token = lexer_.Next()) {
        switch (token.kind) {
            case Kind::kText:
                Run() += BehindFallback(token.text);
                break;
            case Kind::kHighText:
                AppendUtf8(Run(), BehindFallback(token.text));
                break;
            case Kind::kByte:
                if (!IsFallback()) Byte(token.number);
                break;
            case Kind::kWord:
                if (!IsFallback()) Apply(token);
                break;
            case Kind::kSymbol:
                if (!IsFallback()) Symbol(token.text.front());
                break;
            case Kind::kOpen:
                OpenGroup();
                break;
            case Kind::kClose:
                Close();
                break;
            case Kind::kEnd:
                break;
        }
    }
    EndRun();
    if (paragraph_has_text_) EndParagraph();
}

void Reader::OpenGroup() {
    fallback_left_ = 0;
    if (!lexer_.OpensGroup()) {
        ++state_.text_braces;
        Run() += '{';
        return;
    }
    const RtfToken first = lexer_.Next();
    const RtfWord word = FindRtfWord(first.text).word;
    if (first.kind == Kind::kSymbol || word == RtfWord::kSkipped) {
        SkipRtfGroup(lexer_);
    } else if (word == RtfWord::kFontTable) {
        tables_.ReadFonts(lexer_);
        format_changed_ = true;
    } else if (word == RtfWord::kColourTable) {
        tables_.ReadColours(lexer_);
        format_changed_ = true;
    } else {
        if (outer_.size() < kDeepest) {
            outer_.push_back(state_);
            state_.text_braces = 0;
        } else {
            ++too_deep_;
        }
        Apply(first);
    }
}

void Reader::Close() {
    fallback_left_ = 0;
    if (state_.text_braces > 0) {
        --state_.text_braces;
        Run() += '}';
    } else if (!outer_.empty() && lexer_.AtLastByte()) {
        ended_ = true;
    } else if (too_deep_ > 0) {
        --too_deep_;
    } else if (outer_.size() > 1) {
        state_ = outer_.back();
        outer_.pop_back();
        format_changed_ = true;
    } else {
        // The document ends with its last brace; any other that would end it stands alone.
        Run() += '}';
    }
}

void Reader::Apply(const RtfToken& token) {
    const auto [word, character] = FindRtfWord(token.text);
    if (ApplyToCharacters(word, token) || ApplyToParagraph(word, token)) return;
    switch (word) {
        case RtfWord::kCharacter:
            AppendUtf8(Run(), character);
            break;
        case RtfWord::kUnicode:
            Unicode(token.number);
            break;
        case RtfWord::kUnicodeFallback:
            state_.fallback = std::max(token.number, 0);
            break;
        case RtfWord::kDefaultFont:
            state_.characters.font = default_font_ = token.number;
            format_changed_ = true;
            break;
        case RtfWord::kDefaultTab:
            if (token.number > 0) tab_width_ = std::min(token.number, kLongestLength);
            break;
        default:
            break;
    }
}

// True when `word` is a character format.
bool Reader::ApplyToCharacters(RtfWord word, const RtfToken& token) {
    CharacterState& characters = state_.characters;
    const bool on = !token.has_number || token.number != 0;
    switch (word) {
        case RtfWord::kPlain:
            characters = {};
            characters.font = default_font_;
            break;
        case RtfWord::kFont:
            characters.font = token.number;
            break;
        case RtfWord::kFontSize:
            characters.half_points = token.has_number ? std::clamp(token.number, 2, kLargestFont) : 24;
            break;
        case RtfWord::kColour:
            characters.colour = token.number;
            break;
        case RtfWord::kBackground:
            characters.background = token.number == 0 ? kNoColour : token.number;
            break;
        case RtfWord::kBold:
            characters.bold = on;
            break;
        case RtfWord::kItalic:
            characters.italic = on;
            break;
        case RtfWord::kUnderline:
            characters.underline = on;
            break;
        case RtfWord::kNoUnderline:
            characters.underline = false;
            break;
        default:
            return false;
    }
    format_changed_ = true;
    return true;
}

// True when `word` ends a paragraph or is a format of paragraphs.
bool Reader::ApplyToParagraph(RtfWord word, const RtfToken& token) {
    ParagraphFormat& paragraph = state_.paragraph;
    const int length = std::clamp(token.number, -kLongestLength, kLongestLength);
    switch (word) {
        case RtfWord::kParagraph:
            EndParagraph();
            break;
        case RtfWord::kParagraphDefaults:
            paragraph = {};
            break;
        case RtfWord::kAlignLeft:
            paragraph.alignment = Alignment::kLeft;
            break;
        case RtfWord::kAlignCentre:
            paragraph.alignment = Alignment::kCentre;
            break;
        case RtfWord::kAlignRight:
            paragraph.alignment = Alignment::kRight;
            break;
        case RtfWord::kLeftIndent:
            paragraph.left_indent = length;
            break;
        case RtfWord::kFirstIndent:
            paragraph.first_indent = length;
            break;
        case RtfWord::kSpaceBefore:
            paragraph.space_before = std::max(length, 0);
            break;
        case RtfWord::kSpaceAfter:
            paragraph.space_after = std::max(length, 0);
            break;
        default:
            return false;
    }
    return true;
}

void Reader::Byte(std::int32_t byte) {
    const auto character = static_cast<char>(byte);
    if (byte >= 0x80 || IsText(byte)) AppendUtf8(Run(), std::string_view(&character, 1));
}

void Reader::Symbol(char symbol) {
    switch (symbol) {
        case '\\':
        case '{':
        case '}':
        case '\t':
            Run() += symbol;
            break;
        case '~':
            AppendUtf8(Run(), char32_t{0xA0});
            break;
        case '-':
            AppendUtf8(Run(), char32_t{0xAD});
            break;
        case '_':
            AppendUtf8(Run(), char32_t{0x2011});
            break;
        case '\r':
        case '\n':
            EndParagraph();
            break;
        default:
            break;
    }
}

void Reader::Unicode(std::int32_t number) {
    fallback_left_ = state_.fallback;
    // Parameters are signed 16-bit numbers to some writers; characters beyond come as surrogate pairs.
    std::int32_t code_point = number < 0 ? number + 0x10000 : number;
    if (IsLowSurrogate(code_point) && high_surrogate_ != 0)
        code_point = 0x10000 + ((high_surrogate_ - 0xD800) << 10) + (code_point - 0xDC00);
    high_surrogate_ = IsHighSurrogate(code_point) ? code_point : 0;
    if (IsText(code_point)) AppendUtf8(Run(), static_cast<char32_t>(code_point));
}

bool Reader::IsFallback() {
    if (fallback_left_ == 0) return false;
    --fallback_left_;
    return true;
}

std::string_view Reader::BehindFallback(std::string_view text) {
    const std::size_t skipped = std::min(text.size(), static_cast<std::size_t>(fallback_left_));
    fallback_left_ -= static_cast<std::int32_t>(skipped);
    return text.substr(skipped);
}

std::string& Reader::Run() {
    if (format_changed_) {
        format_changed_ = false;
        const CharacterFormat format = Format();
        if (format != run_format_) {
            EndRun();
            run_format_ = format;
        }
    }
    return run_;
}

CharacterFormat Reader::Format() const {
    const CharacterState& characters = state_.characters;
    return {&tables_.Font(characters.font),
            characters.half_points,
            tables_.Colour(characters.colour),
            tables_.Colour(characters.background),
            characters.bold,
            characters.italic,
            characters.underline};
}

void Reader::EndRun() {
    if (run_.empty()) return;
    sink_.Text(run_, run_format_);
    run_.clear();
    paragraph_has_text_ = true;
}

void Reader::EndParagraph() {
    EndRun();
    ParagraphFormat format = state_.paragraph;
    format.tab_width = tab_width_;
    sink_.EndParagraph(format);
    paragraph_has_text_ = false;
    // Outside all groups, a brace of the text has its counterpart in the same line, or none.
    if (outer_.size() <= 1) state_.text_braces = 0;
}

}  // namespace

void ReadRichText(std::string_view rtf, RichTextSink& sink) {
    Reader(rtf, sink).Read();
}

void ReadRichTextFile(const Files& files, std::string_view path, RichTextSink& sink) {
    ReadRichText(files.Read(path), sink);
}

}  // namespace zorvel
