// Reads arbitrary text as Directory.toml: it is refused with line and column, or its trees have names that
// can name files, and read the same when they are written again.
#include <algorithm>
#include <set>
#include <string>
#include <string_view>

#include "directory/directory_config.h"
#include "fuzz_input.h"
#include "platform/code_page.h"
#include "platform/hex.h"

namespace zorvel::fuzz {
namespace {

// A text of the code page as a string of TOML.
std::string Toml(std::string_view text) {
    std::string toml = "\"";
    for (const char character : ToUtf8(text)) {
        const auto code = static_cast<unsigned char>(character);
        if (code < 0x20 || code == 0x7F || character == '"' || character == '\\') {
            toml += "\\u00";
            AppendHex(toml, code);
        } else {
            toml += character;
        }
    }
    return toml + '"';
}

std::string TextOf(const DirectoryConfig& config, std::string_view program_folder) {
    std::string text;
    if (config.preferred) text += "preferred = " + Toml(*config.preferred) + '\n';
    for (const DirectoryConfig::Tree& tree : config.trees) {
        text += "[[tree]]\nname = " + Toml(tree.name) + "\nldif = ";
        text += Toml(std::string_view(tree.ldif).substr(program_folder.size() + 1)) + '\n';
    }
    return text;
}

}  // namespace

void TestOneInput(std::string_view input) {
    static const Files files(".");
    const auto config = Readable({errors::kInvalidCall}, [&] { return ParseDirectoryConfig(files, input); });
    if (!config) return;
    std::set<std::string> names;
    for (const DirectoryConfig::Tree& tree : config->trees) {
        Require(!tree.name.empty() && tree.name.size() <= 100);
        Require(tree.name.find_first_of("/\\\r\n") == std::string::npos);
        Require(names.insert(UpperCase(tree.name)).second);
        Require(tree.ldif.size() > files.Path("").size() && tree.ldif.starts_with(files.Path("")));
        Require(tree.ldif.find('/', files.Path("").size()) == std::string::npos);
    }
    const std::string text = TextOf(*config, files.ProgramFolder());
    Require(TextOf(ParseDirectoryConfig(files, text), files.ProgramFolder()) == text);
}

}  // namespace zorvel::fuzz
