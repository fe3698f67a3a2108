#include "directory/ldap_listings.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "platform/error.h"

namespace zorvel {
namespace {

// Listings that are kept until they are asked for; bounds the memory of a walk.
constexpr std::size_t kMostReady = 256;
constexpr int kSuccess = 0;  // the result code, RFC 4511

}  // namespace

LdapListings::LdapListings(std::size_t lanes, Connect connect) : most_(lanes), connect_(std::move(connect)) {}

void LdapListings::Clear() {
    expected_.clear();
    wanted_.clear();
    lanes_.clear();
    ready_.clear();
    refused_ = false;
}

void LdapListings::Expect(const std::vector<LdapSearch>& searches, int page_size) {
    page_size_ = page_size;
    expected_.insert(expected_.begin(), searches.begin(), searches.end());
    for (const LdapSearch& search : searches)
        wanted_.insert(search.base);
    Start();
}

void LdapListings::Begin(Lane& lane, const std::string& cookie) {
    lane.request = lane.connection->Send(lane.search, page_size_, cookie);
}

// Puts what is expected on the lanes that are free.
void LdapListings::Start() {
    while (!expected_.empty() && ready_.size() < kMostReady) {
        if (wanted_.find(expected_.front().base) == wanted_.end()) {
            expected_.pop_front();
            continue;
        }
        auto lane =
            std::find_if(lanes_.begin(), lanes_.end(), [](const Lane& other) { return other.request == 0; });
        try {
            if (lane == lanes_.end()) {
                if (refused_ || lanes_.size() == most_) return;
                lanes_.push_back({connect_(), {}, 0, {}});
                lane = std::prev(lanes_.end());
            }
            lane->search = expected_.front();
            Begin(*lane, {});
            wanted_.erase(lane->search.base);
            expected_.pop_front();
        } catch (const LdapConnectionLost&) {
            lanes_.erase(lane);
            refused_ = true;
        } catch (const Error&) {
            refused_ = true;
            return;
        }
    }
}

bool LdapListings::Advance(Lane& lane, bool wait) {
    try {
        for (;;) {
            std::optional<LdapAnswer> answer =
                wait ? lane.connection->Receive(lane.request) : lane.connection->Poll(lane.request);
            if (!answer) return true;
            lane.request = 0;
            if (answer->code != kSuccess || !answer->referrals.empty()) return true;
            std::move(answer->entries.begin(), answer->entries.end(), std::back_inserter(lane.entries));
            if (answer->cookie.empty()) {
                ready_.insert_or_assign(lane.search.base, std::exchange(lane.entries, {}));
                return true;
            }
            Begin(lane, answer->cookie);
        }
    } catch (const LdapConnectionLost&) {
        return false;
    }
}

std::optional<std::vector<LdapEntry>> LdapListings::Take(const std::string& dn) {
    wanted_.erase(dn);
    for (std::size_t i = 0; i < lanes_.size();) {
        Lane& lane = lanes_[i];
        const bool wanted = lane.request != 0 && lane.search.base == dn;
        const bool stands = lane.request == 0 || Advance(lane, wanted);
        if (stands && lane.request == 0) lane.entries.clear();
        if (stands) {
            ++i;
        } else {
            lanes_.erase(lanes_.begin() + static_cast<std::ptrdiff_t>(i));
        }
    }
    Start();
    auto found = ready_.extract(dn);
    if (found.empty()) return std::nullopt;
    return std::move(found.mapped());
}

}  // namespace zorvel
