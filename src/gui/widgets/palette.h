// The colours that mean something, on light and on dark backgrounds.
#pragma once

#include <QBrush>
#include <QPalette>

#include "browser/ou_browser.h"
#include "issues/issue_catalogue.h"

namespace zorvel {

// True when text is lighter than what it stands on.
bool IsDark(const QPalette& palette);

// The text colour of a node in the OU browser; without a style for the view's own colour.
QBrush NodeBrush(NodeColour colour);

// The text colour of a severity.
QBrush SeverityBrush(Severity severity);

// What labBrowser stands on while the browser is filtered.
QPalette FilteredPalette(QPalette palette);

}  // namespace zorvel
