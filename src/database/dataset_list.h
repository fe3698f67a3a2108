// The list of datasets and the summary of the selected one, as the dialogs that choose a dataset show them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "database/catalogue.h"
#include "platform/files.h"

namespace zorvel {

// The list item of a catalogue row: Captured + "  -  " + Description + "  -  " + DBName.
std::string ListItem(const CatalogueRow& row);
// The list items of `rows`, in their order.
std::vector<std::string> ListItems(const std::vector<CatalogueRow>& rows);
// What is to be said of the dataset of each of `rows`: "import not completed", or nothing.
std::vector<std::string> ItemNotes(const Files& files, const std::vector<CatalogueRow>& rows);
// The dataset of a list item: its text from the first "Zorvel_" on; the whole item when there is none.
std::string DatasetOf(std::string_view item);

// The texts of the summary frame.
struct DatasetSummary {
    std::string captured;
    std::string tree;
    std::string container;
    std::string applications;  // "#,0"
    std::string issues;        // "#,0"
    std::string comments;
    std::string note;  // "import not completed", or empty
};

// The summary of a dataset; empty texts when the catalogue has no row of that name. Raises 0x80004005 when
// the store fails.
DatasetSummary SummaryOf(const Files& files, const Catalogue& catalogue, std::string_view dataset);

}  // namespace zorvel
