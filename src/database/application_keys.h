// Finds the keys of applications that the attribute file has brought into a dataset.
#pragma once

#include <array>
#include <string>

#include "platform/store.h"

namespace zorvel {

// The texts by which an application's row is found: its own name and its container's, each cut to its column.
// A line break in a name is one LF, however it is spelled: the files of comma rows hold names as they are,
// the others hold them so.
std::array<std::string, 2> ApplicationRow(const std::string& full_name);

class ApplicationKeys {
  public:
    explicit ApplicationKeys(const Database& dataset);

    // The key of the application `full_name`, as decimal text, until the next call; null when it has no row.
    // The store is asked only when the name differs from that of the call before.
    const std::string* Find(const std::string& full_name);

  private:
    Command find_;
    std::string full_name_;
    std::string key_;  // empty before the first look-up
};

}  // namespace zorvel
