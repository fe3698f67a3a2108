#include "batch/dataset_choice.h"

#include <algorithm>

#include "platform/code_page.h"

namespace zorvel {

std::vector<CatalogueRow>::const_iterator FindDataset(const std::vector<CatalogueRow>& rows,
                                                      std::string_view name) {
    return std::find_if(rows.begin(), rows.end(), [name](const CatalogueRow& row) {
        return name.empty() || EqualIgnoringCase(row.DBName, name);
    });
}

std::string NoDataset(std::string_view name) {
    return name.empty() ? "there is no dataset: import a run first"
                        : "there is no dataset '" + std::string(name) + '\'';
}

}  // namespace zorvel
