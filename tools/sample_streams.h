// The streams of a sample application: what is distributed with it, entry by entry.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "sample_catalogue.h"
#include "sample_flaws.h"
#include "sample_random.h"

namespace zorvel::tools {

// The streams that hold entries, in the order in which an application has them.
enum class Stream : std::size_t {
    kMacros,
    kCopyFiles,
    kCopyFilesAlways,
    kRegistrySettings,
    kRegistrySettingsAlways,
    kINISettings,
    kINISettingsAlways,
    kTextFiles,
    kTextFilesAlways,
    kEnvironmentSettings
};
inline constexpr std::size_t kStreamCount = 10;
inline constexpr std::array<std::string_view, kStreamCount> kStreamAttributes = {"appMacros",
                                                                                 "appCopyFiles",
                                                                                 "appCopyFilesAlways",
                                                                                 "appRegistrySettings",
                                                                                 "appRegistrySettingsAlways",
                                                                                 "appINISettings",
                                                                                 "appINISettingsAlways",
                                                                                 "appTextFiles",
                                                                                 "appTextFilesAlways",
                                                                                 "appEnvironmentSettings"};

// One application, as far as its streams depend on it.
struct SampleApplication {
    std::size_t number;  // in the tree, counted from 0
    const Product& product;
    std::string server;   // the file server near it
    std::string version;  // "7.0"
    std::string source;   // the folder that its files come from
    std::string target;   // the folder that it is installed in, as its entries name it
    bool captured;        // its entries name both folders by macros
    bool addresses;       // whether its entries hold addresses of machines and web pages
    std::vector<Flaw> flaws;
    Random random;

    bool Has(Flaw flaw) const;
    // The files that its flaws ask for, one entry each: which kind, and as the how-manieth of the kind (from
    // 0).
    struct FlawedFile {
        const FileFlaw* kind;
        std::size_t ordinal;
    };
    std::vector<FlawedFile> FlawedFiles() const;
    // The folder that it is installed in, without macros.
    std::string InstallFolder() const;
};

// How many entries each stream of the application holds when it holds `entries` in all; its flaws can make
// it more.
std::array<std::size_t, kStreamCount> EntryCounts(SampleApplication& application, std::size_t entries);

// The bytes of a stream with `entries` entries.
std::string MakeStream(Stream stream, SampleApplication& application, std::size_t entries);

}  // namespace zorvel::tools
