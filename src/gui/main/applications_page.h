// The Applications tab: the tree selector, the OU browser and the list of a container's applications.
#pragma once

#include <QTimer>
#include <QWidget>
#include <cstddef>
#include <memory>
#include <string_view>

#include "browser/ou_browser.h"
#include "controller/session.h"
#include "directory/directory.h"
#include "gui/widgets/class_icons.h"

class QItemSelection;
class QToolButton;

namespace Ui {
class ApplicationsPage;
}

namespace zorvel {

class AppListModel;
class OUTreeModel;

class ApplicationsPage final : public QWidget, public OUBrowserDisplay {
    Q_OBJECT

  public:
    explicit ApplicationsPage(QWidget* parent);
    ~ApplicationsPage() override;

    // Shows `browser` from now on.
    void SetBrowser(OUBrowser& browser);
    void ClearTrees();
    void AddTree(std::string_view name);
    // Shows how the tree is connected.
    void ShowConnection(const TreeConnection& connection);
    // Selects a tree without switching to it.
    void SelectTree(std::size_t index);
    void AllowDirectory(DirectoryAccess access);

    void ShowNodes() override;
    void ShowMarks() override;
    void ShowList() override;
    void ShowItemSelection() override;
    void ShowTitle() override;

    bool eventFilter(QObject* watched, QEvent* event) override;

  Q_SIGNALS:
    // The user chose another tree.
    void TreeChosen(std::size_t index);
    // labApps and what needs a selection may have changed.
    void TitleShown();

  private:
    void ConnectTree();
    void ConnectList();
    QToolButton* Button(const char* kind, int index) const;
    void EnableTreeControls();
    void CollapseAll();
    void ClickLater(std::size_t number);
    void Click();
    void PassSelectionOn(const QItemSelection& selected, const QItemSelection& deselected);

    std::unique_ptr<Ui::ApplicationsPage> ui_;
    ClassIcons icons_;
    OUTreeModel* nodes_;
    AppListModel* items_;
    OUBrowser* browser_ = nullptr;
    QTimer click_timer_;
    std::size_t clicked_ = 0;  // the node whose click is to be handled
    bool showing_nodes_ = false;
    bool showing_selection_ = false;
    DirectoryAccess access_ = DirectoryAccess::kFull;
};

}  // namespace zorvel
