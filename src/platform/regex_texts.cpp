#include "platform/regex_texts.h"

#include <cstddef>
#include <vector>

#include "platform/code_page.h"
#include "platform/hex.h"

namespace zorvel {
namespace {

// The engine looks for up to two bytes at memory speed, for more of them byte by byte.
constexpr std::size_t kMostAnchors = 2;
constexpr std::size_t kLongestText = 255;  // looking behind has limits far above

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

bool IsLetterOrDigit(char c) {
    return IsDigit(c) || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

// The texts, without their backslashes; none when there is anything else in the expression.
std::vector<std::string> TextsOf(std::string_view expression) {
    std::vector<std::string> texts(1);
    for (std::size_t i = 0; i < expression.size(); ++i) {
        char c = expression[i];
        if (c == '|') {
            texts.emplace_back();
            continue;
        }
        if (c == '\\') {
            if (++i == expression.size() || IsLetterOrDigit(expression[i])) return {};
            c = expression[i];
        } else if (std::string_view("^$.*+?()[]{}").find(c) != std::string_view::npos) {
            return {};
        }
        texts.back() += c;
    }
    return texts;
}

std::string Quoted(std::string_view text) {
    std::string quoted;
    for (const char c : text)
        AppendCharacter(quoted, c);
    return quoted;
}

bool HasTwoCases(char c) {
    return kOtherCase[static_cast<unsigned char>(c)] != c;
}

}  // namespace

void AppendByte(std::string& expression, unsigned char byte) {
    const char character = static_cast<char>(byte);
    if (IsLetterOrDigit(character)) {
        expression += character;
    } else {
        expression += "\\x";
        AppendHex(expression, byte);
    }
}

void AppendCharacter(std::string& expression, char character) {
    // In upper case, as the engine overlooks the other case of the highest code, which is a lower-case
    // letter.
    AppendByte(expression, static_cast<unsigned char>(UpperChar(character)));
}

std::optional<std::string> FasterChoice(std::string_view expression) {
    const std::vector<std::string> texts = TextsOf(expression);
    if (texts.size() < 2) return std::nullopt;
    // Each text is found by its first character that has one case and is no digit: often several texts share
    // it. From there the engine looks on for the rest, then back for the whole.
    std::string anchors;
    std::string faster;
    for (const std::string& text : texts) {
        std::size_t place = 0;
        while (place < text.size() && (HasTwoCases(text[place]) || IsDigit(text[place])))
            ++place;
        if (place == text.size() || text.size() > kLongestText) return std::nullopt;
        if (anchors.find(text[place]) == std::string::npos) anchors += text[place];
        if (anchors.size() > kMostAnchors) return std::nullopt;
        if (!faster.empty()) faster += '|';
        faster += Quoted(std::string_view(text).substr(place)) + "(?<=" + Quoted(text) + ')';
    }
    return faster;
}

}  // namespace zorvel
