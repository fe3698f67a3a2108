#include "database/dataset_list.h"

#include "shell/formats.h"

namespace zorvel {
namespace {

constexpr std::string_view kSeparator = "  -  ";

}  // namespace

std::string ListItem(const CatalogueRow& row) {
    return row.Captured + std::string(kSeparator) + row.Description + std::string(kSeparator) + row.DBName;
}

std::vector<std::string> ListItems(const std::vector<CatalogueRow>& rows) {
    std::vector<std::string> items;
    items.reserve(rows.size());
    for (const CatalogueRow& row : rows)
        items.push_back(ListItem(row));
    return items;
}

std::string DatasetOf(std::string_view item) {
    const std::size_t start = item.find("Zorvel_");
    return std::string(start == std::string_view::npos ? item : item.substr(start));
}

DatasetSummary SummaryOf(const Catalogue& catalogue, std::string_view dataset) {
    const std::optional<CatalogueRow> row = catalogue.Fetch(dataset);
    if (!row) return {};
    return {
        row->Captured,   row->Tree, row->OU, GroupedOrZero(row->AppCount), GroupedOrZero(row->CountIssues()),
        row->Description};
}

}  // namespace zorvel
