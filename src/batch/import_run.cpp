#include "batch/import_run.h"

#include "database/capture_details.h"
#include "platform/code_page.h"

namespace zorvel {

ExitStatus ImportLastRun(BatchSession& session, const std::string& comment) {
    MainController& controller = session.controller();
    Catalogue catalogue(*controller.session().MasterConnection);
    CaptureDetails details(controller.services(), catalogue);
    if (!details.Open()) return kFailed;
    details.txtComments = FromUtf8(comment);
    switch (details.BeginImport(session.window())) {
        case ImportResult::kDone:
            return kDone;  // also after an interruption: an import ends by itself
        case ImportResult::kAbandoned:
            return session.Fail("the dataset of this run was kept; --yes replaces it");
        case ImportResult::kFailed:
            break;
    }
    return session.Fail("the import failed");
}

}  // namespace zorvel
