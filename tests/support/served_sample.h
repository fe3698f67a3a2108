// Generated trees as a directory server takes them.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "support/temp_folder.h"

namespace zorvel::test {

// The text of a generated export: slapadd knows no version line, and a container that large exports leave
// out, as those of a part do, has to be there.
inline std::string Servable(std::string ldif) {
    constexpr std::string_view kVersion = "version: 1\n";
    if (const std::size_t at = ldif.find(kVersion); at != std::string::npos) ldif.erase(at, kVersion.size());
    constexpr std::string_view kArchive = "ou=ARCHIVE,o=";
    if (const std::size_t at = ldif.find(kArchive); at != std::string::npos) {
        const std::string dn = ldif.substr(at, ldif.find_first_of("#\n", at) - at);
        ldif += "\ndn: " + dn + "\nobjectClass: organizationalUnit\nou: ARCHIVE\n";
    }
    return ldif;
}

inline std::string ServedSample(const std::string& name) {
    return Servable(ReadFile(std::filesystem::path(ZORVEL_SOURCE_DIR) / "program/Trees" / (name + ".ldif")));
}

}  // namespace zorvel::test
