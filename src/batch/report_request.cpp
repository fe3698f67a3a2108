#include "batch/report_request.h"

#include <utility>

#include "batch/dataset_choice.h"
#include "platform/code_page.h"
#include "reporting/report_catalogue.h"
#include "reporting/report_options.h"

namespace zorvel {
namespace {

constexpr const char* kFixedOrder = "the order of this report is fixed";
// The options offer an order, as the window does, that the report's definition leaves no room for.
constexpr const char* kInVain = "The order of this report is fixed; --sort and --descending have no effect.";

std::string SelectSort(ReportOptions& options, const std::string& sort) {
    if (sort.empty()) return {};
    for (const std::string& item : options.comboSortBy) {
        if (!EqualIgnoringCase(item, sort)) continue;
        options.sort = item;
        return {};
    }
    if (options.comboSortBy.empty()) return kFixedOrder;
    std::string choices;
    for (const std::string& item : options.comboSortBy)
        choices += (choices.empty() ? "'" : ", '") + item + '\'';
    return "this report cannot be ordered by '" + sort + "', only by " + choices;
}

std::string Exclude(IssueTree& tree, const std::string& code) {
    if (tree.nodes().empty()) return "this report has no issues to exclude";
    for (std::size_t number = 0; number < tree.nodes().size(); ++number) {
        if (tree.IsCategory(number) || tree.nodes()[number].key != code) continue;
        tree.Check(number, false);
        return {};
    }
    return "there is no issue '" + code + '\'';
}

}  // namespace

RequestedReport::RequestedReport(Services& services, const Catalogue& catalogue, const ReportRequest& request,
                                 AskInterrupted ask)
    : services_(services), catalogue_(catalogue), request_(request), ask_(std::move(ask)) {}

void RequestedReport::ShowReportOptions(ReportChoice& choice) {
    refusal_ = Fill(choice);
    if (!refusal_.empty()) choice.cancelled = true;
}

std::string RequestedReport::Fill(ReportChoice& choice) {
    ReportOptions options(services_, catalogue_, choice);
    options.Open();
    if (!options.butOkEnabled) return {};  // there is no dataset, as the user was told

    const std::vector<CatalogueRow> rows = catalogue_.List();
    const auto row = FindDataset(rows, request_.dataset);
    if (row == rows.end()) return NoDataset(request_.dataset);
    std::string fault = SelectSort(options, request_.sort);
    if (fault.empty() && request_.descending && !options.order_enabled) fault = kFixedOrder;
    options.chkOrder = request_.descending;
    const bool ordered = request_.descending || !request_.sort.empty();
    const bool in_vain = ordered && !FindReport(choice.caption)->Honours(options.sort);
    for (const std::string& code : request_.excluded) {
        if (fault.empty()) fault = Exclude(options.treeRO, code);
    }
    if (!fault.empty()) return fault;
    if (in_vain) services_.ui.Tell(kInVain, MessageIcon::kInformation);
    if (!options.Generate()) return "nothing was reported";
    choice.dataset = row->DBName;
    return {};
}

void RequestedReport::ShowReport(std::shared_ptr<const Report> report) {
    report_ = std::move(report);
}

}  // namespace zorvel
