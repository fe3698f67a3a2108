// The stream attributes of an Application object, in the order in which a run reads them.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

#include "analysis/data_files.h"

namespace zorvel {

// The sums that make up an application's fingerprint, in the order in which it shows them.
enum class Signature : std::size_t { kFileCopies, kRegistry, kIni, kMacros, kTextFiles, kApplication };
inline constexpr std::size_t kSignatureCount = 6;

struct StreamRow {
    std::string_view attribute;
    std::string_view label;
    const DataFile* file;                // where its entries go; none for the administrator notes
    std::optional<Signature> signature;  // the sum that its entries feed
};

inline constexpr std::array<StreamRow, 11> kStreamTable = {{
    {"App:Macros", "(Macros)", &data_files::kMacros, Signature::kMacros},
    {"App:Copy Files", "(Copy Files)", &data_files::kCopyFiles, Signature::kFileCopies},
    {"App:Copy Files Always", "(Copy Files Always)", &data_files::kCopyFilesAlways, Signature::kFileCopies},
    {"App:Registry Settings", "(Registry Settings)", &data_files::kRegistrySettings, Signature::kRegistry},
    {"App:Registry Settings Always", "(Registry Settings Always)", &data_files::kRegistrySettingsAlways,
     Signature::kRegistry},
    {"App:INI Settings", "(INI Settings)", &data_files::kINISettings, Signature::kIni},
    {"App:INI Settings Always", "(INI Settings Always)", &data_files::kINISettingsAlways, Signature::kIni},
    {"App:Text Files", "(Text Files)", &data_files::kTextFiles, Signature::kTextFiles},
    {"App:Text Files Always", "(Text Files Always)", &data_files::kTextFilesAlways, Signature::kTextFiles},
    {"App:Environment Settings", "(Environment Settings)", &data_files::kEnvironmentSettings, std::nullopt},
    {"App:Administrator Notes", "(Administrator Notes)", nullptr, std::nullopt},
}};

}  // namespace zorvel
