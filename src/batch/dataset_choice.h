// Which dataset a command is about.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "database/catalogue.h"

namespace zorvel {

// The row, of those of the catalogue, that `name` names without regard to case: the first, which is the
// newest, when it is empty. The end when there is none.
std::vector<CatalogueRow>::const_iterator FindDataset(const std::vector<CatalogueRow>& rows,
                                                      std::string_view name);

// Why FindDataset has found none.
std::string NoDataset(std::string_view name);

}  // namespace zorvel
