// What a report's sort and filter do to the query of its definition.
#pragma once

#include <string>
#include <string_view>

namespace zorvel {

// Replaces what follows the query's first "ORDER BY", but for the one character behind these words, by
// `sort`. Returns the query unchanged when `sort` is empty, or when the query has no "ORDER BY" or begins
// with it.
std::string ImposeSort(std::string_view query, std::string_view sort);

// Inserts `filter` and a carriage return before the query's first "ORDER BY". The one character in front of
// these words stays in front of the filter, and is repeated behind the carriage return. Returns the query
// unchanged when `filter` is empty, or when the query has no "ORDER BY" or begins with it.
std::string ImposeFilter(std::string_view query, std::string_view filter);

}  // namespace zorvel
