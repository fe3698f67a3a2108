// A dataset that makes room for a new import of its run lies beside it until that import is completed.
#pragma once

#include <string>
#include <string_view>

#include "platform/files.h"

namespace zorvel {

inline constexpr std::string_view kSetAsideEnd = ".previous";

// Where the dataset `path` lies when it is set aside.
std::string SetAsidePath(std::string_view path);

// Sets the dataset `path` aside. One that lies there already, whole, is not given up for one whose import was
// not completed: that one is deleted. Raises 0x80004005 when another program uses the dataset, or 53, 70
// or 75.
void SetAside(const Files& files, std::string_view path);

// Puts the dataset that was set aside in the place of `path`. Raises what SetAside raises.
void PutBack(const Files& files, std::string_view path);

// Deletes the dataset that was set aside for `path`, if there is one. Raises 70.
void RemoveSetAside(const Files& files, std::string_view path);

}  // namespace zorvel
