// The sample trees as a directory server takes them.
#pragma once

#include <fstream>
#include <stdexcept>
#include <string>
#include <string_view>

namespace zorvel::test {

// The LDIF text of the sample tree `name`: slapadd knows no version line, and a container that the export
// leaves out, as exports of a part do, has to be there.
inline std::string ServedSample(const std::string& name) {
    std::ifstream file(std::string(ZORVEL_SOURCE_DIR) + "/program/Trees/" + name + ".ldif");
    std::string text;
    for (std::string line; std::getline(file, line);) {
        if (line != "version: 1") text += line + '\n';
    }
    if (text.empty()) throw std::runtime_error("no sample tree " + name);
    if (name == "CORP_TREE")
        text += "\ndn: ou=ARCHIVE,o=CORP\nobjectClass: organizationalUnit\nou: ARCHIVE\n";
    return text;
}

}  // namespace zorvel::test
