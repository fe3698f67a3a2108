// Kills zorvel-batch at each call that changes a file, lets each of them fail, fills the disk at each, and
// starts two programs at once; behind each it looks whether anything is lost, half or silent.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <atomic>
#include <cstdio>
#include <iostream>
#include <map>
#include <mutex>
#include <random>
#include <thread>

#include "faults/pairs.h"
#include "faults/trial.h"
#include "support/temp_folder.h"

namespace zorvel::test {
namespace {

const std::vector<std::string> kKinds = {"kill", "fail", "full"};

struct Settings {
    std::vector<std::string> operations;  // all when empty
    std::vector<std::string> kinds = kKinds;
    std::string tree;  // an LDIF export; made-up ones when empty
    long every = 1;
    long random = 0;  // so many of each operation and kind, at random; all when 0
    int pairs = 0;
    unsigned jobs = 1;
};

struct Counts {
    long calls = 0;
    long tried = 0;
    long hit = 0;
    long wrong = 0;
};

struct Work {
    const Reference* reference;
    std::string kind;
    long call;
};

class Faults {
  public:
    explicit Faults(const Settings& settings) : settings_(settings) {}

    // True when nothing was wrong.
    bool Run() {
        const std::vector<Reference> references = References();
        std::vector<Work> work;
        for (const Reference& reference : references) {
            for (const std::string& kind : settings_.kinds)
                Plan(reference, kind, work);
        }
        std::vector<std::thread> threads;
        for (unsigned thread = 0; thread < settings_.jobs; ++thread)
            threads.emplace_back([&, thread] { TakeWork(work, "work" + std::to_string(thread)); });
        for (std::thread& thread : threads)
            thread.join();
        const bool faultless = Tell(references);
        return RunPairs() && faultless;
    }

  private:
    std::vector<Reference> References() const {
        std::vector<Reference> references;
        for (const Operation& operation : Operations(settings_.tree)) {
            const auto& wanted = settings_.operations;
            if (!wanted.empty() && std::find(wanted.begin(), wanted.end(), operation.name) == wanted.end())
                continue;
            references.emplace_back(operation, folder_.path(),
                                    "operation" + std::to_string(references.size()));
        }
        return references;
    }

    void Plan(const Reference& reference, const std::string& kind, std::vector<Work>& work) const {
        std::vector<long> calls;
        for (long call = 1; call <= reference.calls; call += settings_.every)
            calls.push_back(call);
        if (settings_.random > 0) {
            std::mt19937 random(1);
            std::shuffle(calls.begin(), calls.end(), random);
            calls.resize(std::min(calls.size(), static_cast<std::size_t>(settings_.random)));
        }
        for (const long call : calls)
            work.push_back({&reference, kind, call});
    }

    void TakeWork(const std::vector<Work>& work, const std::string& name) {
        for (std::size_t next = next_++; next < work.size(); next = next_++) {
            const Work& item = work[next];
            const std::string fault = item.kind + ' ' + std::to_string(item.call);
            std::string hit;
            const std::vector<std::string> faults =
                TryFault(*item.reference, fault, folder_.path(), name, hit);
            const std::lock_guard lock(mutex_);
            Counts& counts = counts_[item.reference->operation.name][item.kind];
            counts.calls = item.reference->calls;
            ++counts.tried;
            counts.hit += hit.empty() ? 0 : 1;
            counts.wrong += faults.empty() ? 0 : 1;
            for (const std::string& what : faults)
                std::cout << item.reference->operation.name << ", " << fault << " (" << hit << "): " << what
                          << std::endl;
        }
    }

    bool Tell(const std::vector<Reference>& references) {
        std::printf("%-22s %-5s %6s %6s %6s %6s\n", "operation", "fault", "calls", "tried", "met", "wrong");
        Counts all;
        for (const Reference& reference : references) {
            for (const auto& [kind, counts] : counts_[reference.operation.name]) {
                std::printf("%-22s %-5s %6ld %6ld %6ld %6ld\n", reference.operation.name.c_str(),
                            kind.c_str(), counts.calls, counts.tried, counts.hit, counts.wrong);
                all.tried += counts.tried;
                all.hit += counts.hit;
                all.wrong += counts.wrong;
            }
        }
        std::printf("%-22s %-5s %6s %6ld %6ld %6ld\n", "all", "", "", all.tried, all.hit, all.wrong);
        return all.wrong == 0;
    }

    bool RunPairs() const {
        bool faultless = true;
        if (settings_.pairs > 0) std::printf("%-22s %6s %8s %6s\n", "pair", "both", "refused", "wrong");
        for (const Pair& pair : settings_.pairs > 0 ? Pairs() : std::vector<Pair>()) {
            const PairCounts counts = TryPair(pair, settings_.pairs, folder_.path());
            std::printf("%-22s %6d %8d %6zu\n", pair.name.c_str(), counts.both, counts.refused,
                        counts.faults.size());
            for (const std::string& fault : counts.faults)
                std::cout << fault << std::endl;
            faultless = faultless && counts.faults.empty();
        }
        return faultless;
    }

    Settings settings_;
    TempFolder folder_;
    std::atomic<std::size_t> next_ = 0;
    std::mutex mutex_;
    std::map<std::string, std::map<std::string, Counts>> counts_;
};

}  // namespace
}  // namespace zorvel::test

int main(int count, char* arguments[]) {
    zorvel::test::Settings settings;
    const std::vector<std::string> kinds = settings.kinds;
    settings.jobs = std::max(1U, std::thread::hardware_concurrency());
    CLI::App app("Tries faults, kills and second programs on program folders");
    app.add_option("--operation", settings.operations, "Only these operations");
    app.add_option("--fault", settings.kinds, "Only these faults")->check(CLI::IsMember(kinds));
    app.add_option("--tree", settings.tree, "The tree that is read first, an LDIF export");
    app.add_option("--every", settings.every, "Only each so manieth call");
    app.add_option("--random", settings.random, "Only so many calls of each operation and fault");
    app.add_option("--pairs", settings.pairs, "How often each pair of programs is started");
    app.add_option("--jobs", settings.jobs, "How many at once");
    CLI11_PARSE(app, count, arguments);
    return zorvel::test::Faults(settings).Run() ? 0 : 1;
}
