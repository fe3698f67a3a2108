#include "find/engine_failure.h"

#include <string>

#include "shell/report_error.h"

namespace zorvel {

void OfferEngineDownload(UserInterface& ui, const Error& error, std::string_view procedure) {
    std::string question = "Error" + ErrorText(error) + " occurred during ";
    question += procedure;
    question +=
        " - this error may be due to your Windows Scripting Host system files being out of date - would you "
        "like to "
        "visit the Microsoft Windows Script download page to get the latest version for your Operating "
        "System?";
    if (ui.Ask(std::move(question), MessageIcon::kExclamation, Answer::kNo))
        ui.OpenDocument(kEngineDownloadPage);
}

}  // namespace zorvel
