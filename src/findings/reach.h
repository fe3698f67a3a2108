// Whom an application reaches through its associations.
#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>

#include "platform/store.h"

namespace zorvel {

// The distinct users (members of groups among them), workstations and containers of an application. A dataset
// does not hold who is below a container.
struct Reach {
    std::int64_t users = 0;
    std::int64_t workstations = 0;
    std::int64_t containers = 0;

    bool operator==(const Reach&) const = default;
};

// "1,204 users, 1 workstation, container", "2 containers", or "nobody".
std::string ReachText(const Reach& reach);

// True when `left` reaches further. Containers come first: they reach whoever is in them, now and later.
bool ReachesFurther(const Reach& left, const Reach& right);

// The reach of each application of a dataset that is associated, by its key. Names are compared without
// regard to case. Raises 0x80004005.
std::unordered_map<std::int64_t, Reach> ReadReach(const Database& dataset);

}  // namespace zorvel
