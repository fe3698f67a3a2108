#include "shell/formats.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <limits>

#include "platform/error.h"

namespace zorvel {
namespace {

// At least `width` digits of a number that is not negative.
std::string Padded(std::int64_t number, std::size_t width) {
    std::string text = std::to_string(number);
    if (text.size() < width) text.insert(0, width - text.size(), '0');
    return text;
}

std::string Fixed(double number, int decimals) {
    std::array<char, 400> buffer{};
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number,
                                      std::chars_format::fixed, decimals);
    return {buffer.data(), result.ptr};
}

[[noreturn]] void ThrowOverflow(std::string_view number) {
    throw Error(errors::kOverflow).With("the number '" + CutForMessage(number) + "' is too large");
}

// Takes `digits` digits from the front of `text` as a number; false when they are not there.
bool TakeNumber(std::string_view& text, std::size_t digits, int& number) {
    if (text.size() < digits) return false;
    const auto result = std::from_chars(text.data(), text.data() + digits, number);
    if (result.ec != std::errc() || result.ptr != text.data() + digits || text.front() == '-') return false;
    text.remove_prefix(digits);
    return true;
}

bool Take(std::string_view& text, char character) {
    if (text.empty() || text.front() != character) return false;
    text.remove_prefix(1);
    return true;
}

}  // namespace

std::string PlainNumber(std::int64_t number) {
    std::string text = std::to_string(number);
    if (number >= 0) text.insert(text.begin(), ' ');
    return text;
}

std::string GroupedOrZero(std::int64_t number) {
    std::string text = std::to_string(number);
    const std::size_t first_digit = number < 0 ? 1 : 0;
    for (std::size_t at = text.size(); at > first_digit + 3;)
        text.insert(at -= 3, 1, ',');
    return text;
}

std::string Grouped(std::int64_t number) {
    return number == 0 ? std::string() : GroupedOrZero(number);
}

std::string GroupedCount(std::size_t count) {
    return GroupedOrZero(static_cast<std::int64_t>(count));
}

std::string GroupedOrDash(std::int64_t number) {
    if (number == 0) return "-";
    return number < 0 ? std::string() : GroupedOrZero(number);
}

std::string Digits(std::int64_t number) {
    return number == 0 ? std::string() : std::to_string(number);
}

std::string SevenDigits(std::int64_t number) {
    return Padded(number, 7);
}

std::string Percentage(double fraction) {
    return Fixed(fraction * 100, 1) + "%";
}

std::string TwoDecimals(double number) {
    return Fixed(number, 2);
}

std::string Rounded(double number) {
    return Fixed(std::round(number), 0);
}

double NumericValue(std::string_view text) {
    std::string compact;
    for (const char character : text) {
        if (character == ' ' || character == '\t' || character == '\n' || character == '\r') continue;
        const bool numeric = (character >= '0' && character <= '9') || character == '.' || character == '+' ||
                             character == '-' || character == 'e' || character == 'E';
        if (!numeric) break;
        compact += character;
    }
    std::string_view rest = compact;
    if (rest.starts_with('+')) rest.remove_prefix(1);
    double number = 0;
    const auto result = std::from_chars(rest.data(), rest.data() + rest.size(), number);
    if (result.ec == std::errc::result_out_of_range) ThrowOverflow(text);
    return result.ec == std::errc() ? number : 0;
}

std::int32_t WholeValue(std::string_view text) {
    const double number = std::trunc(NumericValue(text));
    if (number < std::numeric_limits<std::int32_t>::min() ||
        number > std::numeric_limits<std::int32_t>::max()) {
        ThrowOverflow(text);
    }
    return static_cast<std::int32_t>(number);
}

std::string ShortDate(const DateTime& time) {
    return Padded(time.day, 2) + '/' + Padded(time.month, 2) + '/' + Padded(time.year, 4);
}

std::string ShortTime(const DateTime& time) {
    return Padded(time.hour, 2) + ':' + Padded(time.minute, 2);
}

std::string LongTime(const DateTime& time) {
    return ShortTime(time) + ':' + Padded(time.second, 2);
}

std::string DateAndTime(const DateTime& time) {
    return ShortDate(time) + ' ' + LongTime(time);
}

std::string ShortYearDateAndTime(const DateTime& time) {
    return Padded(time.day, 2) + '/' + Padded(time.month, 2) + '/' + Padded(time.year % 100, 2) + ' ' +
           LongTime(time);
}

std::string SortableDateAndTime(const DateTime& time) {
    return Padded(time.year, 4) + '-' + Padded(time.month, 2) + '-' + Padded(time.day, 2) + ' ' +
           LongTime(time);
}

std::optional<std::string> ShownDateAndTime(std::string_view sortable) {
    constexpr std::string_view kPattern = "dddd-dd-dd dd:dd:dd";
    const auto fits = [](char got, char wanted) {
        return wanted == 'd' ? got >= '0' && got <= '9' : got == wanted;
    };
    if (!std::equal(sortable.begin(), sortable.end(), kPattern.begin(), kPattern.end(), fits))
        return std::nullopt;
    std::string shown(sortable.substr(8, 2));
    shown.append("/").append(sortable.substr(5, 2)).append("/");
    return shown.append(sortable.substr(0, 4)).append(sortable.substr(10));
}

std::string TimeStamp(const DateTime& time) {
    return Padded(time.year % 100, 2) + Padded(time.month, 2) + Padded(time.day, 2) + Padded(time.hour, 2) +
           Padded(time.minute, 2) + Padded(time.second, 2);
}

DateTime ParseDateAndTime(std::string_view text) {
    DateTime time;
    std::string_view rest = text;
    bool valid = TakeNumber(rest, 2, time.day) && Take(rest, '/') && TakeNumber(rest, 2, time.month) &&
                 Take(rest, '/') && TakeNumber(rest, 4, time.year);
    valid = valid && (std::chrono::year(time.year) / time.month / time.day).ok();
    if (valid && !rest.empty()) {
        valid = Take(rest, ' ') && TakeNumber(rest, 2, time.hour) && Take(rest, ':') &&
                TakeNumber(rest, 2, time.minute) && Take(rest, ':') && TakeNumber(rest, 2, time.second) &&
                rest.empty() && time.hour < 24 && time.minute < 60 && time.second < 60;
    }
    if (!valid)
        throw Error(errors::kTypeMismatch)
            .With("'" + std::string(text) + "' is not a date of the form dd/mm/yyyy");
    return time;
}

std::string FormatElapsed(std::int64_t seconds) {
    return Padded(seconds / 3600, 2) + ':' + Padded(seconds % 3600 / 60, 2) + ':' + Padded(seconds % 60, 2);
}

}  // namespace zorvel
