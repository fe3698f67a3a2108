#include "database/maintenance.h"

#include "platform/store.h"
#include "shell/formats.h"
#include "shell/report_error.h"

namespace zorvel {
namespace {

std::string NumberAndDescription(const Error& error) {
    return ' ' + std::to_string(error.number()) + " (" + error.description() + ')';
}

}  // namespace

DatabaseMaintenance::DatabaseMaintenance(Services& services, Catalogue& catalogue)
    : services_(services), catalogue_(catalogue) {}

void DatabaseMaintenance::Open() {
    try {
        RefreshForm();
    } catch (...) {
        services_.ui.Tell(LogUnexpectedError(services_.log, CurrentError(), "frmDBMaint"),
                          MessageIcon::kExclamation);
    }
}

void DatabaseMaintenance::RefreshForm() {
    services_.log.WriteLog("DBMaint: Reading CaptureDetails from Master DB...");
    lstCapture.clear();
    list_caption.clear();
    summary = {};
    dataset_.clear();
    lstCapture = ListItems(catalogue_);
    if (lstCapture.empty()) {
        services_.log.WriteLog("No Zorvel DBs in Master found to maintain...");
        services_.ui.Tell(
            "There are no Zorvel databases to maintain - please try again after Zorvelling and importing at "
            "least one NAL "
            "object",
            MessageIcon::kExclamation);
        butDeleteEnabled = false;
        butCompactEnabled = false;
        return;
    }
    list_caption = "Please select Zorvel dataset to delete or compact (" +
                   Digits(static_cast<std::int64_t>(lstCapture.size())) + ' ' +
                   (lstCapture.size() == 1 ? "is" : "are") + " on file)";
    Show(0);
}

void DatabaseMaintenance::Show(std::size_t index) {
    dataset_ = DatasetOf(lstCapture.at(index));
    summary = {};
    summary = SummaryOf(catalogue_, dataset_);
}

void DatabaseMaintenance::Select(std::size_t index) {
    try {
        Show(index);
    } catch (...) {
        services_.ui.Tell(LogUnexpectedError(services_.log, CurrentError(), "lstCapture"),
                          MessageIcon::kExclamation);
    }
}

bool DatabaseMaintenance::SelectDataset(const std::string& dataset) {
    for (std::size_t i = 0; i < lstCapture.size(); ++i) {
        if (DatasetOf(lstCapture[i]) != dataset) continue;
        Select(i);
        return true;
    }
    return false;
}

bool DatabaseMaintenance::Compact() {
    if (dataset_.empty()) return false;
    step_ = 1;
    if (!services_.ui.Ask("Are you sure you wish to Compact the selected Zorvelrun dataset?",
                          MessageIcon::kExclamation, Answer::kNo)) {
        return false;
    }
    try {
        CompactFile(services_.files.Path("databases\\" + dataset_));
        return true;
    } catch (...) {
        ReportCompactFailure(CurrentError());
        return false;
    }
}

void DatabaseMaintenance::CompactFile(const std::string& path) {
    const Files& files = services_.files;
    step_ = 2;
    const auto old_size = static_cast<std::int64_t>(files.Size(path));
    step_ = 3;
    services_.log.WriteLog("Attempting Compact on '" + path + "'");
    step_ = 4;
    // The old file is there, so a copy beside it is what an earlier attempt left.
    const std::string compacted = path + "_New.mdb";
    if (files.Exists(compacted)) files.Remove(compacted);
    Database::Compact(files.Resolve(path), path, files.Resolve(compacted));
    step_ = 5;
    services_.log.WriteLog("Deleting old backup DB '" + path + "'");
    RemoveDatabase(files, path);
    step_ = 6;
    services_.log.WriteLog("Renaming '" + path + "_new.mdb' to '" + path + "'");
    files.Rename(compacted, path);
    step_ = 7;
    services_.ui.Tell("The selected Zorvel database was successfully Compacted.\n\nOriginal size was " +
                          Grouped(old_size) + " bytes, new size is " +
                          Grouped(static_cast<std::int64_t>(files.Size(path))) + " bytes.",
                      MessageIcon::kInformation);
}

void DatabaseMaintenance::ReportCompactFailure(const Error& error) {
    services_.sounds.PlayEventSound(services_.options.session.WarningSound);
    if (error.number() == errors::kStore) {
        services_.log.WriteLog(
            "WARNING: Attempt to Compact DB failed, possibly opened exclusively elsewhere...");
        services_.ui.Tell(
            "An error occurred when attempting to compact the Zorvel database - this may be because the "
            "database is "
            "already opened exclusively elsewhere.",
            MessageIcon::kExclamation);
    } else {
        const std::string text = "Unexpected error";
        const std::string where = NumberAndDescription(error) + " occurred in Compact routine at Line";
        const std::string step = ' ' + std::to_string(step_);
        services_.ui.Tell(text + where + step, MessageIcon::kCritical);
        services_.log.WriteLog("WARNING: " + text + " #" + where + ' ' + step + " - continuing...");
    }
    LogDetail(services_.log, error);
}

bool DatabaseMaintenance::Delete() {
    if (dataset_.empty()) return false;
    step_ = 1;
    if (!services_.ui.Ask("Are you sure you wish to PERMANENTLY DELETE the selected Zorvelrun dataset?",
                          MessageIcon::kExclamation, Answer::kNo)) {
        return false;
    }
    try {
        step_ = 2;
        services_.log.WriteLog("Deleting '" + dataset_ + "' database details from the MasterDB");
        catalogue_.Remove(dataset_);
        step_ = 3;
        const std::string path = services_.files.Path("databases\\" + dataset_);
        services_.log.WriteLog("Physically deleting '" + path + "'");
        RemoveDatabase(services_.files, path);
        step_ = 4;
        RefreshForm();
        return true;
    } catch (...) {
        ReportDeleteFailure(CurrentError());
        return false;
    }
}

void DatabaseMaintenance::ReportDeleteFailure(const Error& error) {
    services_.sounds.PlayEventSound(services_.options.session.WarningSound);
    const std::string where = NumberAndDescription(error) + " occurred in butDelete";
    const std::string step = " at Line " + std::to_string(step_);
    services_.ui.Tell("Error no." + where + step, MessageIcon::kNone);
    services_.log.WriteLog("ERROR: Unexpected error #" + where + " procedure" + step + " - continuing");
    LogDetail(services_.log, error);
}

}  // namespace zorvel
