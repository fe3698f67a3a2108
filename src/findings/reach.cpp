#include "findings/reach.h"

#include <algorithm>
#include <string_view>
#include <tuple>
#include <unordered_set>

#include "platform/code_page.h"
#include "shell/formats.h"

namespace zorvel {
namespace {

std::string Counted(std::int64_t count, const std::string& one) {
    return GroupedOrZero(count) + ' ' + one + (count == 1 ? "" : "s");
}

// The distinct names among those of one application after the other.
class DistinctNames {
  public:
    void Begin() { seen_.clear(); }
    // 1 for a name that comes for the first time, else 0.
    int Add(std::string& name) {
        MakeUpperCase(name);
        return seen_.insert(name).second ? 1 : 0;
    }

  private:
    std::unordered_set<std::string> seen_;
};

// Two lines stand for a workstation: its own name, which others may have as well, and its full name.
std::int64_t CountWorkstations(std::string_view lines, DistinctNames& names) {
    names.Begin();
    std::int64_t count = 0;
    std::string name;
    for (bool full = false; !lines.empty(); full = !full) {
        const std::size_t end = std::min(lines.find('\n'), lines.size());
        if (full) {
            name = lines.substr(0, end);
            count += names.Add(name);
        }
        lines.remove_prefix(std::min(end + 1, lines.size()));
    }
    return count;
}

}  // namespace

std::string ReachText(const Reach& reach) {
    std::string text;
    const auto add = [&text](const std::string& part) { text += (text.empty() ? "" : ", ") + part; };
    if (reach.users > 0) add(Counted(reach.users, "user"));
    if (reach.workstations > 0) add(Counted(reach.workstations, "workstation"));
    if (reach.containers == 1) add("container");
    if (reach.containers > 1) add(Counted(reach.containers, "container"));
    return text.empty() ? "nobody" : text;
}

bool ReachesFurther(const Reach& left, const Reach& right) {
    const auto weight = [](const Reach& reach) {
        return std::tuple(reach.containers > 0, reach.users + reach.workstations, reach.containers);
    };
    return weight(left) > weight(right);
}

std::unordered_map<std::int64_t, Reach> ReadReach(const Database& dataset) {
    std::unordered_map<std::int64_t, Reach> reach;
    DistinctNames users;
    DistinctNames containers;
    std::string name;
    {
        Rows rows = dataset.Query(
            "SELECT AppUniqueRef,AssociationType,FullUserID,FullAssociation FROM Zorvel_Associations "
            "WHERE AssociationType IN ('User','Group','OU') ORDER BY AppUniqueRef");
        std::int64_t application = 0;
        for (bool first = true; rows.Next(); first = false) {
            const std::int64_t key = rows.Number(0);
            if (first || key != application) {
                users.Begin();
                containers.Begin();
                application = key;
            }
            rows.Read(1, name);
            const bool container = name == "OU";
            rows.Read(container ? 3 : 2, name);
            if (container) {
                reach[key].containers += containers.Add(name);
            } else {
                reach[key].users += users.Add(name);
            }
        }
    }
    Rows rows =
        dataset.Query("SELECT AppUniqueRef,AssocByWS FROM Zorvel_AppAssociations WHERE AssocByWS<>''");
    while (rows.Next()) {
        rows.Read(1, name);
        reach[rows.Number(0)].workstations += CountWorkstations(name, users);
    }
    return reach;
}

}  // namespace zorvel
