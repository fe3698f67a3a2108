#include "directory/selection_file.h"

#include "shell/formats.h"
#include "shell/text_records.h"

namespace zorvel {

SavedSelection ReadSelection(InputFile file) {
    FieldReader reader(std::move(file));
    SavedSelection selection;
    reader.NextLine();
    selection.saved = reader.Next();
    selection.count = reader.NextNumber();
    selection.comment = reader.Next();
    for (std::int32_t i = 0; i < selection.count; ++i) {
        std::string name = reader.Next();
        selection.applications.emplace_back(std::move(name), reader.Next());
    }
    return selection;
}

std::int32_t SelectSaved(TreeLists& lists, const SavedSelection& selection) {
    for (AppRecord& application : lists.AppList)
        lists.Select(application, false);
    std::int32_t selected = 0;
    for (const auto& [name, container] : selection.applications) {
        const std::size_t number = lists.FindApp(container, name);
        if (number == 0) continue;
        lists.Select(lists.AppList[number - 1], true);
        ++selected;
    }
    return selected;
}

std::string SelectionLoadedText(std::int32_t selected, const SavedSelection& selection) {
    return "Application selections loaded - " + Grouped(selected) + " of " + Grouped(selection.count) +
           " previously saved selections successfully made.";
}

}  // namespace zorvel
