// How values stand in the statements of the import and the catalogue. Statements are executed with bound
// values wherever that gives the same rows; this is where the difference between the two forms is settled.
#pragma once

#include <cstddef>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

#include "platform/store.h"

namespace zorvel {

inline constexpr std::size_t kUncut = std::numeric_limits<std::size_t>::max();

// The part of `value` that stays when its apostrophes are doubled and the result is cut to `length`
// characters. A doubled apostrophe that does not fit whole is left out.
std::string_view CutEscaped(std::string_view value, std::size_t length);

// The value of `text` put between apostrophes as it stands: each doubled apostrophe in it is one. Nothing
// when a single apostrophe would end the literal early.
std::optional<std::string> LiteralValue(std::string_view text);

// Raises the error of a statement in which an apostrophe of `value` ends its literal early: the store's own,
// or when the text happens to be a valid statement one that says so. The detail names the value's `field`.
// Executes nothing.
[[noreturn]] void RejectStatement(const Database& database, std::string_view sql, std::string_view field,
                                  std::string_view value);

}  // namespace zorvel
