#include "platform/regex_syntax.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "platform/code_page.h"
#include "platform/hex.h"
#include "platform/regex_texts.h"

namespace zorvel {
namespace {

using Byte = unsigned char;

// A class that nothing matches; the engine's own, "[]", takes no quantifier.
constexpr std::string_view kNothing = "[^\\x00-\\xff]";

bool IsDigit(char character) {
    return character >= '0' && character <= '9';
}

bool IsOctalDigit(char character) {
    return character >= '0' && character <= '7';
}

bool IsLetter(char character) {
    return (character >= 'A' && character <= 'Z') || (character >= 'a' && character <= 'z');
}

// The byte of a character of the code page; none when the code page lacks it.
std::optional<Byte> ByteOf(unsigned code_point) {
    constexpr unsigned kOneByteCodes = 0x100;
    if (code_point < kOneByteCodes) return static_cast<Byte>(code_point);
    std::string utf8;
    AppendUtf8(utf8, static_cast<char32_t>(code_point));
    const std::string text = FromUtf8(utf8);
    return ToUtf8(text) == utf8 ? std::optional<Byte>(text.front()) : std::nullopt;
}

class Translator {
  public:
    explicit Translator(std::string_view expression) : in_(expression) { CountGroups(); }

    EngineExpression Translate() {
        for (; at_ < in_.size(); ++items_)
            TranslateItem();
        return std::move(out_);
    }

  private:
    // A member of a character class.
    struct Member {
        std::size_t place = 0;
        std::optional<Byte> byte{};  // none: a set, or a character that the code page lacks
        char set = 0;                // the letter of "\d" and its like
    };

    // Groups are numbered before anything is translated: a reference may precede its group.
    void CountGroups();
    void TranslateItem();
    void TranslateGroup();
    void TranslateQuantifier(std::size_t size);
    bool TranslateLeadingQuantifier(std::string_view quantifier);
    double WaysToRepeat(std::string_view quantifier) const;
    std::size_t BracedQuantifierSize() const;
    void TranslateEscape();
    bool TranslateReference();
    void TranslateClass();
    void TranslateRange(const Member& first, const Member& last);
    Member TakeMember();
    void EmitMember(const Member& member);
    std::optional<Byte> TakeCharacterEscape(bool in_class);
    Byte TakeOctal();
    std::optional<unsigned> TakeHex(std::size_t digits);

    char Next(std::size_t ahead = 0) const { return at_ + ahead < in_.size() ? in_[at_ + ahead] : '\0'; }
    void Emit(std::string_view text, std::size_t place) {
        out_.text += text;
        out_.places.resize(out_.text.size(), place);
    }
    // Emits the next `count` characters as they stand.
    void Copy(std::size_t count = 1) {
        Emit(in_.substr(at_, count), at_);
        at_ += count;
    }
    void EmitByte(Byte byte, std::size_t place) {
        AppendByte(out_.text, byte);
        out_.places.resize(out_.text.size(), place);
    }
    void EmitCharacter(Byte byte, std::size_t place) {
        AppendCharacter(out_.text, static_cast<char>(byte));
        out_.places.resize(out_.text.size(), place);
    }

