// The import of the last run, as the commands of zorvel-batch start it.
#pragma once

#include <string>

#include "batch/batch_session.h"

namespace zorvel {

// Imports the last run under `comment` (UTF-8) into a dataset of its own.
ExitStatus ImportLastRun(BatchSession& session, const std::string& comment);

}  // namespace zorvel
