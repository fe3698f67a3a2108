// The dialog that confirms the import of the last run, `frmCaptureDetails`.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "database/catalogue.h"
#include "database/import.h"
#include "shell/services.h"

namespace zorvel {

class CaptureDetails {
  public:
    CaptureDetails(Services& services, Catalogue& catalogue);

    // Reads the record of the last run into the dialog; false, after telling the user why, when there is none
    // or it cannot be read: then there is no dialog.
    bool Open();

    // "Begin Import": imports the run with the comment in txtComments and closes the dialog, whatever the
    // outcome. Status and progress go to `display`.
    ImportResult BeginImport(ImportDisplay& display);

    // "Cancel" and the close box: closes the dialog while it waits to be confirmed. An import that runs goes
    // on.
    void Cancel();

    // What the dialog shows.
    std::string caption;
    std::array<std::string, 4> labData;  // "Last Zorvelrun:", "Tree:", "OU:", "Apps Zorvelled:"
    std::string labWarning;              // empty: not shown
    std::string txtComments;             // selected as a whole at first
    bool butOkVisible = true;
    bool frameStatusVisible = false;
    bool closed = false;

  private:
    void ReadRecord();

    Services& services_;
    Catalogue& catalogue_;
    CatalogueRow details_;
};

}  // namespace zorvel
