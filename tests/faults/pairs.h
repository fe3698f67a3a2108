// Two programs at once on one folder.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace zorvel::test {

// What two programs do.
struct Pair {
    std::string name;
    std::vector<std::string> first;
    std::vector<std::string> second;
};
std::vector<Pair> Pairs();

struct PairCounts {
    int both = 0;     // both did their work
    int refused = 0;  // one did, and the other was told who holds the folder
    std::vector<std::string> faults;
};

// Starts a pair `count` times, the second some milliseconds after the first, more each time, and looks at
// what both leave.
PairCounts TryPair(const Pair& pair, int count, const std::filesystem::path& parent);

}  // namespace zorvel::test
