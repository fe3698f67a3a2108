// Reads arbitrary bytes as a saved selection: it holds as many applications as it announces, selects each of
// them in lists that hold them, and reads the same when it is written again.
#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

#include "browser/cache_file.h"
#include "browser/selection_file.h"
#include "fuzz_input.h"
#include "shell/text_records.h"

namespace zorvel::fuzz {
namespace {

bool IsCarried(const SavedSelection& selection) {
    return fuzz::IsCarried(selection.comment) &&
           std::all_of(selection.applications.begin(), selection.applications.end(),
                       [](const auto& application) {
                           return fuzz::IsCarried(application.first) && fuzz::IsCarried(application.second);
                       });
}

std::string TextOf(const SavedSelection& selection) {
    std::string text = CacheHead("Selections", {}, selection.applications.size());
    text += Quoted(selection.comment) + "\r\n";
    for (const auto& [name, container] : selection.applications)
        text += ApplicationLine({container, name});
    return text;
}

}  // namespace

void TestOneInput(std::string_view input) {
    const auto refusals = {errors::kOverflow, errors::kPastEndOfFile};
    const auto header = Readable(refusals, [&] { return ReadSelectionHeader(AsFile(input)); });
    const auto selection = Readable(refusals, [&] { return ReadSelection(AsFile(input)); });
    Require(header || !selection);
    if (!selection) return;
    Require(selection->saved == header->saved && selection->comment == header->comment);
    Require(static_cast<std::int64_t>(selection->applications.size()) == std::max(selection->count, 0));

    TreeLists lists;
    for (const auto& [name, container] : selection->applications)
        lists.AddApp(container, name);
    TreeListsSelection target(lists);
    Require(SelectSaved(target, lists, *selection) == std::max(selection->count, 0));
    Require(lists.counts.SelectedCount <= std::max(selection->count, 0));

    if (!IsCarried(*selection)) return;
    const std::string text = TextOf(*selection);
    Require(TextOf(ReadSelection(AsFile(text))) == text);
}

}  // namespace zorvel::fuzz
