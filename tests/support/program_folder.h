// Fills a test's folder with what the program needs to start: trees, options, rule lists and the master
// catalogue.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "platform/store.h"
#include "support/temp_folder.h"

namespace zorvel::test {

// The bundled schema, as the program folder holds it.
inline void AddSchema(const TempFolder& folder) {
    std::filesystem::copy_file(ZORVEL_SOURCE_DIR "/program/Trees/nds-schema.ldif",
                               folder.path() / "Trees/nds-schema.ldif");
}

// A container and an application of an LDIF file, for building small trees.
inline std::string LdifOrganization(const std::string& name) {
    return "dn: o=" + name + "\nobjectClass: organization\no: " + name + "\n\n";
}
inline std::string LdifUnit(const std::string& name, const std::string& parent_dn) {
    return "dn: ou=" + name + "," + parent_dn + "\nobjectClass: organizationalUnit\nou: " + name + "\n\n";
}
// `attributes` are whole lines.
inline std::string LdifApplication(const std::string& name, const std::string& parent_dn,
                                   const std::string& attributes = {}) {
    return "dn: cn=" + name + "," + parent_dn + "\nobjectClass: appApplication\ncn: " + name + "\n" +
           attributes + "\n";
}

inline std::string Base64(std::string_view bytes) {
    constexpr std::string_view kDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    for (std::size_t at = 0; at < bytes.size(); at += 3) {
        unsigned bits = 0;
        for (std::size_t i = 0; i < 3; ++i) {
            bits = bits << 8 | (at + i < bytes.size() ? static_cast<unsigned char>(bytes[at + i]) : 0U);
        }
        for (std::size_t i = 0; i < 4; ++i) {
            text += at + i <= bytes.size() ? kDigits[bits >> (18 - 6 * i) & 63] : '=';
        }
    }
    return text;
}

// A line of an LDIF file: a stream attribute with its bytes.
inline std::string StreamLine(const std::string& attribute, std::string_view bytes) {
    return attribute + ":: " + Base64(bytes) + "\n";
}

// A program folder with one tree, T1, read from `ldif`.
inline void FillProgramFolder(const TempFolder& folder, std::string_view ldif) {
    AddSchema(folder);
    folder.Write("Directory.toml", "preferred = \"T1\"\n[[tree]]\nname = \"T1\"\nldif = \"Trees/T1.ldif\"\n");
    folder.Write("Trees/T1.ldif", ldif);
    folder.Write("Zorvel.ini", "IgnoreStreamParsingErrors=False\r\nSoundsEnabled=False\r\n");
    folder.Write("RegExclude.dat", "; keys\r\nHKEY_CURRENT_USER\\Software\\Policies\r\n");
    folder.Write("FileIssue.dat", "; files\r\n\r\nthumbs.db\r\n");
    Database(folder.path() / "Databases/ZorvelMaster.mdb", "master", Database::Access::kCreate)
        .Execute("CREATE TABLE Zorvel_CaptureDetails (Captured TEXT)");
}

}  // namespace zorvel::test
