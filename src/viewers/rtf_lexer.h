// Cuts RTF into its tokens: text, control words and symbols, braces.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace zorvel {

enum class RtfTokenKind {
    kText,      // characters 0x20 to 0x7E and tabs, none of them "\", "{" or "}"
    kHighText,  // bytes above 0x7F
    kByte,      // \'hh
    kWord,      // a control word
    kSymbol,    // "\" and another character
    kOpen,      // "{"
    kClose,     // "}"
    kEnd,       // the end of the input
};

struct RtfToken {
    RtfTokenKind kind = RtfTokenKind::kEnd;
    std::string_view text;    // the text, or the control word's or symbol's name
    std::int32_t number = 0;  // the byte of kByte; a control word's parameter, cut to 32 bits
    bool has_number = false;  // of a control word
};

class RtfLexer {
  public:
    explicit RtfLexer(std::string_view rtf);

    // The next token. Control characters other than tabs are passed over, and so are the data of \binN and a
    // "\" at the end of the input.
    RtfToken Next();

    // Whether the "{" just read opens a group: it does when a control word or "\*" follows. Before \par, with
    // which lines end, it does not.
    bool OpensGroup() const;
    // Whether the "}" just read is the last byte of the input, line ends, blanks and NULs aside.
    bool AtLastByte() const { return at_ >= end_of_content_; }

  private:
    RtfToken Escape();
    RtfToken ByteEscape();
    RtfToken Word();

    std::string_view rtf_;
    std::size_t at_ = 0;
    std::size_t end_of_content_;
};

}  // namespace zorvel
