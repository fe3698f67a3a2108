// What the tree's cache files and the saved selections have in common: a heading, a line with date and count,
// one record a line.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "browser/tree_lists.h"
#include "platform/clock.h"

namespace zorvel {

// The head of such a file: `heading`, and the date of `today` with `count`; two lines.
std::string CacheHead(std::string_view heading, const DateTime& today, std::size_t count);

// The record of one container: its counts and its texts, each quoted as it stands; a line.
std::string ContainerLine(const OURecord& container);

// The record of one application: its name and its container, each quoted as it stands; a line.
std::string ApplicationLine(const AppRecord& application);

// `text` as one line: each line break becomes a blank.
std::string OneLine(std::string_view text);

}  // namespace zorvel
