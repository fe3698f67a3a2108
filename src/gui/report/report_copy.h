// What a report's texts are on the clipboard.
#pragma once

#include <QString>
#include <cstddef>

#include "reporting/page_canvas.h"
#include "reporting/report.h"

namespace zorvel {

// The whole value, heading or note that a text on a page is a part of; empty for furniture.
QString ValueText(const Report& report, const TextPlace& place);

// The values of a row's columns as they are shown, parted by tabs, as spreadsheets take them.
QString RowText(const Report& report, std::size_t row);

}  // namespace zorvel
