#include "faults/trial.h"

#include <algorithm>
#include <csignal>
#include <stdexcept>

#include "support/temp_folder.h"

namespace zorvel::test {
namespace {

namespace fs = std::filesystem;

const std::vector<std::string> kImport = {"import"};
const std::vector<std::string> kNextRun = {"analyse", "--all", "--pace", "0", "--refresh", "--import"};
const std::vector<std::string> kRepair = {"datasets", "--repair"};
const std::vector<std::string> kCheck = {"datasets", "--check"};

bool IsDataset(const std::string& name) {
    return name.starts_with("Databases/Zorvel_") && name.ends_with(".MDB");
}

// A file of the user's while it is written: nothing tells the next program where such files are.
bool IsSecret(const std::string& name) {
    return name.starts_with(".zorvel-") && name.ends_with(".tmp");
}

void CollectDigests(const FolderState& state, std::set<std::string>& digests) {
    for (const auto& [name, digest] : state.datasets)
        digests.insert(digest);
    digests.erase(kNotCompleted);
}

std::set<std::string> Digests(const FolderState& state) {
    std::set<std::string> digests;
    for (const auto& [name, digest] : state.datasets)
        digests.insert(digest);
    return digests;
}

class Trial {
  public:
    Trial(const Reference& reference, const AuditFolder& folder, std::vector<std::string>& faults)
        : reference_(reference), folder_(folder), faults_(faults) {}

    void CheckOutcome(const Outcome& outcome, bool killed) {
        if (killed) return Expect(outcome.status == -SIGKILL, "it was not killed");
        if (outcome.status != 0) return Expect(!outcome.errors.empty(), "it failed without a word");
        const FolderState state = folder_.State();
        // Without caches the tree was read all the same; then that is told.
        Expect(state.tree == reference_.after.tree || !outcome.errors.empty(),
               "it succeeded with another tree");
        Expect(state.files == reference_.after.files, "it succeeded with other files");
        Expect(Digests(state) == Digests(reference_.after), "it succeeded with other datasets");
    }

    void CheckLeftOvers() {
        const FolderState state = folder_.State();
        Expect(state.tree == reference_.before.tree || state.tree == reference_.after.tree,
               "the tree is neither the old nor the new");
        for (const auto& [name, bytes] : reference_.after.files)
            CheckFile(name, state);
        CheckDatasets(state);
        const std::string pdf = ReadFile(folder_.path() / "Issues.pdf");
        Expect(pdf.empty() ? !fs::exists(folder_.path() / "Issues.pdf") : pdf.ends_with("%%EOF\n"),
               "half a PDF");
    }

    // What was whole before and is meant to stay can be had again without the run that was imported.
    void CheckRepair() {
        if (reference_.before.datasets.empty()) return;
        const std::string name = folder_.path().filename().string() + ".repaired";
        const AuditFolder repaired(folder_.path().parent_path(), name, folder_);
        repaired.Run(kRepair);
        const FolderState state = repaired.State();
        for (const auto& [dataset, digest] : reference_.before.datasets) {
            if (!reference_.after.datasets.contains(dataset)) continue;
            const auto found = state.datasets.find(dataset);
            Expect(found != state.datasets.end() && found->second != kNotCompleted,
                   dataset + " is lost for good");
        }
    }

    void CheckNextSteps() {
        const Outcome imported = folder_.Run(kImport);
        const bool must_succeed = reference_.has_run && !reference_.operation.analyses;
        Expect(imported.status == 0 || !must_succeed, "the run cannot be imported: " + imported.errors);
        Expect(imported.status == 0 || !imported.errors.empty(), "the import failed without a word");
        CheckDatasets(folder_.State());

        folder_.Need(kNextRun);
        folder_.Run(kRepair);
        const FolderState state = folder_.State();
        Expect(state.tree == reference_.final.tree, "the next run reads another tree");
        Expect(reference_.next_runs.contains(state.datasets.rbegin()->second), "the next run is another one");
        for (const auto& [name, digest] : state.datasets)
            Expect(digest != kNotCompleted || Named(name), name + " is not completed, and nobody says so");
        for (const std::string& name : folder_.AllFiles()) {
            Expect(IsDataset(name) || IsSecret(name) || reference_.names.contains(name),
                   "left behind: " + name);
        }
    }

