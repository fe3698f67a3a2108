#include "directory/directory_config.h"

#include <toml++/toml.h>

#include <algorithm>

#include "platform/code_page.h"
#include "platform/error.h"

namespace zorvel {
namespace {

// The names of the tree's cache files begin with the tree's name.
constexpr std::size_t kMaxTreeName = 100;

class ConfigReader {
  public:
    explicit ConfigReader(const Files& files) : files_(files), path_(files.Path(kDirectoryConfigFile)) {}

    DirectoryConfig Read(std::string_view text) const {
        try {
            const toml::table document = toml::parse(text);
            return Take(document);
        } catch (const toml::parse_error& error) {
            Fail(error.source(), error.description());
        }
    }

  private:
    [[noreturn]] void Fail(const toml::source_region& where, std::string_view reason) const {
        throw Error(errors::kInvalidCall)
            .With(path_ + ", line " + std::to_string(where.begin.line) + ", column " +
                  std::to_string(where.begin.column) + ": " + FromUtf8(reason));
    }

    DirectoryConfig Take(const toml::table& document) const {
        DirectoryConfig config;
        if (const toml::node* const preferred = document.get("preferred")) {
            config.preferred = Text(*preferred, "preferred");
        }
        const toml::node* const trees = document.get("tree");
        if (trees == nullptr) return config;
        if (!trees->is_array()) Fail(trees->source(), "\"tree\" is no list of tables: write [[tree]]");
        for (const toml::node& node : *trees->as_array()) {
            if (!node.is_table()) Fail(node.source(), "A tree is a table: write [[tree]]");
            config.trees.push_back(TakeTree(*node.as_table(), config.trees));
        }
        return config;
    }

    DirectoryConfig::Tree TakeTree(const toml::table& table,
                                   const std::vector<DirectoryConfig::Tree>& before) const {
        const toml::node& name = Member(table, "name");
        DirectoryConfig::Tree tree{Text(name, "name"), Text(Member(table, "ldif"), "ldif")};
        CheckName(name, tree.name, before);
        std::replace(tree.ldif.begin(), tree.ldif.end(), '/', '\\');
        if (tree.ldif.empty()) Fail(Member(table, "ldif").source(), "The path of the LDIF file is empty");
        tree.ldif = files_.Path(tree.ldif);
        return tree;
    }

    void CheckName(const toml::node& node, std::string_view name,
                   const std::vector<DirectoryConfig::Tree>& before) const {
        if (name.empty()) Fail(node.source(), "The name of the tree is empty");
        if (name.size() > kMaxTreeName) {
            Fail(node.source(),
                 "The name of the tree is longer than " + std::to_string(kMaxTreeName) + " characters");
        }
        const auto forbidden = [](char character) {
            const auto code = static_cast<unsigned char>(character);
            return code < 0x20 || code == 0x7F || character == '/' || character == '\\';
        };
        if (std::any_of(name.begin(), name.end(), forbidden)) {
            Fail(node.source(), R"(The name of the tree holds "/", "\" or a control character)");
        }
        const auto same = [name](const DirectoryConfig::Tree& other) {
            return EqualIgnoringCase(other.name, name);
        };
        if (std::any_of(before.begin(), before.end(), same))
            Fail(node.source(), "Another tree has the same name");
    }

    const toml::node& Member(const toml::table& table, std::string_view key) const {
        const toml::node* const node = table.get(key);
        if (node == nullptr) Fail(table.source(), std::string("The tree has no ").append(key));
        return *node;
    }

    std::string Text(const toml::node& node, std::string_view key) const {
        if (!node.is_string()) Fail(node.source(), std::string(key).append(" is no text"));
        return FromUtf8(node.as_string()->get());
    }

    const Files& files_;
    std::string path_;
};

}  // namespace

DirectoryConfig ReadDirectoryConfig(const Files& files) {
    return ParseDirectoryConfig(files, files.Read(files.Path(kDirectoryConfigFile)));
}

DirectoryConfig ParseDirectoryConfig(const Files& files, std::string_view text) {
    return ConfigReader(files).Read(text);
}

}  // namespace zorvel
