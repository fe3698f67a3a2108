#include "directory/open_directory.h"

#include <utility>

#include "directory/ldap_source.h"
#include "directory/ldif_source.h"

namespace zorvel {

std::unique_ptr<TreeDirectory> OpenDirectory(const Files& files, Log& log, const LdapPorts& ports) {
    const auto host = std::make_shared<LdapHost>(LdapHost{files, log, ports});
    return std::make_unique<TreeDirectory>(
        files, log, [host](DirectoryConfig::Tree tree) -> std::unique_ptr<TreeSource> {
            if (!tree.ldap)
                return std::make_unique<LdifSource>(host->files, std::move(tree.name), std::move(tree.ldif));
            return std::make_unique<LdapSource>(*host, std::move(tree.name), *std::move(tree.ldap));
        });
}

}  // namespace zorvel
