#include "viewers/rtf_lexer.h"

#include <algorithm>
#include <array>
#include <limits>
#include <optional>

#include "platform/hex.h"

namespace zorvel {
namespace {

using Byte = unsigned char;
using Kind = RtfTokenKind;

enum class ByteClass : Byte { kPlain, kHigh, kSyntax, kControl };

constexpr std::array<ByteClass, 256> MakeClasses() {
    std::array<ByteClass, 256> classes{};
    for (std::size_t code = 0; code < classes.size(); ++code) {
        if (code > 0x7F) classes[code] = ByteClass::kHigh;
        if ((code < 0x20 && code != '\t') || code == 0x7F) classes[code] = ByteClass::kControl;
    }
    for (const char syntax : {'\\', '{', '}'})
        classes[static_cast<Byte>(syntax)] = ByteClass::kSyntax;
    return classes;
}
constexpr std::array<ByteClass, 256> kClasses = MakeClasses();

ByteClass ClassOf(char character) {
    return kClasses[static_cast<Byte>(character)];
}

bool IsLetter(char character) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
}

bool IsDigit(char character) {
    return character >= '0' && character <= '9';
}

}  // namespace

RtfLexer::RtfLexer(std::string_view rtf)
    : rtf_(rtf), end_of_content_(rtf.find_last_not_of(std::string_view("\r\n \0", 4)) + 1) {}

RtfToken RtfLexer::Next() {
    while (at_ < rtf_.size()) {
        const std::size_t begin = at_;
        const ByteClass first = ClassOf(rtf_[at_++]);
        if (first == ByteClass::kControl) continue;
        if (first == ByteClass::kSyntax) {
            if (rtf_[begin] == '{') return {Kind::kOpen, {}};
            if (rtf_[begin] == '}') return {Kind::kClose, {}};
            return Escape();
        }
        while (at_ < rtf_.size() && ClassOf(rtf_[at_]) == first)
            ++at_;
        return {first == ByteClass::kPlain ? Kind::kText : Kind::kHighText, rtf_.substr(begin, at_ - begin)};
    }
    return {};
}

RtfToken RtfLexer::Escape() {
    if (at_ == rtf_.size()) return {};
    if (IsLetter(rtf_[at_])) return Word();
    if (rtf_[at_] == '\'') return ByteEscape();
    return {Kind::kSymbol, rtf_.substr(at_++, 1)};
}

RtfToken RtfLexer::ByteEscape() {
    const std::size_t quote = at_++;
    const std::optional<Byte> byte = HexByte(rtf_.substr(at_));
    if (!byte) return {Kind::kSymbol, rtf_.substr(quote, 1)};
    at_ += 2;
    return {Kind::kByte, {}, *byte, true};
}

RtfToken RtfLexer::Word() {
    RtfToken token{Kind::kWord, {}};
    const std::size_t begin = at_;
    while (at_ < rtf_.size() && IsLetter(rtf_[at_]))
        ++at_;
    token.text = rtf_.substr(begin, at_ - begin);
    // A "-" before anything but a number is text; at the end of the input its number was cut off.
    const bool negative =
        at_ < rtf_.size() && rtf_[at_] == '-' && (at_ + 1 == rtf_.size() || IsDigit(rtf_[at_ + 1]));
    if (negative) ++at_;
    constexpr std::int64_t kLargest = std::numeric_limits<std::int32_t>::max();
    std::int64_t number = 0;
    for (; at_ < rtf_.size() && IsDigit(rtf_[at_]); ++at_) {
        token.has_number = true;
        number = std::min(number * 10 + (rtf_[at_] - '0'), kLargest);
    }
    token.number = static_cast<std::int32_t>(negative ? -number : number);
    if (at_ < rtf_.size() && rtf_[at_] == ' ') ++at_;
    if (token.text == "bin" && token.number > 0)
        at_ += std::min(static_cast<std::size_t>(token.number), rtf_.size() - at_);
    return token;
}

bool RtfLexer::OpensGroup() const {
    const std::size_t next = rtf_.find_first_not_of("\r\n", at_);
    if (next == std::string_view::npos || rtf_[next] != '\\') return false;
    const std::string_view name = rtf_.substr(next + 1, 4);
    if (name.empty()) return false;
    if (name.starts_with("par") && (name.size() == 3 || !IsLetter(name[3]))) return false;
    return name.front() == '*' || IsLetter(name.front());
}

}  // namespace zorvel
