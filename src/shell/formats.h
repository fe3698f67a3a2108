// The one home of number and date texts. The pattern a function stands for is given in its comment.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/clock.h"

namespace zorvel {

// The plain number-to-text conversion: a leading blank before a number that is not negative (" 12", "-3").
std::string PlainNumber(std::int64_t number);
// "#,#": thousands separators; zero is an empty text.
std::string Grouped(std::int64_t number);
// "#,0": thousands separators; zero is "0".
std::string GroupedOrZero(std::int64_t number);
// The same of a count.
std::string GroupedCount(std::size_t count);
// "#,##;;-": thousands separators; zero is "-", a negative number an empty text.
std::string GroupedOrDash(std::int64_t number);
// "#": digits; zero is an empty text.
std::string Digits(std::int64_t number);
// "0000000": at least seven digits.
std::string SevenDigits(std::int64_t number);
// "0.0%": a fraction as a percentage with one decimal.
std::string Percentage(double fraction);
// "0.00"
std::string TwoDecimals(double number);
// "0": rounded to the nearest whole number, halves away from zero.
std::string Rounded(double number);

// The number that a text begins with, as a text box's content is read: blanks are passed over, a sign,
// digits, a fraction and an exponent are taken; 0 when there is none. Raises error 6 when it does not fit.
double NumericValue(std::string_view text);
// NumericValue rounded towards zero and kept within 32 bits. Raises error 6 when it does not fit.
std::int32_t WholeValue(std::string_view text);

// "dd/mm/yyyy"
std::string ShortDate(const DateTime& time);
// "hh:mm:ss"
std::string LongTime(const DateTime& time);
// "hh:mm"
std::string ShortTime(const DateTime& time);
// "dd/mm/yyyy hh:mm:ss"
std::string DateAndTime(const DateTime& time);
// "dd/mm/yy hh:mm:ss"
std::string ShortYearDateAndTime(const DateTime& time);
// "yyyy-mm-dd hh:mm:ss": ISO 8601 with a blank, as SQLite's own date functions write it; datasets store it
// because it sorts.
std::string SortableDateAndTime(const DateTime& time);
// The stored form as "dd/mm/yyyy hh:mm:ss"; nothing when the text has another form.
std::optional<std::string> ShownDateAndTime(std::string_view sortable);
// "YYMMDDHHMMSS" (the second MM being minutes)
std::string TimeStamp(const DateTime& time);
// Reads "dd/mm/yyyy", alone or followed by " hh:mm:ss". Raises error 13 when the text is no such date.
DateTime ParseDateAndTime(std::string_view text);

// The elapsed time of whole seconds as "hh:mm:ss"; hours take as many digits as they need.
std::string FormatElapsed(std::int64_t seconds);

}  // namespace zorvel