  private:
    void Expect(bool holds, const std::string& fault) {
        if (!holds) faults_.push_back(fault);
    }
    // Whether the check of the datasets names a file.
    bool Named(const std::string& name) const {
        return folder_.Run(kCheck).output.find('\t' + name) != std::string::npos;
    }
    void CheckFile(const std::string& name, const FolderState& state) {
        const auto found = state.files.find(name);
        const auto old = reference_.before.files.find(name);
        if (found == state.files.end()) {
            return Expect(old == reference_.before.files.end(), name + " is lost");
        }
        Expect((old != reference_.before.files.end() && found->second == old->second) ||
                   found->second == reference_.after.files.at(name),
               name + " is neither the old nor the new");
    }
    void CheckDatasets(const FolderState& state) {
        for (const auto& [name, digest] : state.datasets) {
            Expect(
                digest == kNotCompleted ? Named(name) : reference_.digests.contains(digest),
                name + (digest == kNotCompleted ? " is not completed, and nobody says so" : " is no run's"));
        }
        for (const auto& [name, digest] : reference_.before.datasets) {
            const bool stays = reference_.after.datasets.contains(name);
            Expect(!stays || state.datasets.contains(name) || Named(name), name + " is lost");
        }
        // A journal is gone when its dataset was opened.
        const std::string check = folder_.Run(kCheck).output;
        for (const std::string& name : folder_.DatasetFiles()) {
            Expect(state.datasets.contains(name) || check.find('\t' + name) != std::string::npos,
                   name + " is left, and nobody says so");
        }
    }

    const Reference& reference_;
    const AuditFolder& folder_;
    std::vector<std::string>& faults_;
};

}  // namespace

Reference::Reference(const Operation& an_operation, const fs::path& parent, const std::string& name)
    : operation(an_operation), folder(parent, name) {
    operation.prepare(folder);
    const AuditFolder untouched(parent, name + ".before", folder);
    before = untouched.State();
    CollectDigests(before, digests);
    has_run = untouched.Run(kImport).status == 0;
    CollectDigests(untouched.State(), digests);
    untouched.Need(kNextRun);
    next_runs.insert(untouched.State().datasets.rbegin()->second);

    const AuditFolder changed(parent, name + ".after", folder);
    const Outcome outcome = changed.Run(operation.command, "count 0");
    if (outcome.status != 0) throw std::runtime_error(operation.name + " fails: " + outcome.errors);
    calls = std::stol(outcome.hit);
    after = changed.State();
    changed.Run(kImport);
    CollectDigests(changed.State(), digests);
    changed.Need(kNextRun);
    changed.Need(kRepair);
    final = changed.State();
    next_runs.insert(final.datasets.rbegin()->second);
    CollectDigests(final, digests);
    for (const std::string& file : changed.AllFiles())
        names.insert(file);
}

void CheckFolder(const Reference& reference, const AuditFolder& folder, std::vector<std::string>& faults) {
    try {
        Trial trial(reference, folder, faults);
        trial.CheckLeftOvers();
        trial.CheckRepair();
        trial.CheckNextSteps();
    } catch (const std::exception& error) {
        faults.emplace_back(error.what());
    }
}

std::vector<std::string> TryFault(const Reference& reference, const std::string& fault,
                                  const fs::path& parent, const std::string& name, std::string& hit) {
    const AuditFolder folder(parent, name, reference.folder);
    const Outcome outcome = folder.Run(reference.operation.command, fault);
    hit = outcome.hit;
    std::vector<std::string> faults;
    try {
        const bool killed = fault.starts_with("kill");
        if (!killed || !hit.empty()) Trial(reference, folder, faults).CheckOutcome(outcome, killed);
    } catch (const std::exception& error) {
        faults.emplace_back(error.what());
    }
    CheckFolder(reference, folder, faults);
    return faults;
}

}  // namespace zorvel::test
