// What a report's sort and filter do to the query of its definition.
#pragma once

#include <string>
#include <string_view>

namespace zorvel {

// The query with `sort` in the place of all that follows its first ORDER BY; as it is when it has none, or
// begins with it, or when `sort` is empty.
std::string ImposeSort(std::string_view query, std::string_view sort);

// The query with `filter` ahead of its first ORDER BY, the character before which then stands on both sides
// of the filter; as it is when it has none, or begins with it, or when `filter` is empty.
std::string ImposeFilter(std::string_view query, std::string_view filter);

}  // namespace zorvel
