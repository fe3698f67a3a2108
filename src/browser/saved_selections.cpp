#include "browser/saved_selections.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <random>
#include <utility>

#include "platform/error.h"
#include "shell/formats.h"
#include "shell/report_error.h"

namespace zorvel {
namespace {

constexpr double kFileNumbers = 100'000'000;
constexpr std::size_t kMaximumFiles = 100;
constexpr double kMicroseconds = 1'000'000;

}  // namespace

RandomFraction TimerSeededFractions(const Clock& clock) {
    return [&clock, draws = std::uint32_t{0}]() mutable {
        // Draws within one tick of the clock are told apart by their number.
        std::seed_seq seed{static_cast<std::uint64_t>(clock.Timer() * kMicroseconds), std::uint64_t{++draws}};
        std::mt19937 generator(seed);
        // Fractions of 24 bits: even the largest stays below 1 when it is rounded to a file number.
        return std::ldexp(static_cast<double>(generator() >> 8), -24);
    };
}

const std::string SaveSelections::labComment =
    "Please enter a brief comment describing the current application selection; this is shown when choosing "
    "which selection to Load via the 'Load Previous Selections...' menu choice.";

SaveSelections::SaveSelections(Services& services, const TreeLists& lists, std::string tree,
                               RandomFraction random_fraction)
    : services_(services),
      lists_(lists),
      tree_(std::move(tree)),
      random_fraction_(std::move(random_fraction)) {}

std::string SaveSelections::UnusedPath() const {
    std::string path;
    do {
        path = SelectionPath(services_.files, tree_, std::llround(random_fraction_() * kFileNumbers));
    } while (services_.files.Exists(path));
    return path;
}

void SaveSelections::Save() {
    const auto hold = services_.writers.Acquire();
    if (!hold) return;
    try {
        const std::string path = UnusedPath();
        services_.status.SetStatus(StatusPicture::kYellowBall, "Saving Application Selections...");
        services_.log.WriteLog("Saving current application selections to '" + path + "'");
        WriteSelection(services_.files, path, services_.clock.Now(), txtComment, lists_);
        services_.log.WriteLog("Finished updating Application Selection Cache file");
        services_.sounds.PlayEventSound(services_.options.session.FinishedSound);
        services_.status.SetIdle();
        services_.ui.Tell("Current selection of " + Grouped(lists_.counts.SelectedCount) +
                              " applications has been successfully saved!",
                          MessageIcon::kInformation);
        closed = true;
    } catch (...) {
        services_.status.SetIdle();
        TellUnexpectedError(services_.ui, services_.log, CurrentError(), "frmSaveSelections");
    }
}

const std::string LoadSelections::labChoose =
    "Please choose a previously saved application selection from the list below";

LoadSelections::LoadSelections(Services& services, const TreeLists& lists, SelectionTarget& target,
                               std::string tree)
    : services_(services), lists_(lists), target_(target), tree_(std::move(tree)) {}

void LoadSelections::Open() {
    try {
        std::vector<std::string> found = SelectionPaths(services_.files, tree_);
        found.resize(std::min(found.size(), kMaximumFiles));
        for (std::string& path : found) {
            const std::string created = ShortYearDateAndTime(services_.files.Modified(path));
            paths_.push_back(std::move(path));
            lstLoad.push_back("Application Selections #" + Digits(static_cast<std::int64_t>(paths_.size())) +
                              "  -  created " + created);
        }
    } catch (...) {
        ReportError();
    }
    if (!lstLoad.empty()) Select(0);
}

void LoadSelections::Select(std::size_t index) {
    selected = index;
    txtComment.clear();
    try {
        txtComment = ReadSelectionHeader(services_.files.Open(paths_.at(index))).comment;
    } catch (...) {
        ReportError();
    }
}

void LoadSelections::Load() {
    if (lstLoad.empty()) return;
    if (lists_.counts.SelectedCount > 0 &&
        !services_.ui.Ask("Please note that loading another application selection will over-write your "
                          "current selection(s) - are you sure?",
                          MessageIcon::kExclamation, Answer::kNo)) {
        return;
    }
    try {
        // Read whole before the present selection is given up.
        const SavedSelection selection = ReadSelection(services_.files.Open(paths_.at(selected)));
        const std::int32_t made = SelectSaved(target_, lists_, selection);
        services_.status.SetIdle();
        services_.ui.Tell(SelectionLoadedText(made, selection), MessageIcon::kInformation);
        closed = true;
    } catch (...) {
        ReportError();
    }
}

void LoadSelections::ReportError() {
    TellUnexpectedError(services_.ui, services_.log, CurrentError(), "frmLoadSelections");
}

}  // namespace zorvel
