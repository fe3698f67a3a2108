// The columns of the Findings page as the user has arranged them, and the file that keeps that.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "findings/finding_order.h"
#include "platform/files.h"

namespace zorvel {

struct PlacedColumn {
    FindingColumn column;
    int width;  // pixels

    bool operator==(const PlacedColumn&) const = default;
};
// From left to right; each column once.
using ColumnLayout = std::vector<PlacedColumn>;

// A column a line, its width in front of its name. Reading gives nothing for a text that is not that of all
// columns, each with a width from 10 to 10,000.
std::string ColumnLayoutText(const ColumnLayout& layout);
ColumnLayout ParseColumnLayout(std::string_view text);

// The file in TempData; nothing when there is none that can be read. Saving raises an OutputError.
ColumnLayout ReadColumnLayout(const Files& files);
void SaveColumnLayout(const Files& files, const ColumnLayout& layout);

}  // namespace zorvel
