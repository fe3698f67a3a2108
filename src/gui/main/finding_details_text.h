// The details of a finding as the Findings page shows them.
#pragma once

#include <QString>

#include "findings/finding_details.h"

namespace zorvel {

// A document for QTextBrowser; what the dataset holds has no meaning in it.
QString FindingDetailsHtml(const FindingDetails& details);

}  // namespace zorvel
