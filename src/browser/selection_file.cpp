#include "browser/selection_file.h"

#include "browser/cache_file.h"
#include "shell/formats.h"

namespace zorvel {
namespace {

constexpr std::string_view kHeading = "Zorvel Application Selections Cache - Do not modify!";
constexpr std::string_view kFolder = "TempData\\";
constexpr std::string_view kExtension = ".AppSelection";

// What the names of a tree's selection files begin with.
std::string NamePrefix(std::string_view tree) {
    return std::string(tree) + '-';
}

// Takes what is left of the line of the field read last.
std::string RestOfLine(FieldReader& reader) {
    const bool within = reader.end() == FieldEnd::kComma || reader.end() == FieldEnd::kText;
    return within && !reader.AtEnd() ? reader.NextLine() : std::string();
}

SavedSelection ReadHeader(FieldReader& reader) {
    SavedSelection selection;
    reader.NextLine();
    selection.saved = reader.Next();
    if (reader.end() == FieldEnd::kComma) selection.count = reader.NextNumber();
    RestOfLine(reader);
    selection.comment = reader.Next();
    RestOfLine(reader);
    return selection;
}

std::pair<std::string, std::string> ReadApplication(FieldReader& reader) {
    std::string name = reader.Next();
    // A name with a quote of its own ends there, and what follows is no container: the application will not
    // be found, but the line is taken whole, so that those after it are.
    if (reader.end() == FieldEnd::kText) return {std::move(name), RestOfLine(reader)};
    std::string container = reader.Next();
    RestOfLine(reader);
    return {std::move(name), std::move(container)};
}

}  // namespace

void TreeListsSelection::ClearSelection() {
    for (AppRecord& application : lists_.AppList)
        lists_.Select(application, false);
}

std::string SelectionPath(const Files& files, std::string_view tree, std::int64_t number) {
    return files.Path(std::string(kFolder) + NamePrefix(tree) + SevenDigits(number) +
                      std::string(kExtension));
}

std::vector<std::string> SelectionPaths(const Files& files, std::string_view tree) {
    std::vector<std::string> paths = files.List(files.Path(kFolder), NamePrefix(tree), kExtension);
    for (std::string& name : paths)
        name = files.Path(std::string(kFolder) + name);
    return paths;
}

void WriteSelection(const Files& files, const std::string& path, const DateTime& today,
                    std::string_view comment, const TreeLists& lists) {
    files.WriteInPlace(path, [&](OutputFile& file) {
        file.Write(CacheHead(kHeading, today, static_cast<std::size_t>(lists.counts.SelectedCount)));
        file.Write(Quoted(OneLine(comment)) + "\r\n");
        for (const AppRecord& application : lists.AppList) {
            if (application.Selected) file.Write(ApplicationLine(application));
        }
    });
}

SavedSelection ReadSelection(InputFile file) {
    FieldReader reader(std::move(file));
    SavedSelection selection = ReadHeader(reader);
    for (std::int32_t i = 0; i < selection.count; ++i)
        selection.applications.push_back(ReadApplication(reader));
    return selection;
}

SavedSelection ReadSelectionHeader(InputFile file) {
    FieldReader reader(std::move(file));
    return ReadHeader(reader);
}

std::int32_t SelectSaved(SelectionTarget& target, const TreeLists& lists, const SavedSelection& selection) {
    target.ClearSelection();
    std::int32_t selected = 0;
    for (const auto& [name, container] : selection.applications) {
        const std::size_t app = lists.FindApp(container, name);
        if (app == 0) continue;
        target.SelectApplication(app);
        ++selected;
    }
    target.ShowSelection();
    return selected;
}

std::string SelectionLoadedText(std::int32_t selected, const SavedSelection& selection) {
    return "Application selections loaded - " + Grouped(selected) + " of " + Grouped(selection.count) +
           " previously saved selections successfully made.";
}

}  // namespace zorvel
