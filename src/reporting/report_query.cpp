#include "reporting/report_query.h"

#include "platform/code_page.h"

namespace zorvel {
namespace {

constexpr std::string_view kOrderBy = "ORDER BY";

// Where a definition's order begins; 0 when it has none that could be changed.
std::size_t OrderOf(std::string_view query) {
    const std::size_t at = UpperCase(query).find(kOrderBy);
    return at == std::string::npos ? 0 : at;
}

}  // namespace

std::string ImposeSort(std::string_view query, std::string_view sort) {
    const std::size_t order = OrderOf(query);
    if (order == 0 || sort.empty()) return std::string(query);
    // The character behind the words stays.
    return std::string(query.substr(0, order + kOrderBy.size() + 1)).append(sort);
}

std::string ImposeFilter(std::string_view query, std::string_view filter) {
    const std::size_t order = OrderOf(query);
    if (order == 0 || filter.empty()) return std::string(query);
    std::string filtered(query.substr(0, order));
    return filtered.append(filter).append("\r").append(query.substr(order - 1));
}

}  // namespace zorvel
