// The data source "Zorvel" of ODBC, by which other programs reach the datasets.
#pragma once

#include "platform/files.h"

namespace zorvel {

// Writes odbc.ini in the program folder (unixODBC's format) with the section [Zorvel]; other sections stay.
// Raises an Error when the file cannot be read or written.
void RegisterDataSource(const Files& files);

}  // namespace zorvel
