#include "directory/ldap_connection.h"

#include <ldap.h>

#include <algorithm>
#include <iterator>
#include <utility>

#include "directory/ldap_open.h"
#include "directory/text_map.h"
#include "platform/code_page.h"
#include "platform/error.h"

namespace zorvel {
namespace {

using Time = std::chrono::steady_clock;
constexpr long kSliceMicroseconds = 50'000;

struct FreeBer {
    void operator()(BerElement* element) const { ber_free(element, 0); }
};
struct FreeControls {
    void operator()(LDAPControl** controls) const { ldap_controls_free(controls); }
};
struct FreeControl {
    void operator()(LDAPControl* control) const { ldap_control_free(control); }
};

std::string_view View(const berval& value) {
    return {value.bv_val, value.bv_len};
}

bool IsLost(int code) {
    return code == LDAP_SERVER_DOWN || code == LDAP_CONNECT_ERROR || code == LDAP_ENCODING_ERROR;
}

// True for an address of this machine, which no other can listen to.
bool StaysHere(std::string_view url) {
    if (BeginsIgnoringCase(url, "ldapi:")) return true;
    LDAPURLDesc* parsed = nullptr;
    if (ldap_url_parse(std::string(url).c_str(), &parsed) != LDAP_URL_SUCCESS) return false;
    const std::unique_ptr<LDAPURLDesc, decltype(&ldap_free_urldesc)> owner(parsed, ldap_free_urldesc);
    const std::string_view host = parsed->lud_host != nullptr ? parsed->lud_host : "";
    return host == "::1" || host == "[::1]" || host.starts_with("127.") ||
           EqualIgnoringCase(host, "localhost");
}

void CheckPassword(const LdapSettings& settings, std::string_view url, std::string_view password) {
    if (settings.bind_dn.empty()) return;
    const auto fail = [url](std::string_view why) {
        throw Error(errors::kDirectoryUnreadable).With(std::string(url).append(": ").append(why));
    };
    if (password.empty())
        fail(
            "the password is empty, which servers take for an anonymous bind - give one, or leave bind_dn "
            "out");
    const bool encrypted = settings.start_tls || BeginsIgnoringCase(url, "ldaps:");
    if (!encrypted && !StaysHere(url))
        fail("a password would cross the network for all to read - use ldaps://, or start_tls = true");
}

int ScopeOf(LdapScope scope) {
    switch (scope) {
        case LdapScope::kOneLevel:
            return LDAP_SCOPE_ONELEVEL;
        case LdapScope::kSubtree:
            return LDAP_SCOPE_SUBTREE;
        case LdapScope::kBase:
            break;
    }
    return LDAP_SCOPE_BASE;
}

// Gives attributes that came under several options, such as "cn" and "cn;lang-en", their values together.
void JoinOptions(std::vector<LdapAttribute>& attributes) {
    std::vector<LdapAttribute> joined;
    AnyCaseMap<std::size_t> places;
    for (LdapAttribute& attribute : attributes) {
        const auto [place, added] = places.try_emplace(attribute.name, joined.size());
        if (added) {
            joined.push_back(std::move(attribute));
        } else {
            std::move(attribute.values.begin(), attribute.values.end(),
                      std::back_inserter(joined[place->second].values));
        }
    }
    attributes = std::move(joined);
}

LdapEntry TakeEntry(LDAP* handle, LDAPMessage* message) {
    LdapEntry entry;
    BerElement* element = nullptr;
    berval dn{};
    if (ldap_get_dn_ber(handle, message, &element, &dn) != LDAP_SUCCESS) return entry;
    const std::unique_ptr<BerElement, FreeBer> owner(element);
    entry.dn = View(dn);
    bool options = false;
    for (;;) {
        berval name{};
        BerVarray values = nullptr;
        if (ldap_get_attribute_ber(handle, message, element, &name, &values) != LDAP_SUCCESS) break;
        const std::unique_ptr<berval, decltype(&ber_memfree)> values_owner(values, ber_memfree);
        if (name.bv_val == nullptr) break;
        const std::string_view plain = View(name).substr(0, View(name).find(';'));
        options = options || plain.size() != name.bv_len;
        LdapAttribute& attribute = entry.attributes.emplace_back(LdapAttribute{std::string(plain), {}});
        for (const berval* value = values; value != nullptr && value->bv_val != nullptr; ++value)
            attribute.values.emplace_back(View(*value));
    }
    if (options) JoinOptions(entry.attributes);
    return entry;
}

void TakeReferrals(char** urls, std::vector<std::string>& referrals) {
    for (char** url = urls; url != nullptr && *url != nullptr; ++url)
        referrals.emplace_back(FromUtf8(*url));
    ber_memvfree(reinterpret_cast<void**>(urls));
}

void TakeResult(LDAP* handle, LDAPMessage* message, LdapAnswer& answer) {
    char* diagnostic = nullptr;
    char** referrals = nullptr;
    LDAPControl** controls = nullptr;
    ldap_parse_result(handle, message, &answer.code, nullptr, &diagnostic, &referrals, &controls, 0);
    const std::unique_ptr<LDAPControl*, FreeControls> owner(controls);
    if (diagnostic != nullptr) answer.diagnostic = FromUtf8(diagnostic);
    ldap_memfree(diagnostic);
    TakeReferrals(referrals, answer.referrals);
    LDAPControl* const page = ldap_control_find(LDAP_CONTROL_PAGEDRESULTS, controls, nullptr);
    if (page == nullptr) return;
    ber_int_t estimate = 0;
    berval cookie{};
    if (ldap_parse_pageresponse_control(handle, page, &estimate, &cookie) != LDAP_SUCCESS) return;
    answer.cookie = View(cookie);
    ber_memfree(cookie.bv_val);
}

LdapAnswer TakeAnswer(LDAP* handle, LDAPMessage* messages) {
    LdapAnswer answer;
    for (LDAPMessage* message = ldap_first_message(handle, messages); message != nullptr;
         message = ldap_next_message(handle, message)) {
        switch (ldap_msgtype(message)) {
            case LDAP_RES_SEARCH_ENTRY:
                answer.entries.push_back(TakeEntry(handle, message));
                break;
            case LDAP_RES_SEARCH_REFERENCE: {
                char** urls = nullptr;
                ldap_parse_reference(handle, message, &urls, nullptr, 0);
                TakeReferrals(urls, answer.referrals);
                break;
            }
            default:
                TakeResult(handle, message, answer);
        }
    }
    return answer;
}

}  // namespace

void FreeLdapMessage::operator()(ldapmsg* message) const {
    ldap_msgfree(message);
}

void LdapConnection::Unbind::operator()(ldap* handle) const {
    ldap_unbind_ext(handle, nullptr, nullptr);
}

LdapConnection::LdapConnection(const LdapSettings& settings, const std::string& ca_file,
                               const std::string& url, const std::string& password, WhileWaiting wait)
    : answer_timeout_(settings.answer_timeout), wait_(std::move(wait)) {
    CheckPassword(settings, url, password);
    OpenedLdap opened = OpenLdap(settings, ca_file, url, password, wait_);
    handle_.reset(opened.handle);
    server_ = {url, std::move(opened.encryption), {}};
    AskIdentity(settings);
}

// Who the server takes us for (RFC 4532); not every server says so.
void LdapConnection::AskIdentity(const LdapSettings& settings) {
    server_.identity = settings.bind_dn.empty() ? "anonymous" : FromUtf8(settings.bind_dn);
    int request = 0;
    if (ldap_whoami(handle_.get(), nullptr, nullptr, &request) != LDAP_SUCCESS) return;
    const LdapMessage answer = Await(request);
    berval* identity = nullptr;
    if (ldap_parse_whoami(handle_.get(), answer.get(), &identity) == LDAP_SUCCESS && identity != nullptr) {
        std::string_view said = View(*identity);
        if (said.starts_with("dn:")) said.remove_prefix(3);
        server_.identity = said.empty() ? "anonymous" : FromUtf8(said);
    }
    ber_bvfree(identity);
}

void LdapConnection::RaiseLost(int code) const {
    throw LdapConnectionLost{server_.url + ": the connection was lost (" + ldap_err2string(code) + ")"};
}

int LdapConnection::Send(const LdapSearch& search, int page_size, const std::string& cookie) {
    std::vector<char*> attributes;
    for (const std::string& attribute : search.attributes)
        attributes.push_back(const_cast<char*>(attribute.c_str()));
    attributes.push_back(nullptr);
    std::unique_ptr<LDAPControl, FreeControl> page;
    if (page_size > 0) {
        berval behind{cookie.size(), const_cast<char*>(cookie.data())};
        LDAPControl* made = nullptr;
        ldap_create_page_control(handle_.get(), page_size, &behind, 1, &made);
        page.reset(made);
    }
    LDAPControl* controls[] = {page.get(), nullptr};
    int request = 0;
    const int code = ldap_search_ext(handle_.get(), search.base.c_str(), ScopeOf(search.scope),
                                     search.filter.c_str(), attributes.data(), 0, page ? controls : nullptr,
                                     nullptr, nullptr, LDAP_NO_LIMIT, &request);
    if (code == LDAP_SUCCESS) return request;
    if (IsLost(code)) RaiseLost(code);
    throw Error(errors::kDirectoryUnreadable).With(server_.url + ": " + ldap_err2string(code));
}

std::optional<LdapAnswer> LdapConnection::Poll(int request) {
    const LdapMessage messages = Result(request, 0);
    return messages ? std::optional(TakeAnswer(handle_.get(), messages.get())) : std::nullopt;
}

LdapAnswer LdapConnection::Receive(int request) {
    const LdapMessage messages = Await(request);
    return TakeAnswer(handle_.get(), messages.get());
}

// The messages that answer a request when all are there within some time; else null.
LdapMessage LdapConnection::Result(int request, long microseconds) {
    timeval time{0, microseconds};
    LDAPMessage* taken = nullptr;
    const int kind = ldap_result(handle_.get(), request, LDAP_MSG_ALL, &time, &taken);
    if (kind >= 0) return LdapMessage(taken);
    int code = LDAP_SERVER_DOWN;
    ldap_get_option(handle_.get(), LDAP_OPT_RESULT_CODE, &code);
    RaiseLost(code);
}

// Waits for the messages that answer a request, which is given up when that ends otherwise.
LdapMessage LdapConnection::Await(int request) {
    struct GiveUp {
        LDAP* handle;
        int request;
        ~GiveUp() {
            if (request != 0) ldap_abandon_ext(handle, request, nullptr, nullptr);
        }
    } give_up{handle_.get(), request};
    const Time::time_point end = Time::now() + answer_timeout_;
    for (;;) {
        if (LdapMessage messages = Result(request, kSliceMicroseconds)) {
            give_up.request = 0;
            return messages;
        }
        if (wait_) wait_();
        if (Time::now() < end) continue;
        throw Error(errors::kDirectoryUnreadable)
            .With(server_.url + ": the server did not answer within " +
                  std::to_string(answer_timeout_.count()) +
                  " second(s) - try again later, or raise answer_timeout");
    }
}

}  // namespace zorvel
