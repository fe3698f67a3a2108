#include "reporting/report_catalogue.h"

#include <algorithm>
#include <array>

namespace zorvel {
namespace {

constexpr std::string_view kZorvelrun = "Zorvelrun";
constexpr std::string_view kComponents = "Application Components";
constexpr std::string_view kMiscellaneous = "Miscellaneous";

constexpr std::array<CatalogueReport, 14> kReports{{
    {kZorvelrun, "Issue Summary", "Zorvel_AppIssues.rpt", true, true, true, ", `Zorvel_Issues`.`EntryType`",
     true},
    {kZorvelrun, "Issue Detail", "Zorvel_AppIssuesDetail.rpt", true, true, true,
     ", `Zorvel_Issues`.`TargetFile`, `Zorvel_Issues`.`EntryType`", true},
    {kComponents, "FIL File Details", "Zorvel_FILFileDetails.rpt", true, true, true,
     ", `Zorvel_CopyFiles`.`Target`"},
    {kComponents, "Registry Details", "Zorvel_RegistryDetails.rpt", true, true, true,
     ", `Zorvel_RegistrySettings`.`Key`"},
    {kComponents, "Macro Details", "Zorvel_AppMacroSum.rpt", true, true, false, ", `Zorvel_Macros`.`Macro`"},
    {kComponents, "INI File Details", "Zorvel_INIFileDetails.rpt", true, true, true,
     ", `Zorvel_INISettings`.`Data`"},
    {kComponents, "Attribute Details", "Zorvel_AppAttrSum.rpt", true, true, true,
     ", `Zorvel_AppDetails`.`Attribute`"},
    {kComponents, "Run Order Summary", "Zorvel_AppRunOrderSummary.rpt", true, true, true, ""},
    {kMiscellaneous, kCaptureDetailsReport, "Zorvel_CaptureDetails.rpt"},
    {kMiscellaneous, "Associations Summary", "Zorvel_AppAssociations.rpt", true},
    {kMiscellaneous, "Associations by Application", "Zorvel_AssociationsByApp.rpt", true, true},
    {kMiscellaneous, "Associations by User", "Zorvel_AssociationsByUser.rpt"},
    {kMiscellaneous, "Application 'Fingerprint' Summary", "Zorvel_AppFingerPrints.rpt"},
    {kMiscellaneous, "Application Flags Summary", "Zorvel_AppFlagsSummary.rpt", true},
}};

// The column that a sort choice puts behind the container.
std::string_view SortColumn(std::string_view sort) {
    if (sort == kByApplicationName) return "AppName";
    if (sort == kByApplicationCaption) return "AppCaption";
    return "AppIconOrder";
}

}  // namespace

bool CatalogueReport::Honours(std::string_view sort) const {
    return (by_name && sort == kByApplicationName) || (by_caption && sort == kByApplicationCaption) ||
           (by_icon_order && sort == kByIconOrder);
}

std::string CatalogueReport::SortText(std::string_view sort, bool descending) const {
    if (!Honours(sort)) return {};
    std::string text = "`Zorvel_Apps`.`AppOU`, `Zorvel_Apps`.`";
    text += SortColumn(sort);
    text += descending ? "` DESC" : "` ASC";
    text += secondary;
    return text;
}

std::string CatalogueReport::FilterText(std::string_view excluded_codes) const {
    if (!issue_filter || excluded_codes.empty()) return {};
    return "WHERE `Zorvel_Issues`.`IssueCode` NOT IN (" + std::string(excluded_codes) + ')';
}

std::span<const CatalogueReport> CatalogueReports() {
    return kReports;
}

const CatalogueReport* FindReport(std::string_view caption) {
    const auto* found = std::find_if(kReports.begin(), kReports.end(),
                                     [caption](const auto& report) { return report.caption == caption; });
    return found == kReports.end() ? nullptr : found;
}

}  // namespace zorvel