    std::string_view in_;
    std::size_t at_ = 0;
    std::size_t items_ = 0;  // before the one at at_
    EngineExpression out_;
    std::size_t groups_ = 0;
    bool named_groups_ = false;
    bool repeatable_ = false;  // a quantifier may follow
};

void Translator::CountGroups() {
    bool in_class = false;
    for (std::size_t i = 0; i < in_.size(); ++i) {
        if (in_[i] == '\\') {
            ++i;
        } else if (in_class || in_[i] == '[') {
            in_class = in_[i] != ']';
        } else if (in_[i] == '(') {
            const std::string_view kind = in_.substr(i + 1, 3);
            const bool named = kind.starts_with("?<") && !kind.starts_with("?<=") && !kind.starts_with("?<!");
            if (named || !kind.starts_with('?')) ++groups_;
            named_groups_ |= named;
        }
    }
}

void Translator::TranslateItem() {
    switch (in_[at_]) {
        case '(':
            return TranslateGroup();
        case '[':
            return TranslateClass();
        case '\\':
            return TranslateEscape();
        case '*':
        case '+':
        case '?':
            return TranslateQuantifier(1);
        case '{':
            if (const std::size_t size = BracedQuantifierSize(); size != 0) return TranslateQuantifier(size);
            break;
        case '^':
        case '$':
        case '|':
            repeatable_ = false;
            return Copy();
        case '.':
        case ')':
            repeatable_ = true;
            return Copy();
        default:
            break;
    }
    EmitCharacter(static_cast<Byte>(in_[at_]), at_);
    ++at_;
    repeatable_ = true;
}

void Translator::TranslateGroup() {
    repeatable_ = false;
    if (Next(1) != '?') return Copy();
    const std::string_view kind = in_.substr(at_ + 2);
    for (const std::string_view known : {":", "=", "!", "<=", "<!"}) {
        if (kind.starts_with(known)) return Copy(2 + known.size());
    }
    if (!kind.starts_with('<')) throw ExpressionFault(at_ + 2, "unknown kind of group");
    Copy(std::min(in_.find('>', at_), in_.size() - 1) + 1 - at_);
}

void Translator::TranslateQuantifier(std::size_t size) {
    if (!repeatable_) throw ExpressionFault(at_, "nothing to repeat");
    repeatable_ = false;
    if (items_ == 1 && TranslateLeadingQuantifier(in_.substr(at_, size))) return;
    out_.ways *= WaysToRepeat(in_.substr(at_, size));
    Copy(size);
    if (Next() == '?') Copy();
}

// Translates the quantifier of the character that the expression begins with: whether there is a match does
// not depend on repetitions above the fewest, as one can begin behind them. Without them the engine looks for
// what stands at a fixed distance, which is much faster. False for quantifiers that allow none, or are
// faulty.
bool Translator::TranslateLeadingQuantifier(std::string_view quantifier) {
    std::size_t fewest = 1;
    if (quantifier.front() == '{') {
        constexpr std::size_t kLongest = std::string_view("{65535,65535}").size();
        const std::size_t comma = quantifier.find(',');
        if (comma == std::string_view::npos || quantifier.size() > kLongest) return false;
        fewest = std::stoul(std::string(quantifier.substr(1, comma - 1)));
        const std::string most(quantifier.substr(comma + 1, quantifier.size() - comma - 2));
        constexpr std::size_t kMost = 65535;  // the engine takes no more
        if (fewest > kMost || (!most.empty() && (std::stoul(most) < fewest || std::stoul(most) > kMost)))
            return false;
    } else if (quantifier != "+") {
        return false;
    }
    if (fewest == 0) return false;
    Emit("{" + std::to_string(fewest) + "}", at_);
    at_ += quantifier.size();
    if (Next() == '?') ++at_;
    return true;
}

// What the quantifier that comes next adds to the ways to match.
double Translator::WaysToRepeat(std::string_view quantifier) const {
    if (quantifier == "?") return 2;
    if (at_ > 0 && in_[at_ - 1] == ')') return kRepeatedGroup;
    if (quantifier.size() == 1) return kEndless;
    const std::size_t comma = quantifier.find(',');
    if (comma == std::string_view::npos) return 1;
    const std::size_t digits = quantifier.size() - comma - 2;
    constexpr std::size_t kMostDigits = 5;  // the engine takes no more
    if (digits == 0 || digits > kMostDigits) return kEndless;
    return std::max(1.0, std::stod(std::string(quantifier.substr(comma + 1, digits))));
}

// The size of the "{m}", "{m,}" or "{m,n}" that comes next; 0 when the brace is a character like any other.
std::size_t Translator::BracedQuantifierSize() const {
    std::size_t i = 1;
    while (IsDigit(Next(i)))
        ++i;
    if (i == 1) return 0;
    if (Next(i) == ',') ++i;
    while (IsDigit(Next(i)))
        ++i;
    return Next(i) == '}' ? i + 1 : 0;
}

void Translator::TranslateEscape() {
    const std::size_t place = at_;
    if (place + 1 == in_.size()) throw ExpressionFault(place, "a backslash at the end");
    const char escaped = in_[place + 1];
    repeatable_ = escaped != 'b' && escaped != 'B';
    if (std::string_view("bBdDsSwW").find(escaped) != std::string_view::npos) return Copy(2);
    if (TranslateReference()) return;
    ++at_;
    const std::optional<Byte> byte = TakeCharacterEscape(false);
    if (!byte) return Emit(kNothing, place);
    EmitCharacter(*byte, place);
}

// Translates "\3" and "\k<name>"; false when the escape stands for something else.
bool Translator::TranslateReference() {
    if (named_groups_ && Next(1) == 'k') {
        const std::size_t end = in_.find('>', at_);
        if (Next(2) != '<' || end == std::string_view::npos) throw ExpressionFault(at_, "no name of a group");
        Copy(end + 1 - at_);
        out_.references = true;
        return true;
    }
    std::size_t number = 0;
    std::size_t i = 1;
    for (; IsDigit(Next(i)) && number <= groups_; ++i)
        number = number * 10 + static_cast<std::size_t>(Next(i) - '0');
    if (Next(1) == '0' || number == 0 || number > groups_) return false;
    Emit("\\g{" + std::to_string(number) + '}', at_);
    out_.references = true;
    at_ += i;
    return true;
}

void Translator::TranslateClass() {
    const std::size_t start = at_;
    Copy(Next(1) == '^' ? 2 : 1);
    while (Next() != ']' || at_ >= in_.size()) {
        if (at_ >= in_.size()) throw ExpressionFault(start, "a class without its \"]\"");
        const Member member = TakeMember();
        if (Next() == '-' && at_ + 1 < in_.size() && Next(1) != ']') {
            ++at_;
            TranslateRange(member, TakeMember());
        } else {
            EmitMember(member);
        }
    }
    if (out_.text.back() == '[') Emit(kNothing.substr(1, kNothing.size() - 2), start);
    Copy();
    repeatable_ = true;
}

void Translator::TranslateRange(const Member& first, const Member& last) {
    if (first.set != 0 || last.set != 0) {  // a set begins or ends no range: the hyphen is a member
        EmitMember(first);
        Emit("\\-", first.place);
        return EmitMember(last);
    }
    if (!first.byte) return;
    constexpr Byte kLastByte = 0xFF;
    const Byte end = last.byte.value_or(kLastByte);
    if (*first.byte > end) throw ExpressionFault(first.place, "a range out of order");
    if (*first.byte == end) return EmitMember(first);
    EmitByte(*first.byte, first.place);
    Emit("-", first.place);
    EmitByte(end, last.place);
}

Translator::Member Translator::TakeMember() {
    Member member;
    member.place = at_;
    if (Next() != '\\') {
        member.byte = static_cast<Byte>(in_[at_++]);
        return member;
    }
    if (++at_ >= in_.size()) throw ExpressionFault(member.place, "a backslash at the end");
    if (std::string_view("dDsSwW").find(Next()) != std::string_view::npos) {
        member.set = in_[at_++];
    } else {
        member.byte = TakeCharacterEscape(true);
    }
    return member;
}

void Translator::EmitMember(const Member& member) {
    if (member.byte) EmitCharacter(*member.byte, member.place);
    if (member.set == 0) return;
    const char escaped[] = {'\\', member.set};
    Emit({escaped, sizeof escaped}, member.place);
}

// Takes what follows a backslash that stands for one character.
std::optional<Byte> Translator::TakeCharacterEscape(bool in_class) {
    if (IsOctalDigit(Next())) return TakeOctal();
    const char escaped = in_[at_++];
    switch (escaped) {
        case 'b':
            return in_class ? '\b' : 'b';
        case 'f':
            return '\f';
        case 'n':
            return '\n';
        case 'r':
            return '\r';
        case 't':
            return '\t';
        case 'v':
            return '\v';
        case 'c': {
            constexpr Byte kControlBits = 0x1F;
            const bool control = IsLetter(Next()) || (in_class && (IsDigit(Next()) || Next() == '_'));
            if (control) return static_cast<Byte>(in_[at_++]) & kControlBits;
            --at_;
            return '\\';
        }
        case 'x':
        case 'u': {
            const std::optional<unsigned> code = TakeHex(escaped == 'x' ? 2 : 4);
            return code ? ByteOf(*code) : static_cast<Byte>(escaped);
        }
        default:
            return static_cast<Byte>(escaped);
    }
}

// Takes up to three octal digits that are worth one byte.
Byte Translator::TakeOctal() {
    constexpr unsigned kMostBeforeLastDigit = 0377 / 8;
    unsigned value = 0;
    for (int digits = 0; digits < 3 && IsOctalDigit(Next()) && value <= kMostBeforeLastDigit; ++digits)
        value = value * 8 + static_cast<unsigned>(in_[at_++] - '0');
    return static_cast<Byte>(value);
}

// Takes exactly `digits` hexadecimal digits; none, and takes nothing, when there are fewer.
std::optional<unsigned> Translator::TakeHex(std::size_t digits) {
    unsigned value = 0;
    for (std::size_t i = 0; i < digits; ++i) {
        const std::optional<unsigned> digit = HexDigitValue(Next(i));
        if (!digit) return std::nullopt;
        value = value * 16 + *digit;
    }
    at_ += digits;
    return value;
}

}  // namespace

EngineExpression TranslateExpression(std::string_view expression) {
    EngineExpression translated = Translator(expression).Translate();
    if (const std::optional<std::string> faster = FasterChoice(expression)) {
        translated.text = *faster;
        translated.places.assign(faster->size(), 0);  // nothing to find fault with
    }
    return translated;
}

Error ExpressionFault(std::size_t place, std::string_view reason) {
    return Error(errors::kInvalidCall,
                 "Invalid expression at character " + std::to_string(place + 1) + ": " + std::string(reason));
}

}  // namespace zorvel
