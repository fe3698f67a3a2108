// What the program reads and writes are ordinary files: from a pipe, a socket or a device it could wait for
// ever.
#pragma once

#include <string>

#include "platform/error.h"

namespace zorvel {

// True when an open descriptor is that of an ordinary file.
bool IsOrdinaryFile(int descriptor);

// The error (number 75) of something else in the place of a file; `name` is what errors call it.
Error NoOrdinaryFile(const std::string& name);

}  // namespace zorvel
