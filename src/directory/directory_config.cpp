#include "directory/directory_config.h"

#include <toml++/toml.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>
#include <utility>

#include "directory/names.h"
#include "platform/code_page.h"

namespace zorvel {
namespace {

// The names of the tree's cache files begin with the tree's name.
constexpr std::size_t kMaxTreeName = 100;
// Bounds of the numbers of a tree that servers hold: seconds, entries a page, searches at once.
constexpr int kLongestWait = 3600;
constexpr int kLargestPage = 100'000;
constexpr int kMostReadAhead = 64;

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
        std::string text = FromUtf8(reason);
        const Error error = Error(errors::kInvalidCall)
                                .With(path_ + ", line " + std::to_string(where.begin.line) + ", column " +
                                      std::to_string(where.begin.column) + ": " + text);
        throw DirectoryConfigFault(error, std::move(text));
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
        DirectoryConfig::Tree tree{Text(name, "name"), {}};
        CheckName(name, tree.name, before);
        const bool live = table.contains("ldap");
        if (live == table.contains("ldif"))
            Fail(table.source(),
                 live ? "The tree has both ldif and ldap" : "The tree has no ldif and no ldap");
        if (live) {
            tree.ldap = TakeServers(table);
        } else {
            tree.ldif = PathOf(table, "ldif", "The path of the LDIF file is empty");
        }
        return tree;
    }

    LdapSettings TakeServers(const toml::table& table) const {
        LdapSettings servers;
        servers.urls = Texts(table, "ldap");
        if (servers.urls.empty()) Fail(Member(table, "ldap").source(), "ldap lists no server");
        if (const toml::node* const node = table.get("start_tls"))
            servers.start_tls = Flag(*node, "start_tls");
        for (std::size_t i = 0; i < servers.urls.size(); ++i)
            CheckUrl(*table.get("ldap"), servers.urls[i], servers.start_tls);
        if (table.contains("base")) servers.bases = Dns(table, "base");
        if (table.contains("bind_dn")) {
            servers.bind_dn = Dn(Member(table, "bind_dn"), "bind_dn");
            if (servers.bind_dn.empty())
                Fail(Member(table, "bind_dn").source(), "bind_dn is empty: leave it out");
        }
        TakePassword(table, servers);
        if (table.contains("ca_file"))
            servers.ca_file = PathOf(table, "ca_file", "The path of ca_file is empty");
        servers.connect_timeout = std::chrono::seconds(Number(table, "connect_timeout", 10, kLongestWait));
        servers.answer_timeout = std::chrono::seconds(Number(table, "answer_timeout", 60, kLongestWait));
        servers.page_size = Number(table, "page_size", servers.page_size, kLargestPage);
        servers.read_ahead = Number(table, "read_ahead", servers.read_ahead, kMostReadAhead);
        return servers;
    }

    void TakePassword(const toml::table& table, LdapSettings& servers) const {
        const bool from_file = table.contains("password_file");
        const bool from_command = table.contains("password_command");
        if (const toml::node* const password = table.get("password"))
            Fail(password->source(),
                 "A password does not belong here: use password_file or password_command");
        if (from_file && from_command)
            Fail(table.source(), "The tree has both password_file and password_command");
        if ((from_file || from_command) && servers.bind_dn.empty())
            Fail(table.source(), "The tree has a password but no bind_dn");
        if (from_file)
            servers.password_file = PathOf(table, "password_file", "The path of password_file is empty");
        if (!from_command) return;
        servers.password_command = Texts(table, "password_command");
        if (servers.password_command.empty() || servers.password_command.front().empty())
            Fail(Member(table, "password_command").source(), "password_command names no program");
    }

    void CheckUrl(const toml::node& node, const std::string& url, bool start_tls) const {
        constexpr std::array<std::string_view, 3> kSchemes = {"ldap://", "ldaps://", "ldapi://"};
        const bool known = std::any_of(kSchemes.begin(), kSchemes.end(), [&](std::string_view scheme) {
            return BeginsIgnoringCase(url, scheme) && url.size() > scheme.size();
        });
        if (!known)
            Fail(node.source(),
                 "'" + url + "' does not begin with ldap://, ldaps:// or ldapi:// and a server");
        if (start_tls && !BeginsIgnoringCase(url, "ldap://"))
            Fail(node.source(), "start_tls goes with ldap:// alone, and not with '" + url + "'");
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

    // A path of the program folder, or an absolute one.
    std::string PathOf(const toml::table& table, std::string_view key, std::string_view empty) const {
        std::string path = Text(Member(table, key), key);
        if (path.empty()) Fail(Member(table, key).source(), empty);
        std::replace(path.begin(), path.end(), '/', '\\');
        return path.front() == '\\' ? path : files_.Path(path);
    }

    std::vector<std::string> Texts(const toml::table& table, std::string_view key) const {
        std::vector<std::string> texts;
        for (const toml::node& node : List(table, key))
            texts.push_back(Text(node, key));
        return texts;
    }

    std::vector<std::string> Dns(const toml::table& table, std::string_view key) const {
        std::vector<std::string> names;
        for (const toml::node& node : List(table, key))
            names.push_back(Dn(node, key));
        if (names.empty()) Fail(Member(table, key).source(), std::string(key).append(" lists nothing"));
        return names;
    }

    const toml::array& List(const toml::table& table, std::string_view key) const {
        const toml::node& node = Member(table, key);
        if (!node.is_array()) Fail(node.source(), std::string(key).append(" is no list of texts"));
        return *node.as_array();
    }

    // A DN as it goes to the server, in UTF-8.
    std::string Dn(const toml::node& node, std::string_view key) const {
        if (!node.is_string()) Fail(node.source(), std::string(key).append(" is no text"));
        std::string dn = node.as_string()->get();
        std::vector<NamingComponent> components;
        if (!ParseDN(dn, components)) Fail(node.source(), "'" + FromUtf8(dn) + "' is no DN");
        return dn;
    }

    bool Flag(const toml::node& node, std::string_view key) const {
        if (!node.is_boolean()) Fail(node.source(), std::string(key).append(" is neither true nor false"));
        return node.as_boolean()->get();
    }

    int Number(const toml::table& table, std::string_view key, int absent, int greatest) const {
        const toml::node* const node = table.get(key);
        if (node == nullptr) return absent;
        const std::int64_t number = node->is_integer() ? node->as_integer()->get() : 0;
        if (number < 1 || number > greatest) {
            Fail(node->source(),
                 std::string(key).append(" is no whole number from 1 to ") + std::to_string(greatest));
        }
        return static_cast<int>(number);
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
