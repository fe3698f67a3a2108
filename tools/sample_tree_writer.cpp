#include "sample_tree_writer.h"

#include <algorithm>

#include "ldif_writer.h"
#include "platform/error.h"
#include "sample_company.h"
#include "sample_objects.h"
#include "sample_random.h"

namespace zorvel::tools {
namespace {

// How many applications the containers get: those that are rarely seen one each before all others, as far
// as the applications go; the rest by weight.
class ApplicationShares {
  public:
    ApplicationShares(const Company& company, std::size_t applications) : company_(company) {
        std::size_t singles = 0;
        for (std::size_t i = 0; i < company.containers().size(); ++i) {
            total_weight_ += Weight(i);
            singles += IsRare(i) ? 1 : 0;
        }
        single_ = singles <= applications;
        rest_ = applications - (single_ ? singles : 0);
    }

    // The number of applications of the next container.
    std::size_t Next() {
        const std::size_t before = rest_ * weight_ / total_weight_;
        weight_ += Weight(container_);
        const std::size_t share = rest_ * weight_ / total_weight_ - before;
        return share + (IsRare(container_++) && single_ ? 1 : 0);
    }

  private:
    ContainerKind KindOf(std::size_t container) const { return company_.containers()[container].kind; }
    bool IsRare(std::size_t container) const {
        const ContainerKind kind = KindOf(container);
        return kind == ContainerKind::kArchive || kind == ContainerKind::kLocality ||
               kind == ContainerKind::kTeam;
    }
    std::size_t Weight(std::size_t container) const {
        const ContainerKind kind = KindOf(container);
        if (company_.containers().size() == 1) return 1;
        if (kind == ContainerKind::kSoftware) return 8;
        return kind == ContainerKind::kDepartment ? 1 : 0;
    }

    const Company& company_;
    std::size_t container_ = 0;
    std::size_t weight_ = 0;
    std::size_t total_weight_ = 0;
    std::size_t rest_ = 0;
    bool single_ = false;
};

std::string Comment(const SampleTreeOptions& options) {
    return Concat({"The tree ", options.tree, ", a company that does not exist. Made by\nsample_tree --tree ",
                   options.tree, " --seed ", Number(options.seed), " --containers ",
                   Number(options.containers), " --applications ", Number(options.applications),
                   " --entries ", Number(options.entries), options.addresses ? "" : " --no-addresses"});
}

}  // namespace

void WriteSampleTree(const SampleTreeOptions& options, OutputFile& file) {
    const std::string organization = options.tree.substr(0, options.tree.find("_TREE"));
    if (options.containers == 0 || organization.empty()) throw Error(errors::kInvalidCall);
    const Company company(options.seed, organization, options.containers);
    ApplicationShares shares(company, options.applications);
    LdifWriter ldif(file, Comment(options));
    ApplicationWriter applications(ldif, company, options);
    ApplicationPlace place{};
    for (place.container = 0; place.container < company.containers().size(); ++place.container) {
        WriteContainer(ldif, company, place.container);
        const std::size_t count = shares.Next();
        for (place.ordinal = 0; place.ordinal < count; ++place.ordinal) {
            applications.Write(place);
            ++place.number;
        }
        WriteMembers(ldif, company, place.container, options.seed);
    }
}

}  // namespace zorvel::tools
