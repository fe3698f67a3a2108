// The dialog that asks for the dataset, the order and the issues of a report, `frmReportOptions`.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "database/catalogue.h"
#include "database/dataset_list.h"
#include "reporting/issue_tree.h"
#include "reporting/report_choice.h"
#include "shell/services.h"

namespace zorvel {

class ReportOptions {
  public:
    // The options of the report whose caption `choice` holds; what the user chooses goes there.
    ReportOptions(Services& services, const Catalogue& catalogue, ReportChoice& choice);

    // Fills the dialog. Without any dataset the user is told so, and the choice is cancelled. Raises
    // 0x80004005 when the catalogue or the template cannot be read, and error 6 for a count outside 32 bits:
    // then there is no dialog.
    void Open();
    // Fills the issue tree from the template database. Raises 0x80004005 when it cannot be read.
    void FillTreeRO();
    // Selects the list item `index` (from 0) and fills the summary. Raises what Open raises.
    void Select(std::size_t index);
    // "Advanced >>" and "Advanced <<": opens the advanced area, or shuts it.
    void ToggleAdvanced();
    // "Generate!": hands the choice over. False, with nothing decided, when the dialog stays open: the user
    // does not want the blank report that these options lead to, or there is no dataset.
    bool Generate();
    // "Cancel" and the close box.
    void Cancel();

    // What the dialog shows.
    std::string caption;
    std::vector<std::string> lstCapture;
    std::vector<std::string> item_notes;  // of each item: what is to be said of its dataset, or nothing
    std::string list_caption;             // of the list's frame
    DatasetSummary summary;
    std::vector<std::string> comboSortBy;
    std::string sort;  // the selected item of comboSortBy; empty when there is none
    bool chkOrder = false;
    bool order_enabled = false;  // comboSortBy and chkOrder
    std::string butAdvanced;
    bool butAdvancedEnabled = false;
    bool advanced_open = false;
    IssueTree treeRO;
    bool butOkEnabled = false;

  private:
    void FillOrder();
    void FillList();

    Services& services_;
    const Catalogue& catalogue_;
    ReportChoice& choice_;
    std::string dataset_;  // selected; empty when there is none
};

}  // namespace zorvel
