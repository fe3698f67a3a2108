#include "gui/main/applications_page.h"

#include <QIcon>
#include <QItemSelectionModel>
#include <QStyle>

#include "gui/main/app_list_model.h"
#include "gui/main/ou_tree_model.h"
#include "gui/widgets/palette.h"
#include "gui/widgets/qt_text.h"
#include "ui_applications_page.h"

namespace zorvel {
namespace {

// The tree buttons and the list buttons by their index.
enum TreeButton { kExpandAll, kCollapseAll, kHideEmpty, kShowAll, kUnselectAll, kSelectAll, kRefresh };
constexpr int kTreeButtons = 7;
enum ListButton { kSelectAllInOU, kUnselectAllInOU, kInvertInOU };
constexpr int kListButtons = 3;

constexpr int kBrowserShare = 2;  // of the width, beside kListShare
constexpr int kListShare = 3;

QString ConnectionIcon(TreeConnection::State state) {
    switch (state) {
        case TreeConnection::State::kFile:
            return QStringLiteral(":/icons/tree_export.svg");
        case TreeConnection::State::kClosed:
            return QStringLiteral(":/icons/lock_none.svg");
        case TreeConnection::State::kInTheOpen:
            return QStringLiteral(":/icons/lock_open.svg");
        case TreeConnection::State::kPrivate:
            return QStringLiteral(":/icons/lock_closed.svg");
        case TreeConnection::State::kNone:
            break;
    }
    return {};
}

}  // namespace

ApplicationsPage::ApplicationsPage(QWidget* parent)
    : QWidget(parent),
      ui_(std::make_unique<Ui::ApplicationsPage>()),
      nodes_(new OUTreeModel(icons_, this)),
      items_(new AppListModel(icons_, this)) {
    ui_->setupUi(this);
    ui_->labDivider->setStretchFactor(0, kBrowserShare);
    ui_->labDivider->setStretchFactor(1, kListShare);
    ui_->TreeView1->setModel(nodes_);
    ui_->ListView1->setModel(items_);
}

ApplicationsPage::~ApplicationsPage() = default;

QToolButton* ApplicationsPage::Button(const char* kind, int index) const {
    return findChild<QToolButton*>(QString("%1_%2").arg(kind).arg(index));
}

void ApplicationsPage::SetBrowser(OUBrowser& browser) {
    browser_ = &browser;
    nodes_->SetBrowser(browser);
    items_->SetBrowser(browser);
    ConnectTree();
    ConnectList();
    ShowTitle();
}

void ApplicationsPage::ConnectTree() {
    click_timer_.setSingleShot(true);
    connect(&click_timer_, &QTimer::timeout, this, &ApplicationsPage::Click);
    ui_->comTree->installEventFilter(this);
    connect(ui_->comTree, &QComboBox::activated, this,
            [this](int index) { Q_EMIT TreeChosen(static_cast<std::size_t>(index)); });

    const auto click = [this](const QModelIndex& index) {
        if (!showing_nodes_) ClickLater(OUTreeModel::Number(index));
    };
    connect(ui_->TreeView1->selectionModel(), &QItemSelectionModel::currentChanged, this, click);
    connect(ui_->TreeView1, &QTreeView::pressed, this, click);

    const auto button = [this](TreeButton index, auto action) {
        connect(Button("butTreeControl", index), &QToolButton::clicked, this, action);
    };
    button(kExpandAll, [this] { ui_->TreeView1->expandAll(); });
    button(kCollapseAll, [this] { CollapseAll(); });
    button(kHideEmpty, [this] { browser_->HideEmptyOUs(); });
    button(kShowAll, [this] { browser_->ShowAllOUs(); });
    button(kUnselectAll, [this] { browser_->UnselectAllInTree(); });
    button(kSelectAll, [this] { browser_->SelectAllInTree(); });
    button(kRefresh, [this] { browser_->ForceFullRefresh(); });
}

void ApplicationsPage::ConnectList() {
    connect(ui_->ListView1->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &ApplicationsPage::PassSelectionOn);
    const auto button = [this](ListButton index, auto action) {
        connect(Button("butListViewControl", index), &QToolButton::clicked, this, action);
    };
    button(kSelectAllInOU, [this] { browser_->SelectAllInOU(); });
    button(kUnselectAllInOU, [this] { browser_->UnselectAllInOU(); });
    button(kInvertInOU, [this] { browser_->InvertSelectionInOU(); });
}

void ApplicationsPage::ClearTrees() {
    ui_->comTree->clear();
}

void ApplicationsPage::ShowConnection(const TreeConnection& connection) {
    const QString icon = ConnectionIcon(connection.state);
    const QString text = ToQString(connection.text);
    ui_->labTreeLock->setVisible(!icon.isEmpty());
    if (ui_->labTreeLock->accessibleDescription() == text) return;
    const int size = style()->pixelMetric(QStyle::PM_SmallIconSize);
    ui_->labTreeLock->setPixmap(QIcon(icon).pixmap(QSize(size, size), devicePixelRatio()));
    ui_->labTreeLock->setToolTip(PlainToolTip(text));
    ui_->labTreeLock->setAccessibleDescription(text);
    ui_->comTree->setAccessibleDescription(text);
}

void ApplicationsPage::AddTree(std::string_view name) {
    ui_->comTree->addItem(ToQString(name));
}

void ApplicationsPage::SelectTree(std::size_t index) {
    ui_->comTree->setCurrentIndex(static_cast<int>(index));
}

void ApplicationsPage::AllowDirectory(DirectoryAccess access) {
    access_ = access;
    ShowTitle();
}

void ApplicationsPage::EnableTreeControls() {
    const bool full = access_ == DirectoryAccess::kFull;
    const bool filtered = browser_->mode() == TreeViewMode::kFiltered;
    for (int index = 0; index < kTreeButtons; ++index)
        Button("butTreeControl", index)->setEnabled(full);
    Button("butTreeControl", kHideEmpty)->setEnabled(full && !filtered);
    Button("butTreeControl", kShowAll)->setEnabled(full && filtered);
    Button("butTreeControl", kRefresh)->setEnabled(access_ != DirectoryAccess::kNone);
    ui_->comTree->setEnabled(access_ != DirectoryAccess::kNone);
    ui_->TreeView1->setEnabled(full);
}

// A click can load the whole tree again; that waits until the view is done with the event.
void ApplicationsPage::ClickLater(std::size_t number) {
    clicked_ = number;
    click_timer_.start(0);
}

void ApplicationsPage::Click() {
    if (browser_->CanClick(clicked_)) browser_->ClickNode(clicked_);
}

void ApplicationsPage::CollapseAll() {
    ui_->TreeView1->collapseAll();
    ui_->TreeView1->expand(nodes_->index(0, 0, {}));
}

void ApplicationsPage::PassSelectionOn(const QItemSelection& selected, const QItemSelection& deselected) {
    if (showing_selection_) return;
    for (const QItemSelectionRange& range : deselected)
        browser_->SetSelected(static_cast<std::size_t>(range.top()), static_cast<std::size_t>(range.bottom()),
                              false);
    for (const QItemSelectionRange& range : selected)
        browser_->SetSelected(static_cast<std::size_t>(range.top()), static_cast<std::size_t>(range.bottom()),
                              true);
    browser_->RefreshAppTitle();
}

bool ApplicationsPage::eventFilter(QObject* watched, QEvent* event) {
    // A wheel that only passes by switches no tree.
    if (event->type() != QEvent::Wheel) return QWidget::eventFilter(watched, event);
    event->ignore();
    return true;
}

void ApplicationsPage::ShowNodes() {
    nodes_->Reset();
    const QModelIndex root = nodes_->index(0, 0, {});
    if (!root.isValid()) return;
    showing_nodes_ = true;
    // The root and what lies directly below it: nothing deeper starts expanded.
    const OUNodes& nodes = browser_->nodes();
    for (std::size_t row = 0; row < nodes.ChildCount(OUTreeModel::Number(root)); ++row) {
        const QModelIndex child = nodes_->index(static_cast<int>(row), 0, root);
        if (browser_->StartsExpanded(OUTreeModel::Number(child))) ui_->TreeView1->expand(child);
    }
    ui_->TreeView1->expand(root);
    // Where the user was, else the root: a view without a current node would take its first one for clicked
    // as soon as it gets the keyboard.
    const QModelIndex current = nodes_->IndexOf(browser_->CurrentNode());
    ui_->TreeView1->setCurrentIndex(current.isValid() ? current : root);
    showing_nodes_ = false;
}

void ApplicationsPage::ShowMarks() {
    ui_->TreeView1->viewport()->update();
}

void ApplicationsPage::ShowList() {
    items_->Reset();
    ShowItemSelection();
}

void ApplicationsPage::ShowItemSelection() {
    QItemSelection selection;
    const std::vector<OUBrowser::Item>& items = browser_->items();
    for (std::size_t row = 0; row < items.size(); ++row) {
        if (!items[row].selected) continue;
        const std::size_t first = row;
        while (row + 1 < items.size() && items[row + 1].selected)
            ++row;
        selection.append(QItemSelectionRange(items_->index(static_cast<int>(first)),
                                             items_->index(static_cast<int>(row))));
    }
    showing_selection_ = true;
    ui_->ListView1->selectionModel()->clearSelection();
    ui_->ListView1->selectionModel()->select(selection, QItemSelectionModel::Select);
    showing_selection_ = false;
}

void ApplicationsPage::ShowTitle() {
    const bool filtered = browser_->mode() == TreeViewMode::kFiltered;
    ui_->labBrowser->setText(ToQString(browser_->labBrowser()));
    ui_->labBrowser->setPalette(filtered ? FilteredPalette(palette()) : palette());
    ui_->labBrowser->setAutoFillBackground(filtered);
    ui_->labCurrentOU->setText(ToQString(browser_->labCurrentOU));
    ui_->labCurrentOU->setToolTip(PlainToolTip(ui_->labCurrentOU->text()));
    ui_->labCurrentOU->setAccessibleDescription(ui_->labCurrentOU->text());  // else the tool tip's markup
    ui_->labApps->setText(ToQString(browser_->labApps));
    EnableTreeControls();
    for (int index = 0; index < kListButtons; ++index)
        Button("butListViewControl", index)->setEnabled(browser_->list_buttons_enabled);
    Q_EMIT TitleShown();
}

}  // namespace zorvel
