#include "reporting/report_values.h"

#include <algorithm>
#include <charconv>
#include <utility>

#include "platform/code_page.h"
#include "shell/formats.h"

namespace zorvel {
namespace {

constexpr std::size_t kTabWidth = 4;
constexpr char kControlSign = '\xB7';  // "·"

std::string_view WithoutControls(std::string_view value, std::string& scratch) {
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
    if (!number) return WithoutControls(value, scratch);
    scratch = GroupedOrZero(*number);
    return scratch;
}

std::string_view DisplayDate(std::string_view value, std::string& scratch) {
    std::optional<std::string> date = ShownDateAndTime(value);
    if (!date) return WithoutControls(value, scratch);
    scratch = std::move(*date);
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
            return WithoutControls(value, scratch);
    }
}

std::string DisplayText(std::string text) {
    std::string scratch;
    if (WithoutControls(text, scratch).data() == text.data()) return text;
    return scratch;
}

}  // namespace zorvel
