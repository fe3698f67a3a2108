// Reads arbitrary text as Accepted.toml: it is refused with its line, or an entry more or fewer leaves all
// others as they are.
#include <string>
#include <string_view>

#include "findings/accepted_findings.h"
#include "fuzz_input.h"

namespace zorvel::fuzz {
namespace {

bool Same(const AcceptedFinding& left, const AcceptedFinding& right) {
    return left.IsLike(right) && left.reason == right.reason && left.until == right.until &&
           left.by == right.by;
}

// The entries are those of `all` without number `left_out`.
void RequireOthers(const AcceptedFindings& entries, const AcceptedFindings& all, std::size_t left_out) {
    Require(entries.size() + 1 == all.size());
    for (std::size_t i = 0; i < entries.size(); ++i)
        Require(Same(entries[i], all[i < left_out ? i : i + 1]));
}

}  // namespace

void TestOneInput(std::string_view input) {
    const std::string name(kInputName);
    const auto all = Readable({errors::kInvalidCall}, [&] { return ParseAccepted(input, name); });
    if (!all) return;
    for (std::size_t i = 0; i < all->size(); ++i) {
        const AcceptedFinding& entry = (*all)[i];
        Require(!entry.code.empty() && !entry.application.empty() && !entry.reason.empty());
        const auto shorter =
            Readable({errors::kInvalidCall}, [&] { return WithoutAccepted(input, entry.line, name); });
        if (shorter) RequireOthers(ParseAccepted(*shorter, name), *all, i);
        const auto longer =
            Readable({errors::kInvalidCall}, [&] { return WithAccepted(input, entry, name); });
        if (!longer) continue;
        const AcceptedFindings more = ParseAccepted(*longer, name);
        RequireOthers(*all, more, all->size());
        Require(Same(more.back(), entry) && longer->starts_with(input));
    }
}

}  // namespace zorvel::fuzz
