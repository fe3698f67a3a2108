#include "database/capture_details.h"

#include <optional>

#include "analysis/data_files.h"
#include "database/import_record.h"
#include "platform/error.h"
#include "shell/formats.h"
#include "shell/report_error.h"

namespace zorvel {

CaptureDetails::CaptureDetails(Services& services, Catalogue& catalogue)
    : services_(services), catalogue_(catalogue) {}

bool CaptureDetails::Open() {
    if (!services_.files.Exists(services_.files.Path(data_files::kCaptureDetails.name))) {
        services_.ui.Tell(
            "There is no record of a successful Zorvelrun having been done. Please retry the import once a "
            "successful analysis of at least one NAL object has been completed.",
            MessageIcon::kExclamation);
        return false;
    }
    try {
        ReadRecord();
        return true;
    } catch (...) {
        const std::string path = services_.files.Path(data_files::kCaptureDetails.name);
        Error error = CurrentError();
        if (!error.detail().starts_with(path)) error = error.Within(path);
        TellUnexpectedError(services_.ui, services_.log, error, "frmCaptureDetails");
        return false;
    }
}

void CaptureDetails::ReadRecord() {
    const CaptureRecord record = ReadCaptureRecord(services_.files).value();
    details_.Captured = record.captured;
    details_.Tree = record.tree;
    details_.OU = record.container;
    details_.AppCount = WholeValue(record.app_count);
    for (std::size_t i = 0; i < details_.Counts.size(); ++i)
        details_.Counts[i] = WholeValue(record.totals[i]);

    caption = "Please confirm details of last Zorvelrun..";
    labData = {details_.Captured, details_.Tree, details_.OU, GroupedOrZero(details_.AppCount)};
    const std::string dataset = services_.files.Path("Databases\\" + DatasetName(details_.Captured));
    switch (ImportStateOf(services_.files, dataset)) {
        case ImportState::kNoDataset:
            break;
        case ImportState::kNotCompleted:
            labWarning = "Note that an earlier import of this Zorvelrun was not completed..";
            break;
        default:
            labWarning = "Note that this Zorvelrun already appears to have been imported..";
    }
    txtComments = "(Please enter your comments about this Zorvelrun)";
}

ImportResult CaptureDetails::BeginImport(ImportDisplay& display) {
    caption = "Importing last Zorvelrun..";
    butOkVisible = false;
    frameStatusVisible = true;
    details_.Description = txtComments;
    const ImportResult result = Import(services_, catalogue_, display).Run(details_);
    closed = true;
    return result;
}

void CaptureDetails::Cancel() {
    if (!frameStatusVisible) closed = true;
}

}  // namespace zorvel
