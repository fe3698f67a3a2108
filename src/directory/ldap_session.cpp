#include "directory/ldap_session.h"

#include <ldap.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <filesystem>
#include <iterator>
#include <thread>
#include <utility>

#include "directory/ldif_tree.h"
#include "platform/code_page.h"
#include "platform/error.h"

namespace zorvel {
namespace {

// Where systems keep the certificates that they trust.
constexpr std::array<const char*, 4> kSystemCertificates = {"/etc/ssl/certs/ca-certificates.crt",
                                                            "/etc/pki/tls/certs/ca-bundle.crt",
                                                            "/etc/ssl/ca-bundle.pem", "/etc/ssl/cert.pem"};
constexpr std::chrono::milliseconds kBusyWait{1000};
constexpr std::chrono::milliseconds kSlice{50};

std::string SystemCertificates() {
    for (const char* const path : kSystemCertificates) {
        std::error_code error;
        if (std::filesystem::exists(path, error)) return path;
    }
    return kSystemCertificates.front();
}

const std::vector<std::string>* ValuesOf(const LdapEntry& entry, std::string_view name) {
    for (const LdapAttribute& attribute : entry.attributes) {
        if (EqualIgnoringCase(attribute.name, name)) return &attribute.values;
    }
    return nullptr;
}

bool Holds(const LdapEntry& entry, std::string_view name, std::string_view value) {
    const std::vector<std::string>* const values = ValuesOf(entry, name);
    return values != nullptr && std::find(values->begin(), values->end(), value) != values->end();
}

// The server's words that a page is too large are those of an administrator's limit.
bool IsPageRefused(const LdapAnswer& answer) {
    const bool refused = answer.code == LDAP_UNWILLING_TO_PERFORM ||
                         answer.code == LDAP_ADMINLIMIT_EXCEEDED || answer.code == LDAP_SIZELIMIT_EXCEEDED ||
                         answer.code == LDAP_OTHER;
    return refused && UpperCase(answer.diagnostic).find("PAGE") != std::string::npos;
}

constexpr const char* kWhenLost = " - check that the server runs, and the network";

void AppendReason(std::string& reasons, const std::string& reason) {
    if (!reasons.empty()) reasons += "; ";
    reasons += reason;
}

// The server wants to be asked again a little later.
struct Busy {
    std::string reason;
};

std::string PlainWords(const LdapAnswer& answer) {
    switch (answer.code) {
        case LDAP_SIZELIMIT_EXCEEDED:
        case LDAP_ADMINLIMIT_EXCEEDED:
            return "the server sends no more than a part of its answer - ask the directory's "
                   "administrator to raise the limit of entries for this identity";
        case LDAP_TIMELIMIT_EXCEEDED:
            return "the server took longer than its time limit allows - ask the directory's "
                   "administrator to raise it for this identity";
        case LDAP_BUSY:
        case LDAP_UNAVAILABLE:
            return "the server is busy - try again later";
        default:
            return "the server says: " + (answer.diagnostic.empty()
                                              ? std::string(ldap_err2string(answer.code))
                                              : answer.diagnostic);
    }
}

std::string HostOf(const std::string& url) {
    LDAPURLDesc* parsed = nullptr;
    if (ldap_url_parse(ToUtf8(url).c_str(), &parsed) != LDAP_URL_SUCCESS) return url;
    std::string host = parsed->lud_host != nullptr ? FromUtf8(parsed->lud_host) : url;
    ldap_free_urldesc(parsed);
    return host;
}

}  // namespace

LdapSession::LdapSession(LdapHost& host, std::string tree, LdapSettings settings)
    : host_(host),
      tree_(std::move(tree)),
      settings_(std::move(settings)),
      ca_file_(settings_.ca_file.empty() ? SystemCertificates()
                                         : host_.files.Resolve(settings_.ca_file).string()),
      page_size_(settings_.page_size),
      listings_(settings_.read_ahead > 1 ? static_cast<std::size_t>(settings_.read_ahead) : 0, [this] {
          return std::make_unique<LdapConnection>(settings_, ca_file_, Connection().server().url, *password_,
                                                  host_.ports.wait);
      }) {}

void LdapSession::Close() {
    listings_.Clear();
    connection_.reset();
    password_.reset();
}

LdapConnection& LdapSession::Connection() {
    if (!connection_) Connect();
    return *connection_;
}

const LdapServer& LdapSession::Server() {
    return Connection().server();
}

const LdapSession::Features& LdapSession::features() {
    Connection();
    return features_;
}

// Connects to the first server that takes us.
void LdapSession::Connect() {
    if (!password_)
        password_ = FetchPassword(host_.files, settings_, tree_, host_.ports.ask_password, host_.ports.wait);
    std::string failures;
    for (const std::string& url : settings_.urls) {
        try {
            auto connection =
                std::make_unique<LdapConnection>(settings_, ca_file_, url, *password_, host_.ports.wait);
            features_ = ReadFeatures(*connection);
            connection_ = std::move(connection);
            break;
        } catch (const Error& error) {
            AppendReason(failures, error.detail());
        } catch (const LdapConnectionLost& lost) {
            AppendReason(failures, lost.reason + kWhenLost);
        }
    }
    if (!connection_) {
        password_.reset();  // it may be the reason
        throw Error(errors::kDirectoryUnreadable).With(failures);
    }
    const LdapServer& server = connection_->server();
    host_.log.WriteLog("Connected to '" + server.url + "' as '" + server.identity +
                       "', encryption: " + server.encryption);
}

LdapSession::Features LdapSession::ReadFeatures(LdapConnection& connection) {
    Features features;
    const LdapSearch root{"", LdapScope::kBase, "(objectClass=*)", {"*", "+"}};
    const LdapAnswer answer = connection.Receive(connection.Send(root));
    if (answer.code != LDAP_SUCCESS || answer.entries.empty()) return features;
    const LdapEntry& entry = answer.entries.front();
    features.paged = Holds(entry, "supportedControl", LDAP_CONTROL_PAGEDRESULTS);
    if (const auto* const subschema = ValuesOf(entry, "subschemaSubentry"); subschema != nullptr)
        features.subschema = subschema->front();
    for (const std::string_view name : {"vendorName", "vendorVersion"}) {
        const auto* const values = ValuesOf(entry, name);
        if (values != nullptr && !values->empty()) features.vendor += FromUtf8(values->front()) + " ";
    }
    return features;
}

void LdapSession::Pause() {
    for (std::chrono::milliseconds waited{0}; waited < kBusyWait; waited += kSlice) {
        std::this_thread::sleep_for(kSlice);
        if (host_.ports.wait) host_.ports.wait();
    }
}

// Does `operation`, and once more when the connection was lost or the server is busy.
template <typename Operation>
auto LdapSession::Repeat(Operation operation) {
    try {
        return operation();
    } catch (const LdapConnectionLost& lost) {
        host_.log.WriteLog("WARNING: " + lost.reason + " - connecting again");
        connection_.reset();
    } catch (const Busy& busy) {
        host_.log.WriteLog("WARNING: " + busy.reason + " - asking again");
        Pause();
    }
    try {
        return operation();
    } catch (const LdapConnectionLost& lost) {
        connection_.reset();
        throw Error(errors::kDirectoryUnreadable).With(lost.reason + kWhenLost);
    } catch (const Busy& busy) {
        throw Error(errors::kDirectoryUnreadable).With(busy.reason);
    }
}

bool LdapSession::Check(const LdapAnswer& answer, std::string_view dn) const {
    const auto place = [&] { return connection_->server().url + ", '" + FromUtf8(dn) + "': "; };
    switch (answer.code) {
        case LDAP_SUCCESS:
            return true;
        case LDAP_NO_SUCH_OBJECT:
        case LDAP_REFERRAL:
            return false;
        case LDAP_INSUFFICIENT_ACCESS:
            throw Error(errors::kPermissionDenied).With(place() + "the server does not let us read it");
        case LDAP_BUSY:
        case LDAP_UNAVAILABLE:
            throw Busy{place() + PlainWords(answer)};
        default:
            throw Error(errors::kDirectoryUnreadable).With(place() + PlainWords(answer));
    }
}

void LdapSession::WarnOfReferrals(const std::vector<std::string>& referrals) {
    for (const std::string& url : referrals) {
        const std::string host = HostOf(url);
        if (!told_referrals_.insert(host).second) continue;
        host_.log.WriteWarning("A part of '" + tree_ + "' is on the server '" + host +
                               "', which is not asked - name one that holds the whole tree");
    }
}

SchemaDefinitions LdapSession::ReadDefinitions() {
    SchemaDefinitions definitions;
    Connection();
    if (features_.subschema.empty()) return definitions;
    const std::optional<LdapEntry> entry = Read(features_.subschema, {"attributeTypes", "objectClasses"});
    if (!entry) return definitions;
    if (const auto* const types = ValuesOf(*entry, "attributeTypes")) definitions.attribute_types = *types;
    if (const auto* const classes = ValuesOf(*entry, "objectClasses")) definitions.object_classes = *classes;
    return definitions;
}

const Schema& LdapSession::schema() {
    if (schema_) return *schema_;
    const SchemaDefinitions definitions = ReadDefinitions();
    Schema bundled = LoadBundledSchema(host_.files);
    if (definitions.attribute_types.empty() && definitions.object_classes.empty()) {
        host_.log.WriteWarning("'" + Server().url +
                               "' does not show its schema - the one of this program is used");
        features_.subschema.clear();
        return schema_.emplace(std::move(bundled));
    }
    Schema schema;
    for (const std::string& definition : definitions.attribute_types)
        schema.AddAttributeType(definition, &bundled);
    for (const std::string& definition : definitions.object_classes)
        schema.AddObjectClass(definition, &bundled);
    schema.ResolveSyntaxes();
    return schema_.emplace(std::move(schema));
}

std::optional<LdapEntry> LdapSession::Read(const std::string& dn,
                                           const std::vector<std::string>& attributes) {
    return Repeat([&]() -> std::optional<LdapEntry> {
        LdapConnection& connection = Connection();
        LdapAnswer answer =
            connection.Receive(connection.Send({dn, LdapScope::kBase, "(objectClass=*)", attributes}));
        WarnOfReferrals(answer.referrals);
        if (!Check(answer, dn) || answer.entries.empty()) return std::nullopt;
        return std::move(answer.entries.front());
    });
}

std::vector<std::optional<LdapEntry>> LdapSession::ReadAll(const std::vector<std::string>& dns,
                                                           const std::vector<std::string>& attributes) {
    return Repeat([&] {
        LdapConnection& connection = Connection();
        std::vector<std::optional<LdapEntry>> entries(dns.size());
        std::deque<int> under_way;
        const auto most = static_cast<std::size_t>(settings_.read_ahead);
        std::size_t sent = 0;
        for (std::size_t received = 0; received < dns.size(); ++received) {
            for (; sent < dns.size() && under_way.size() < most; ++sent)
                under_way.push_back(
                    connection.Send({dns[sent], LdapScope::kBase, "(objectClass=*)", attributes}));
            LdapAnswer answer = connection.Receive(under_way.front());
            under_way.pop_front();
            WarnOfReferrals(answer.referrals);
            const bool hidden =
                answer.code == LDAP_INSUFFICIENT_ACCESS || answer.code == LDAP_INVALID_DN_SYNTAX;
            if (hidden || !Check(answer, dns[received]) || answer.entries.empty()) continue;
            entries[received] = std::move(answer.entries.front());
        }
        return entries;
    });
}

std::optional<std::vector<LdapEntry>> LdapSession::List(const std::string& dn, const std::string& filter,
                                                        const std::vector<std::string>& attributes) {
    if (auto ahead = listings_.Take(dn)) return ahead;
    const LdapSearch search{dn, LdapScope::kOneLevel, filter, attributes};
    return Repeat([&] { return ListPages(search); });
}

std::optional<std::vector<LdapEntry>> LdapSession::ListSubtree(const std::string& dn,
                                                               const std::string& filter) {
    const LdapSearch search{dn, LdapScope::kSubtree, filter, {LDAP_NO_ATTRS}};
    return Repeat([&] { return ListPages(search); });
}

void LdapSession::ListAhead(const std::vector<std::string>& dns, const std::string& filter,
                            const std::vector<std::string>& attributes) {
    std::vector<LdapSearch> searches;
    for (const std::string& dn : dns)
        searches.push_back({dn, LdapScope::kOneLevel, filter, attributes});
    listings_.Expect(searches, features_.paged ? page_size_ : 0);
}

std::optional<std::vector<LdapEntry>> LdapSession::ListPages(const LdapSearch& search) {
    LdapConnection& connection = Connection();
    std::vector<LdapEntry> entries;
    std::string cookie;
    bool halved = false;
    do {
        LdapAnswer answer =
            connection.Receive(connection.Send(search, features_.paged ? page_size_ : 0, cookie));
        if (IsPageRefused(answer) && !std::exchange(halved, true) && page_size_ > 1) {
            page_size_ /= 2;
            entries.clear();
            cookie.clear();
            answer = connection.Receive(connection.Send(search, page_size_));
        }
        WarnOfReferrals(answer.referrals);
        if (!Check(answer, search.base)) return std::nullopt;
        std::move(answer.entries.begin(), answer.entries.end(), std::back_inserter(entries));
        cookie = std::move(answer.cookie);
    } while (!cookie.empty());
    return entries;
}

}  // namespace zorvel
