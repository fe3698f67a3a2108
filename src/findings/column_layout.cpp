#include "findings/column_layout.h"

#include <algorithm>
#include <charconv>
#include <set>

#include "platform/error.h"
#include "platform/output_file.h"

namespace zorvel {
namespace {

constexpr const char* kFile = R"(TempData\Findings.columns)";
constexpr int kLeastWidth = 10;
constexpr int kMostWidth = 10'000;

std::string_view NameOf(FindingColumn column) {
    return kFindingColumns[static_cast<std::size_t>(column)];
}

}  // namespace

std::string ColumnLayoutText(const ColumnLayout& layout) {
    std::string text;
    for (const PlacedColumn& placed : layout)
        text += std::to_string(placed.width) + ' ' + std::string(NameOf(placed.column)) + "\r\n";
    return text;
}

ColumnLayout ParseColumnLayout(std::string_view text) {
    ColumnLayout layout;
    std::set<FindingColumn> seen;
    while (!text.empty()) {
        PlacedColumn placed{};
        const auto [end, error] = std::from_chars(text.begin(), text.end(), placed.width);
        if (error != std::errc{} || placed.width < kLeastWidth || placed.width > kMostWidth) return {};
        text.remove_prefix(static_cast<std::size_t>(end - text.begin()));
        const std::size_t line_end = text.find("\r\n");
        if (line_end == std::string_view::npos || !text.starts_with(' ')) return {};
        const auto* const found =
            std::find(kFindingColumns.begin(), kFindingColumns.end(), text.substr(1, line_end - 1));
        if (found == kFindingColumns.end()) return {};
        placed.column = static_cast<FindingColumn>(found - kFindingColumns.begin());
        if (!seen.insert(placed.column).second) return {};
        layout.push_back(placed);
        text.remove_prefix(line_end + 2);
    }
    return layout.size() == kFindingColumns.size() ? layout : ColumnLayout();
}

ColumnLayout ReadColumnLayout(const Files& files) {
    try {
        return ParseColumnLayout(files.Read(files.Path(kFile)));
    } catch (const Error&) {
        return {};
    }
}

void SaveColumnLayout(const Files& files, const ColumnLayout& layout) {
    files.WriteInPlace(files.Path(kFile), [&](OutputFile& file) { file.Write(ColumnLayoutText(layout)); });
}

}  // namespace zorvel
