// The entries of a sample application's streams, kind by kind.
#pragma once

#include <cstddef>

#include "sample_streams.h"
#include "stream_builder.h"

namespace zorvel::tools {

// The macros that name an application's folders; they come first.
inline constexpr std::size_t kPathMacros = 3;

// Entries go by their index. Those that are distributed always are others than those that are not.
constexpr std::size_t FirstIndex(bool always) {
    return always ? 18 : 0;
}

// Each adds `entries` entries, among them those that the application's flaws ask for; flawed files and
// registry settings are never among those distributed `always`.
void AddMacros(StreamBuilder& stream, SampleApplication& application, std::size_t entries);
void AddFiles(StreamBuilder& stream, SampleApplication& application, std::size_t entries, bool always);
void AddRegistrySettings(StreamBuilder& stream, SampleApplication& application, std::size_t entries,
                         bool always);
void AddIniSettings(StreamBuilder& stream, SampleApplication& application, std::size_t entries, bool always);
void AddTextChanges(StreamBuilder& stream, SampleApplication& application, std::size_t entries, bool always);
void AddEnvironmentSettings(StreamBuilder& stream, SampleApplication& application, std::size_t entries);

}  // namespace zorvel::tools
