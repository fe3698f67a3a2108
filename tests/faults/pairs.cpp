#include "faults/pairs.h"

#include <chrono>
#include <thread>

#include "faults/trial.h"

namespace zorvel::test {
namespace {

using Words = std::vector<std::string>;

const Words kAnalyse = {"analyse", "--all", "--pace", "0", "--refresh"};
const Words kRun = {"analyse", "--all", "--pace", "0", "--import"};
const Words kImport = {"import"};

// A folder with a dataset, and a run that is not imported yet.
Operation Situation(const Pair& pair) {
    Operation situation;
    situation.name = pair.name;
    situation.command = pair.first;
    situation.analyses = true;
    situation.prepare = [](const AuditFolder& folder) {
        folder.SetTree(3, 3);
        folder.Need(kRun);
        folder.SetTree(4, 5);
        folder.Need(kAnalyse);
    };
    return situation;
}

bool Refused(const Outcome& outcome) {
    return outcome.status != 0 && outcome.errors.find("zorvel-batch") != std::string::npos;
}

}  // namespace

std::vector<Pair> Pairs() {
    const Words read = {"containers", "--refresh"};
    return {{"analyse, analyse", kAnalyse, kAnalyse},
            {"import, import", kImport, kImport},
            {"whole run, whole run", kRun, kRun},
            {"analyse, import", kAnalyse, kImport},
            {"import, compact", kImport, {"compact", "{D}"}},
            {"delete, import", {"delete", "{D}"}, kImport},
            {"read, read", read, read}};
}

PairCounts TryPair(const Pair& pair, int count, const std::filesystem::path& parent) {
    constexpr int kStep = 500;      // microseconds
    constexpr int kMostSteps = 80;  // until the first has ended
    const Reference reference(Situation(pair), parent, "pair");
    PairCounts counts;
    for (int i = 0; i < count; ++i) {
        const AuditFolder folder(parent, "pair.work", reference.folder);
        ProgramRun first = folder.Start(pair.first, "first");
        std::this_thread::sleep_for(std::chrono::microseconds(i % kMostSteps * kStep));
        ProgramRun second = folder.Start(pair.second, "second");
        const Outcome outcomes[] = {first.Wait(), second.Wait()};
        std::vector<std::string> faults;
        const bool both = outcomes[0].status == 0 && outcomes[1].status == 0;
        for (const Outcome& outcome : outcomes) {
            if (outcome.status != 0 && !Refused(outcome)) faults.push_back("refused with: " + outcome.errors);
        }
        if (outcomes[0].status != 0 && outcomes[1].status != 0) faults.emplace_back("neither did its work");
        ++(both ? counts.both : counts.refused);
        CheckFolder(reference, folder, faults);
        for (const std::string& fault : faults)
            counts.faults.push_back(pair.name + ": " + fault);
    }
    return counts;
}

}  // namespace zorvel::test
