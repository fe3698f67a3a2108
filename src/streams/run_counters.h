// What a run counts, for the current application and for the whole run.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace zorvel {

// The counters, in the order in which they are shown and written.
enum class Counter : std::size_t { kFiles, kIni, kText, kMacros, kRegistry, kIssues };
inline constexpr std::size_t kCounterCount = 6;

struct RunCounters {
    using Values = std::array<std::int32_t, kCounterCount>;
    Values application{};
    Values run{};

    // Adds one to both counters of a pair.
    void Add(Counter counter) {
        ++application[static_cast<std::size_t>(counter)];
        ++run[static_cast<std::size_t>(counter)];
    }
    std::int32_t OfApplication(Counter counter) const {
        return application[static_cast<std::size_t>(counter)];
    }
    std::int32_t OfRun(Counter counter) const { return run[static_cast<std::size_t>(counter)]; }
};

}  // namespace zorvel
