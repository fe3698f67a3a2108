// Opening a connection to a directory server, beside the thread that waits for it.
#pragma once

#include <memory>
#include <string>

#include "directory/ldap_connection.h"
#include "directory/ldap_settings.h"

struct ldap;

namespace zorvel {

struct OpenedLdap {
    ldap* handle = nullptr;  // the caller's to unbind
    std::string encryption;
};

// Connects to `url`, encrypts and binds with `password`. Names are resolved and handshakes made in a thread
// of its own, since libraries wait for both without a chance to do anything else; one that is given up ends
// with its time-outs. Raises error 600 with the URL, the cause and what can be done, and what `wait` raises.
OpenedLdap OpenLdap(const LdapSettings& settings, const std::string& ca_file, const std::string& url,
                    const std::string& password, const WhileWaiting& wait);

}  // namespace zorvel
