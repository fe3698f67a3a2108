// The Findings tab: the findings of a dataset as a table, with facets at its left and details below it.
#pragma once

#include <QTimer>
#include <QWidget>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "controller/main_controller.h"
#include "findings/findings_view.h"

class QTreeWidgetItem;
namespace Ui {
class FindingsPage;
}

namespace zorvel {

class FindingTableModel;

class FindingsPage final : public QWidget {
    Q_OBJECT

  public:
    // Runs an operation of the main window, with its errors shown.
    using Run = std::function<void(const std::function<void()>&)>;

    FindingsPage(MainController& controller, Run run, QWidget* parent);
    ~FindingsPage() override;

    // Lists the datasets, and shows the newest when there is another one. Raises what FindingsView raises.
    void ListDatasets();
    // Keeps the columns as the user has arranged them.
    void SaveColumns();

    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void ConnectControls();
    void ArrangeColumns();
    void ChooseDataset(int number);
    void TakeFilter();
    void SortBy(int column);
    void ChooseFacet(QTreeWidgetItem* item);
    // Brings all up to date: the dataset is another, or only its rows are.
    void ShowDataset();
    void ShowRows();
    void FillFacets();
    void ShowFacetCounts();
    void ShowDetails();
    void EnableActions();
    void ShowMenu(QPoint place);

    std::vector<std::uint32_t> ChosenRows() const;
    // The row under the cursor; there must be one.
    std::uint32_t CurrentRow() const;
    void Accept();
    void Withdraw();
    void Copy();
    void Export();
    // Shows other rows by `change`, and goes on in the table.
    void Change(const std::function<void()>& change);

    MainController& controller_;
    Run run_;
    FindingsView view_;
    std::unique_ptr<Ui::FindingsPage> ui_;
    FindingTableModel* model_;
    QTimer filter_timer_;
    QTimer details_timer_;
    bool columns_changed_ = false;
};

}  // namespace zorvel
