// Findings as lines for a terminal or a script.
#pragma once

#include "findings/finding_list.h"

namespace zorvel {

// A line a finding: severity, code, full name, where, target, source, reach and state, TAB between two. The
// last line has the counts. Raises the file's errors, and Interrupted when `ask` says so.
void WriteFindingLines(const FindingList& list, OutputFile& file, const AskInterrupted& ask);

}  // namespace zorvel
