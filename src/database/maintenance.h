// The dialog that compacts and deletes datasets, `frmDBMaint`.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "database/catalogue.h"
#include "database/dataset_list.h"
#include "platform/error.h"
#include "shell/services.h"

namespace zorvel {

enum class MaintenanceResult {
    kDone,
    kDeclined,  // the user said no, nothing is selected, or another process writes; nothing was changed
    kFailed,    // the error was shown and logged; steps before it may have been done
};

class DatabaseMaintenance {
  public:
    DatabaseMaintenance(Services& services, Catalogue& catalogue);

    // Fills the dialog. An error is shown and logged, and leaves an empty list.
    void Open();
    // Selects the list item `index` (from 0) and fills the summary. An error is shown and logged.
    void Select(std::size_t index);
    // Selects the first item whose DBName is `dataset`, without regard to case; false when there is none.
    bool SelectDataset(const std::string& dataset);
    // "Compact": rewrites the selected dataset without its unused space. Its file is the old or the new one,
    // whole, at every moment.
    MaintenanceResult Compact();
    // "Delete": removes the selected dataset from the catalogue and deletes its file.
    MaintenanceResult Delete();

    // What the dialog shows.
    std::vector<std::string> lstCapture;
    std::vector<std::string> item_notes;  // of each item: what is to be said of its dataset, or nothing
    std::string list_caption;             // of the list's frame
    DatasetSummary summary;
    bool butCompactEnabled = false;
    bool butDeleteEnabled = false;

  private:
    void RefreshForm();
    void Fill();
    void Clear();
    void Show(const std::string& dataset);
    void Select(const std::string& dataset);
    void CompactFile(const std::string& path);
    void ReplaceByCompacted(const std::string& path, const std::string& compacted);
    bool RemoveRow();
    void RemoveFiles(const std::string& path);
    void ReportCompactFailure(const Error& error);
    void ReportDeleteFailure(const Error& error);

    Services& services_;
    Catalogue& catalogue_;
    std::vector<std::string> names_;  // the DBName of each list item
    std::string dataset_;             // selected; empty when there is none
    int step_ = 0;                    // of the operation, named in error texts
};

}  // namespace zorvel
