#include "reporting/report_options.h"

#include <algorithm>
#include <array>

#include "platform/store.h"
#include "reporting/report_catalogue.h"
#include "shell/formats.h"

namespace zorvel {
namespace {

constexpr std::string_view kShut = "Advanced >>";
constexpr std::string_view kOpen = "Advanced <<";

constexpr std::array<std::string_view, 3> kSortChoices{kByApplicationName, kByApplicationCaption,
                                                       kByIconOrder};

// The sort choices that a report is offered: the first `count`, one of them selected.
struct SortOffer {
    std::string_view report;
    std::size_t count;
    std::string_view selected;
};

constexpr std::array<SortOffer, 6> kSortOffers{{
    {"Application 'Fingerprint' Summary", 0, {}},
    {"Associations Summary", 1, kByApplicationName},
    {"Application Flags Summary", 1, kByApplicationName},
    {"Macro Details", 2, kByApplicationCaption},
    {"Associations by Application", 2, kByApplicationCaption},
    {"Run Order Summary", 3, kByIconOrder},
}};
constexpr SortOffer kOtherReports{{}, kSortChoices.size(), kByApplicationCaption};

SortOffer OfferFor(std::string_view report) {
    const auto* found = std::find_if(kSortOffers.begin(), kSortOffers.end(),
                                     [report](const SortOffer& offer) { return offer.report == report; });
    return found == kSortOffers.end() ? kOtherReports : *found;
}

// The issue catalogue of the template database, which is closed again.
std::vector<Resolution> ReadResolutions(const Files& files) {
    const std::string path = files.Path(kTemplateFile);
    const Database database(files.Resolve(path), path, Database::Access::kReadOnly);
    Rows rows = database.Query("SELECT IssueCode,IssueShortDesc from Zorvel_Resolutions");
    std::vector<Resolution> resolutions;
    while (rows.Next())
        resolutions.push_back({rows.Text("IssueCode"), rows.Text("IssueShortDesc")});
    return resolutions;
}

}  // namespace

ReportOptions::ReportOptions(Services& services, const Catalogue& catalogue, ReportChoice& choice)
    : services_(services), catalogue_(catalogue), choice_(choice) {}

void ReportOptions::Open() {
    caption = "Reporting options for " + choice_.caption;
    advanced_open = false;
    butAdvanced = kShut;
    FillOrder();
    const CatalogueReport* report = FindReport(choice_.caption);
    butAdvancedEnabled = report != nullptr && report->issue_filter;
    if (butAdvancedEnabled) FillTreeRO();
    FillList();
}

void ReportOptions::FillOrder() {
    const SortOffer offer = OfferFor(choice_.caption);
    comboSortBy.assign(kSortChoices.begin(), kSortChoices.begin() + offer.count);
    sort = offer.selected;
    order_enabled = offer.count > 0;
}

void ReportOptions::FillTreeRO() {
    services_.log.WriteLog("Opening template Zorvel DB to retrieve Resolutions...");
    const std::vector<Resolution> resolutions = ReadResolutions(services_.files);
    if (resolutions.empty()) {
        services_.log.WriteLog("WARNING: No Resolutions found in Zorvel template DBs !!");
        services_.ui.Tell("No Resolutions where found in Zorvel template database?!",
                          MessageIcon::kExclamation);
        return;
    }
    treeRO.Fill(resolutions);
    services_.log.WriteLog("Resolutions loaded into Reporting Options tree");
}

void ReportOptions::FillList() {
    const std::vector<CatalogueRow> rows = catalogue_.List();
    lstCapture = ListItems(rows);
    item_notes = ItemNotes(services_.files, rows);
    butOkEnabled = !lstCapture.empty();
    if (lstCapture.empty()) {
        choice_.cancelled = true;
        services_.ui.Tell(
            "There are no recorded Zorvelled applications to report on - please try again after Zorvelling "
            "at least one NAL object",
            MessageIcon::kExclamation);
        return;
    }
    Select(0);
    list_caption = "Please select Zorvel dataset to report on (" +
                   Digits(static_cast<std::int64_t>(lstCapture.size())) + " are on file)";
}

void ReportOptions::Select(std::size_t index) {
    dataset_ = DatasetOf(lstCapture.at(index));
    summary = SummaryOf(services_.files, catalogue_, dataset_);
}

void ReportOptions::ToggleAdvanced() {
    advanced_open = !advanced_open;
    butAdvanced = advanced_open ? kOpen : kShut;
}

bool ReportOptions::Generate() {
    if (!butOkEnabled) return false;
    // A tree that could not be filled excludes nothing, so there is nothing to warn of.
    const bool all_disabled = butAdvancedEnabled && !treeRO.nodes().empty() && !treeRO.AnyChecked();
    if (all_disabled &&
        !services_.ui.Ask(
            "Warning: all issues have been disabled in the Advanced report options - this will lead to a "
            "blank report!\r\rDo you want to continue to generate the report with these settings?",
            MessageIcon::kExclamation, Answer::kNo)) {
        return false;
    }
    choice_.dataset = dataset_;
    choice_.sort = sort;
    choice_.descending = chkOrder;
    choice_.excluded_codes = treeRO.UncheckedKeys();
    choice_.cancelled = false;
    return true;
}

void ReportOptions::Cancel() {
    choice_.cancelled = true;
}

}  // namespace zorvel
