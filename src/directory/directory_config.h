// Directory.toml: the trees that the session sees.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "directory/ldap_settings.h"
#include "platform/error.h"
#include "platform/files.h"

namespace zorvel {

inline constexpr std::string_view kDirectoryConfigFile = "Directory.toml";

struct DirectoryConfig {
    struct Tree {
        std::string name;
        std::string ldif;  // the path text of its LDIF export; empty for a tree that servers hold
        std::optional<LdapSettings> ldap{};  // of a tree that servers hold

        bool operator==(const Tree&) const = default;
    };

    std::optional<std::string> preferred;
    std::vector<Tree> trees;

    bool operator==(const DirectoryConfig&) const = default;
};

// Error 5 of a content at fault. The reason stands alone, too, for whoever has not seen the file.
class DirectoryConfigFault : public Error {
  public:
    DirectoryConfigFault(const Error& error, std::string reason) : Error(error), reason_(std::move(reason)) {}

    const std::string& reason() const noexcept { return reason_; }

  private:
    std::string reason_;
};

// Reads Directory.toml of the program folder. Raises error 53 or another file error, or a
// DirectoryConfigFault, whose detail is "file, line N, column M: " and the reason.
DirectoryConfig ReadDirectoryConfig(const Files& files);

// The trees of `text`, the content of Directory.toml in the program folder of `files`. Raises a
// DirectoryConfigFault as ReadDirectoryConfig does.
DirectoryConfig ParseDirectoryConfig(const Files& files, std::string_view text);

}  // namespace zorvel
