#include "browser/ou_browser.h"

#include <utility>

#include "shell/formats.h"
#include "shell/report_error.h"

namespace zorvel {
namespace {

constexpr std::string_view kReadingText = "Reading eDirectory Application Objects...";
constexpr std::string_view kClickProcedure = "OU Browser node click.";

}  // namespace

OUBrowser::OUBrowser(Services& services, Directory& directory, TreeLists& lists, OUBrowserDisplay& display,
                     std::function<void()> refresh_tree)
    : services_(services),
      directory_(directory),
      lists_(lists),
      display_(display),
      refresh_tree_(std::move(refresh_tree)),
      nodes_(lists) {}

const std::string& OUBrowser::labBrowser() const {
    static const std::string kFull = "OU Browser";
    static const std::string kFiltered = "OU Browser - FILTERED";
    return mode_ == TreeViewMode::kFull ? kFull : kFiltered;
}

NodeColour OUBrowser::Colour(std::size_t number) const {
    if (Marked(number, kChildToggled)) return NodeColour::kChildToggled;
    return Record(number).AppsHere > 0 ? NodeColour::kApplications : NodeColour::kDefault;
}

void OUBrowser::SetMark(std::size_t number, Mark mark, bool on) {
    if (number >= marks_.size()) return;
    std::uint8_t& marks = marks_[number];
    marks = static_cast<std::uint8_t>(on ? marks | mark : marks & ~mark);
}

void OUBrowser::ClearBold() {
    for (std::uint8_t& marks : marks_)
        marks = static_cast<std::uint8_t>(marks & ~kBold);
}

void OUBrowser::ClearNodes() {
    nodes_.Clear();
    marks_.assign(1, 0);
    // The marks of a tree are lost with it; the list keeps its lines until the next click on a node.
    for (Item& item : items_)
        item = {std::move(item.name), 0, false};
    items_outdated_ = true;
    ArrangeNodes();
    display_.ShowItemSelection();
}

void OUBrowser::AddNode(std::size_t number, bool expanded) {
    nodes_.Add(number);
    marks_.push_back(expanded ? kExpanded : 0);
}

void OUBrowser::ArrangeNodes() {
    mode_ = TreeViewMode::kFull;
    nodes_.Arrange(mode_);
    display_.ShowNodes();
    display_.ShowTitle();
}

void OUBrowser::Rebuild(TreeViewMode mode) {
    mode_ = mode;
    nodes_.Arrange(mode);
    // New nodes: nothing is bold, checked or toggled, and the root and its children are open.
    for (std::size_t number = 1; number < marks_.size(); ++number)
        marks_[number] = nodes_.Parent(number) <= 1 ? kExpanded : 0;
    display_.ShowNodes();
    display_.ShowTitle();
}

void OUBrowser::HideEmptyOUs() {
    Rebuild(TreeViewMode::kFiltered);
}

void OUBrowser::ShowAllOUs() {
    Rebuild(TreeViewMode::kFull);
}

void OUBrowser::ClickNode(std::size_t number) {
    const std::string path(Record(number).Path);
    try {
        ListApplications(path);
        services_.status.SetIdle();
    } catch (...) {
        ReportClickFailure(path, CurrentError());
    }
}

void OUBrowser::ListApplications(const std::string& path) {
    services_.status.SetStatus(StatusPicture::kYellowBall, kReadingText);
    const Entry container = directory_.FindEntry(path);
    std::string full_name = directory_.FullNameOf(container);
    directory_.SetCurrentObject(container.path);
    std::vector<Entry> entries = directory_.Entries(container.path, kApplicationClass);
    current_container_ = path;
    labCurrentOU = std::move(full_name);
    ClearList();
    bool unknown = false;
    for (Entry& entry : entries) {
        Item item;
        item.app = lists_.FindApp(path, entry.short_name);
        item.selected = item.app != 0 && lists_.AppList[item.app - 1].Selected;
        item.name = std::move(entry.short_name);
        unknown = unknown || item.app == 0;
        items_.push_back(std::move(item));
        services_.status.SetStatus(
            StatusPicture::kYellowBall,
            std::string(kReadingText) + PlainNumber(static_cast<std::int64_t>(items_.size())));
    }
    display_.ShowList();
    RefreshAppTitle();
    // The lines that the cache knows keep their marks; the others are told of once.
    if (unknown) {
        throw Error(errors::kSubscript)
            .With("'" + path + "' holds applications that the cached version of the Tree does not know");
    }
}

void OUBrowser::ReportClickFailure(const std::string& path, const Error& error) {
    services_.status.SetIdle();
    if (error.number() != errors::kNoSuchObject) {
        services_.ui.Tell("Error" + ErrorText(error) + " occurred in " + std::string(kClickProcedure),
                          MessageIcon::kCritical, error.detail());
        LogUnexpectedError(services_.log, error, kClickProcedure);
        return;
    }
    services_.log.WriteLog("ERROR: DS error 601 returned during Node click on '" + path +
                           "' - cached version of Tree likely out of date");
    const bool refresh = services_.ui.Ask(
        std::string(kProductName) + " encountered an error trying to access '" + path +
            "'\n\nIt's likely that your Tree structure has changed since Zorvel last cached it.  Would you "
            "like to refresh the Zorvel Tree cache?",
        MessageIcon::kExclamation, Answer::kNo);
    services_.log.WriteLog(refresh ? "User chose to refresh cache" : "User chose NOT to refresh cache");
    if (refresh) ReloadTree();
}

void OUBrowser::ReloadTree() {
    const auto hold = services_.writers.Acquire();
    if (!hold) return;
    ClearList();
    display_.ShowList();
    refresh_tree_();
    RefreshAppTitle();
}

void OUBrowser::ClearList() {
    items_.clear();
    selected_items_ = 0;
}

void OUBrowser::CheckNode(std::size_t number, bool checked) {
    try {
        const std::string path(Record(number).Path);
        const Entry container = directory_.FindEntry(path);
        SetMark(number, kChecked, checked);
        SetMark(number, kBold, checked);
        SetMark(nodes_.Parent(number), kChildToggled, true);
        directory_.SetCurrentObject(container.path);
        for (const Entry& entry : directory_.Entries(container.path, kContainerClasses)) {
            const std::size_t child = lists_.FindOU(entry.path);
            SetMark(child, kChecked, checked);
            SetMark(child, kBold, checked);
        }
    } catch (...) {
        TellUnexpectedError(services_.ui, services_.log, CurrentError(), "OU Browser node check procedure");
    }
    display_.ShowMarks();
    services_.status.SetIdle();
}

void OUBrowser::ForceFullRefresh() {
    if (services_.ui.Ask("Re-reading the whole Tree in again may take a while - Are you sure?",
                         MessageIcon::kQuestion, Answer::kNo)) {
        ReloadTree();
    }
}

template <typename Choose>
void OUBrowser::SetSelection(Choose choose) {
    for (Item& item : items_)
        item.selected = choose(item);
    display_.ShowItemSelection();
    RefreshAppTitle();
}

void OUBrowser::SelectAllInTree() {
    for (AppRecord& application : lists_.AppList)
        lists_.Select(application, true);
    for (std::size_t number = 1; number < marks_.size(); ++number)
        if (Record(number).AppsHere > 0) SetMark(number, kBold, true);
    SetSelection([](const Item& /*item*/) { return true; });
}

void OUBrowser::UnselectAllInTree() {
    ClearSelection();
    ShowSelection();
}

void OUBrowser::ClearSelection() {
    for (AppRecord& application : lists_.AppList)
        lists_.Select(application, false);
    for (Item& item : items_)
        item.selected = false;
    ClearBold();
}

void OUBrowser::SelectApplication(std::size_t app) {
    AppRecord& application = lists_.AppList[app - 1];
    lists_.Select(application, true);
    SetMark(lists_.FindOU(application.Container), kBold, true);
}

void OUBrowser::ShowSelection() {
    SetSelection([this](const Item& item) { return item.app != 0 && lists_.AppList[item.app - 1].Selected; });
}

void OUBrowser::SelectAllInOU() {
    SetSelection([](const Item& /*item*/) { return true; });
}

void OUBrowser::UnselectAllInOU() {
    SetSelection([](const Item& /*item*/) { return false; });
}

void OUBrowser::InvertSelectionInOU() {
    SetSelection([](const Item& item) { return !item.selected; });
}

void OUBrowser::SetSelected(std::size_t first, std::size_t last, bool selected) {
    for (std::size_t row = first; row <= last && row < items_.size(); ++row)
        items_[row].selected = selected;
}

void OUBrowser::RefreshAppTitle() {
    if (std::exchange(items_outdated_, false)) {
        for (Item& item : items_)
            item.app = lists_.FindApp(current_container_, item.name);
    }
    selected_items_ = 0;
    for (const Item& item : items_) {
        if (item.selected) ++selected_items_;
        // Of several lines with one name the last one decides, as each is copied in turn.
        if (item.app != 0) lists_.Select(lists_.AppList[item.app - 1], item.selected);
    }
    if (!items_.empty()) SetMark(lists_.FindOU(current_container_), kBold, selected_items_ > 0);
    selection_exists = lists_.counts.SelectedCount > 0;
    if (application_tab_showing) {
        list_buttons_enabled = !items_.empty();
        if (items_.empty()) {
            labApps = "No applications in this branch";
        } else {
            const auto count = static_cast<std::int64_t>(items_.size());
            labApps = PlainNumber(count) + " application" + (count == 1 ? "" : "s") + " available,";
            if (selected_items_ == 0) {
                labApps += " none selected.";
            } else if (selected_items_ == items_.size()) {
                labApps += " all selected.";
            } else {
                labApps += PlainNumber(static_cast<std::int64_t>(selected_items_)) + " selected.";
            }
        }
    }
    display_.ShowMarks();
    display_.ShowTitle();
    services_.status.SetIdle();
}

}  // namespace zorvel
