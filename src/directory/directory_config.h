// Directory.toml: the trees that the session sees.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "directory/ldap_settings.h"
#include "platform/files.h"

namespace zorvel {

inline constexpr std::string_view kDirectoryConfigFile = "Directory.toml";

struct DirectoryConfig {
    struct Tree {
        std::string name;
        std::string ldif;  // the path text of its LDIF export; empty for a tree that servers hold
        std::optional<LdapSettings> ldap{};  // of a tree that servers hold
    };

    std::optional<std::string> preferred;
    std::vector<Tree> trees;
};

// Reads Directory.toml of the program folder. Raises error 53 or another file error, or error 5 when its
// content is at fault; the detail is "file, line N, column M: " and the reason.
DirectoryConfig ReadDirectoryConfig(const Files& files);

// The trees of `text`, the content of Directory.toml in the program folder of `files`. Raises error 5 as
// ReadDirectoryConfig does.
DirectoryConfig ParseDirectoryConfig(const Files& files, std::string_view text);

}  // namespace zorvel
