#include "shell/csv_writer.h"

#include <algorithm>
#include <cstddef>
#include <string>

#include "platform/code_page.h"

namespace zorvel {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kRecordEnd = "\r\n";
// What a spreadsheet passes over ahead of a formula: blanks, fixed blanks (0xA0), tabs, ends of lines.
constexpr std::string_view kBlanks = " \t\r\n\xA0";
constexpr std::string_view kFormulaBegins = "=+-@";

// What is to be known of a character.
enum Trait : unsigned char {
    kQuoted = 1,   // a value that holds it stands in quotes
    kSpelled = 2,  // it is not written as it stands
    kSuspect = 4,  // a value that begins with it may be a formula, or has blanks to protect
};

bool Holds(std::string_view characters, char character) {
    return characters.find(character) != std::string_view::npos;
}

// Control characters become their pictures (U+2400 and on), and codes without a character U+FFFD.
void SpellControls(CharacterTable& spelling) {
    constexpr char32_t kPictures = 0x2400;
    constexpr std::size_t kDelete = 0x7F;
    constexpr char32_t kPictureOfDelete = 0x2421;
    constexpr char32_t kReplacement = 0xFFFD;
    spelling.SpellControls([](std::size_t code) {
        std::string text;
        AppendUtf8(text, code < ' '        ? kPictures + static_cast<char32_t>(code)
                         : code == kDelete ? kPictureOfDelete
                                           : kReplacement);
        return text;
    });
    for (const char kept : {'\t', '\r', '\n'})
        spelling.Keep(static_cast<unsigned char>(kept));
}

// True for "-5" and "-1.25": a number, which is what a spreadsheet shall take it for.
bool IsNegativeNumber(std::string_view value) {
    const auto digits = [&value] {
        const auto* end =
            std::find_if(value.begin(), value.end(), [](char digit) { return digit < '0' || digit > '9'; });
        const auto count = static_cast<std::size_t>(end - value.begin());
        value.remove_prefix(count);
        return count > 0;
    };
    if (!value.starts_with('-')) return false;
    value.remove_prefix(1);
    if (!digits()) return false;
    if (value.empty()) return true;
    if (value.front() != '.') return false;
    value.remove_prefix(1);
    return digits() && value.empty();
}

bool IsFormula(std::string_view value) {
    if (Holds("\t\r\n", value.front())) return true;
    const std::size_t begin = value.find_first_not_of(kBlanks);
    return begin != std::string_view::npos && Holds(kFormulaBegins, value[begin]) && !IsNegativeNumber(value);
}

}  // namespace

CsvWriter::CsvWriter(OutputFile& file) : file_(file) {
    SpellControls(spelling_);
    spelling_.Spell('"', "\"\"");
    for (std::size_t code = 0; code < traits_.size(); ++code) {
        const auto character = static_cast<char>(static_cast<unsigned char>(code));
        unsigned traits = spelling_.IsPlain(character) ? 0 : kSpelled;
        if (Holds(",\"\r\n", character)) traits |= kQuoted;
        if (Holds(kFormulaBegins, character) || Holds(kBlanks, character)) traits |= kSuspect;
        traits_[code] = static_cast<unsigned char>(traits);
    }
    file_.Write(kByteOrderMark);
}

void CsvWriter::Write(std::string_view value) {
    if (values_ > 0) file_.Write(',');
    only_is_empty_ = values_ == 0 && value.empty();
    ++values_;
    if (!value.empty()) WriteValue(value);
}

void CsvWriter::EndRecord() {
    // A line without anything would be passed over by readers.
    if (only_is_empty_) file_.Write("\"\"");
    file_.Write(kRecordEnd);
    values_ = 0;
    only_is_empty_ = false;
}

void CsvWriter::WriteValue(std::string_view value) {
    unsigned traits = 0;
    for (const char character : value)
        traits |= TraitsOf(character);
    const bool suspect = (TraitsOf(value.front()) & kSuspect) != 0;
    const bool guarded = suspect && IsFormula(value);
    const bool quoted =
        (traits & kQuoted) != 0 || Holds(kBlanks, value.front()) || Holds(kBlanks, value.back());
    if (quoted) file_.Write('"');
    if (guarded) file_.Write('\'');
    if ((traits & kSpelled) != 0) {
        spelling_.Write(value, file_);
    } else {
        file_.Write(value);
    }
    if (quoted) file_.Write('"');
}

}  // namespace zorvel
