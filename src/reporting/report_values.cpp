#include "reporting/report_values.h"

#include <algorithm>
#include <charconv>

#include "platform/error.h"
#include "shell/formats.h"

namespace zorvel {
namespace {

constexpr std::size_t kTabWidth = 4;
constexpr char kControlSign = '\xB7';  // "·"
constexpr unsigned char kFirstPrintable = 0x20;
constexpr unsigned char kDelete = 0x7F;

// The codes that the code page leaves open are control characters, too.
bool IsControl(char character) {
    const auto code = static_cast<unsigned char>(character);
    return code < kFirstPrintable || code == kDelete || code == 0x81 || code == 0x8D || code == 0x8F ||
           code == 0x90 || code == 0x9D;
}

std::string_view DisplayText(std::string_view value, std::string& scratch) {
    const auto* first = std::find_if(value.begin(), value.end(), IsControl);
    if (first == value.end()) return value;
    scratch.clear();
    for (std::size_t i = 0; i < value.size(); ++i) {
        const char character = value[i];
        if (character == '\n' || (character == '\r' && (i + 1 == value.size() || value[i + 1] != '\n'))) {
            scratch += '\n';
        } else if (character == '\t') {
            scratch.append(kTabWidth, ' ');
        } else if (character != '\r') {
            scratch += IsControl(character) ? kControlSign : character;
        }
    }
    return scratch;
}

std::string_view DisplayNumber(std::string_view value, std::string& scratch) {
    const std::optional<std::int64_t> number = WholeNumber(value);
    if (!number) return DisplayText(value, scratch);
    scratch = GroupedOrZero(*number);
    return scratch;
}

// "yyyy-mm-dd hh:mm:ss" as "dd/mm/yyyy hh:mm:ss"; anything else stays.
std::string_view DisplayDate(std::string_view value, std::string& scratch) {
    constexpr std::string_view kPattern = "dddd-dd-dd dd:dd:dd";
    const bool is_date = value.size() == kPattern.size() &&
                         std::equal(value.begin(), value.end(), kPattern.begin(), [](char got, char wanted) {
                             return wanted == 'd' ? got >= '0' && got <= '9' : got == wanted;
                         });
    if (!is_date) return DisplayText(value, scratch);
    scratch.assign(value.substr(8, 2)).append("/").append(value.substr(5, 2)).append("/");
    scratch.append(value.substr(0, 4)).append(value.substr(10));
    return scratch;
}

}  // namespace

std::optional<std::int64_t> WholeNumber(std::string_view value) {
    std::int64_t number = 0;
    const char* const end = value.data() + value.size();
    const auto [stop, failure] = std::from_chars(value.data(), end, number);
    if (value.empty() || failure != std::errc() || stop != end) return std::nullopt;
    return number;
}

std::string_view DisplayValue(std::string_view value, ValueFormat format, std::string& scratch) {
    switch (format) {
        case ValueFormat::kNumber:
            return DisplayNumber(value, scratch);
        case ValueFormat::kDate:
            return DisplayDate(value, scratch);
        case ValueFormat::kYesNo:
            return value.empty() || value == "0" ? "-" : "Yes";
        default:
            return DisplayText(value, scratch);
    }
}

}  // namespace zorvel
