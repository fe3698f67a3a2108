#include "reporting/report_export.h"

#include <algorithm>
#include <array>

#include "platform/code_page.h"

namespace zorvel {
namespace {

constexpr std::array<ReportFormat, 4> kFormats{{{".pdf", "PDF document (*.pdf)", nullptr},
                                                {".html", "Web page (*.html)", WriteHtml},
                                                {".csv", "Comma-separated values (*.csv)", WriteCsv},
                                                {".json", "JSON (*.json)", WriteJson}}};

}  // namespace

std::span<const ReportFormat> ReportFormats() {
    return kFormats;
}

const ReportFormat* FormatOf(const std::filesystem::path& path) {
    const std::string suffix = path.extension().string();
    const auto* found = std::find_if(kFormats.begin(), kFormats.end(), [&suffix](const ReportFormat& format) {
        return EqualIgnoringCase(format.suffix, suffix);
    });
    return found == kFormats.end() ? nullptr : found;
}

}  // namespace zorvel
