#include "database/maintenance.h"

#include <algorithm>

#include "database/import_record.h"
#include "database/set_aside.h"
#include "platform/code_page.h"
#include "platform/store.h"
#include "platform/store_files.h"
#include "shell/formats.h"
#include "shell/report_error.h"

namespace zorvel {
namespace {

// The file that a compaction writes, beside the one that it is to replace.
std::string CompactedCopy(const std::string& path) {
    return path + "_New.mdb";
}

}  // namespace

DatabaseMaintenance::DatabaseMaintenance(Services& services, Catalogue& catalogue)
    : services_(services), catalogue_(catalogue) {}

void DatabaseMaintenance::Open() {
    try {
        RefreshForm();
    } catch (...) {
        TellUnexpectedError(services_.ui, services_.log, CurrentError(), "frmDBMaint");
    }
}

void DatabaseMaintenance::RefreshForm() {
    services_.log.WriteLog("DBMaint: Reading CaptureDetails from Master DB...");
    Clear();
    try {
        Fill();
    } catch (...) {
        Clear();
        throw;
    }
}

void DatabaseMaintenance::Clear() {
    lstCapture.clear();
    item_notes.clear();
    names_.clear();
    list_caption.clear();
    summary = {};
    dataset_.clear();
    butDeleteEnabled = false;
    butCompactEnabled = false;
}

void DatabaseMaintenance::Fill() {
    const std::vector<CatalogueRow> rows = catalogue_.List();
    if (rows.empty()) {
        services_.log.WriteLog("No Zorvel DBs in Master found to maintain...");
        services_.ui.Tell(
            "There are no Zorvel databases to maintain - please try again after Zorvelling and importing at "
            "least one NAL object",
            MessageIcon::kExclamation);
        return;
    }
    lstCapture = ListItems(rows);
    item_notes = ItemNotes(services_.files, rows);
    for (const CatalogueRow& row : rows)
        names_.push_back(row.DBName);
    butDeleteEnabled = true;
    butCompactEnabled = true;
    list_caption = "Please select Zorvel dataset to delete or compact (" +
                   Digits(static_cast<std::int64_t>(lstCapture.size())) + ' ' +
                   (lstCapture.size() == 1 ? "is" : "are") + " on file)";
    Show(DatasetOf(lstCapture.front()));
}

void DatabaseMaintenance::Show(const std::string& dataset) {
    dataset_ = dataset;
    summary = {};
    summary = SummaryOf(services_.files, catalogue_, dataset_);
}

void DatabaseMaintenance::Select(std::size_t index) {
    Select(DatasetOf(lstCapture.at(index)));
}

void DatabaseMaintenance::Select(const std::string& dataset) {
    try {
        Show(dataset);
    } catch (...) {
        TellUnexpectedError(services_.ui, services_.log, CurrentError(), "lstCapture");
    }
}

bool DatabaseMaintenance::SelectDataset(const std::string& dataset) {
    const auto found = std::find_if(names_.begin(), names_.end(), [&dataset](const std::string& name) {
        return EqualIgnoringCase(name, dataset);
    });
    if (found == names_.end()) return false;
    Select(*found);
    return true;
}

MaintenanceResult DatabaseMaintenance::Compact() {
    if (dataset_.empty()) return MaintenanceResult::kDeclined;
    const auto hold = services_.writers.Acquire();
    if (!hold) return MaintenanceResult::kDeclined;
    step_ = 1;
    if (!services_.ui.Ask("Are you sure you wish to Compact the selected Zorvelrun dataset?",
                          MessageIcon::kExclamation, Answer::kNo)) {
        return MaintenanceResult::kDeclined;
    }
    try {
        CompactFile(services_.files.Path("databases\\" + dataset_));
        return MaintenanceResult::kDone;
    } catch (...) {
        ReportCompactFailure(CurrentError());
        return MaintenanceResult::kFailed;
    }
}

void DatabaseMaintenance::CompactFile(const std::string& path) {
    const Files& files = services_.files;
    step_ = 2;
    const auto old_size = static_cast<std::int64_t>(files.Size(path));
    step_ = 3;
    services_.log.WriteLog("Attempting Compact on '" + path + "'");
    step_ = 4;
    const std::string compacted = CompactedCopy(path);
    RequireUnused(files, path);
    // Nobody else is at it, so a copy beside it is what an earlier attempt left.
    RemoveUnfinished(files, compacted);
    try {
        ReplaceByCompacted(path, compacted);
    } catch (...) {
        const Error error = CurrentError();
        RemoveUnfinished(files, compacted);
        throw error;
    }
    step_ = 7;
    services_.ui.Tell("The selected Zorvel database was successfully Compacted.\n\nOriginal size was " +
                          Grouped(old_size) + " bytes, new size is " +
                          Grouped(static_cast<std::int64_t>(files.Size(path))) + " bytes.",
                      MessageIcon::kInformation);
}

void DatabaseMaintenance::ReplaceByCompacted(const std::string& path, const std::string& compacted) {
    const Files& files = services_.files;
    Database::Compact(files.Resolve(path), path, files.Resolve(compacted));
    step_ = 5;
    services_.log.WriteLog("Deleting old backup DB '" + path + "'");
    // The renaming deletes it: were it gone before, a program killed in between would leave no dataset.
    RequireUnused(files, path);
    step_ = 6;
    services_.log.WriteLog("Renaming '" + path + "_new.mdb' to '" + path + "'");
    ReplaceDatabase(files, compacted, path);
}

void DatabaseMaintenance::ReportCompactFailure(const Error& error) {
    services_.sounds.PlayEventSound(services_.options.session.WarningSound);
    if (error.number() == errors::kStore) {
        services_.log.WriteLog(
            "WARNING: Attempt to Compact DB failed, possibly opened exclusively elsewhere...");
        services_.ui.Tell(
            "An error occurred when attempting to compact the Zorvel database - this may be because the "
            "database is already opened exclusively elsewhere.",
            MessageIcon::kExclamation, error.detail());
    } else {
        const std::string text = "Unexpected error";
        const std::string where = NumberAndDescription(error) + " occurred in Compact routine at Line";
        const std::string step = ' ' + std::to_string(step_);
        services_.ui.Tell(text + where + step, MessageIcon::kCritical, error.detail());
        services_.log.WriteLog("WARNING: " + text + " #" + where + ' ' + step + " - continuing...");
    }
    LogDetail(services_.log, error);
}

MaintenanceResult DatabaseMaintenance::Delete() {
    if (dataset_.empty()) return MaintenanceResult::kDeclined;
    const auto hold = services_.writers.Acquire();
    if (!hold) return MaintenanceResult::kDeclined;
    step_ = 1;
    if (!services_.ui.Ask("Are you sure you wish to PERMANENTLY DELETE the selected Zorvelrun dataset?",
                          MessageIcon::kExclamation, Answer::kNo)) {
        return MaintenanceResult::kDeclined;
    }
    try {
        step_ = 2;
        services_.log.WriteLog("Deleting '" + dataset_ + "' database details from the MasterDB");
        const bool row_removed = RemoveRow();
        step_ = 3;
        const std::string path = services_.files.Path("databases\\" + dataset_);
        services_.log.WriteLog("Physically deleting '" + path + "'");
        RemoveFiles(path);
        if (!row_removed) {
            step_ = 2;
            catalogue_.Remove(dataset_);
        }
        step_ = 4;
        RefreshForm();
        return MaintenanceResult::kDone;
    } catch (...) {
        ReportDeleteFailure(CurrentError());
        return MaintenanceResult::kFailed;
    }
}

// Deletes the dataset's file and what belongs to it. What an import set aside for it goes too, unless that
// was whole and this one is not.
void DatabaseMaintenance::RemoveFiles(const std::string& path) {
    const Files& files = services_.files;
    const bool whole = ImportStateOf(files, path) == ImportState::kCompleted;
    RemoveDatabase(files, path);
    RemoveUnfinished(files, CompactedCopy(path));
    const std::string aside = SetAsidePath(path);
    if (whole || ImportStateOf(files, aside) == ImportState::kNotCompleted) {
        RemoveSetAside(files, path);
    } else if (files.Exists(aside)) {
        services_.log.WriteWarning("The dataset that was set aside for it stays: '" + aside + "'");
    }
}

// Removes the dataset's row. False on a full disk, which has no room for what the store notes while it
// removes.
bool DatabaseMaintenance::RemoveRow() {
    try {
        catalogue_.Remove(dataset_);
        return true;
    } catch (const Error& error) {
        if (error.number() != errors::kDiskFull) throw;
        services_.log.WriteWarning("The disk is full: the file of '" + dataset_ +
                                   "' is deleted ahead of its database details, to make room");
        return false;
    }
}

void DatabaseMaintenance::ReportDeleteFailure(const Error& error) {
    services_.sounds.PlayEventSound(services_.options.session.WarningSound);
    const std::string where = NumberAndDescription(error) + " occurred in butDelete";
    const std::string step = " at Line " + std::to_string(step_);
    services_.ui.Tell("Error no." + where + step, MessageIcon::kNone, error.detail());
    services_.log.WriteLog("ERROR: Unexpected error #" + where + " procedure" + step + " - continuing");
    LogDetail(services_.log, error);
}

}  // namespace zorvel
