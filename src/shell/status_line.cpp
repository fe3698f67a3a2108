#include "shell/status_line.h"

#include "shell/formats.h"

namespace zorvel {

StatusLine::StatusLine(UserInterface& ui, const TreeCounts& counts) : ui_(ui), counts_(counts) {}

void StatusLine::SetStatus(StatusPicture picture, std::string& text) {
    if (text.empty()) text = CountsText();
    ui_.ShowStatus(picture, text);
}

void StatusLine::SetStatus(StatusPicture picture, std::string_view text) {
    const std::string counts = text.empty() ? CountsText() : std::string();
    ui_.ShowStatus(picture, text.empty() ? counts : text);
}

std::string StatusLine::CountsText() const {
    std::string text = "Ready. ";
    if (counts_.AppCount == 0) {
        text += "No applications available to Zorvel !";
    } else {
        text += Grouped(counts_.AppCount) + " applications available, ";
        if (counts_.SelectedCount == 0) {
            text += "none selected.";
        } else if (counts_.SelectedCount == counts_.AppCount) {
            text += "all selected.";
        } else {
            text += Grouped(counts_.SelectedCount) + " selected.";
        }
    }
    return text + ' ' + counts_.StatusPrefix;
}

}  // namespace zorvel
