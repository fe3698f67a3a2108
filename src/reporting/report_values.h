// The values of a report as they are shown.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "reporting/report_definition.h"

namespace zorvel {

// The whole number that a value is, or nothing.
std::optional<std::int64_t> WholeNumber(std::string_view value);

// A value as it is shown: lines end with LF, tabs are blanks, other control characters "·". The result is
// `value` itself or lies in `scratch`.
std::string_view DisplayValue(std::string_view value, ValueFormat format, std::string& scratch);
// The same of a text, by itself.
std::string DisplayText(std::string text);

}  // namespace zorvel
