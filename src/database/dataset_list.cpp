#include "database/dataset_list.h"

#include "database/import_record.h"
#include "shell/formats.h"

namespace zorvel {
namespace {

constexpr std::string_view kSeparator = "  -  ";

std::string NoteOf(const Files& files, std::string_view dataset) {
    return LacksCompletion(files, dataset) ? std::string(kImportNotCompleted) : std::string();
}

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

std::vector<std::string> ItemNotes(const Files& files, const std::vector<CatalogueRow>& rows) {
    std::vector<std::string> notes;
    notes.reserve(rows.size());
    for (const CatalogueRow& row : rows)
        notes.push_back(NoteOf(files, row.DBName));
    return notes;
}

std::string DatasetOf(std::string_view item) {
    const std::size_t start = item.find("Zorvel_");
    return std::string(start == std::string_view::npos ? item : item.substr(start));
}

DatasetSummary SummaryOf(const Files& files, const Catalogue& catalogue, std::string_view dataset) {
    const std::optional<CatalogueRow> row = catalogue.Fetch(dataset);
    if (!row) return {};
    return {row->Captured,
            row->Tree,
            row->OU,
            GroupedOrZero(row->AppCount),
            GroupedOrZero(row->CountIssues()),
            row->Description,
            NoteOf(files, dataset)};
}

}  // namespace zorvel
