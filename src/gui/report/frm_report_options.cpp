#include "gui/report/frm_report_options.h"

#include <QSignalBlocker>
#include <utility>

#include "gui/widgets/qt_text.h"
#include "gui/widgets/show_summary.h"
#include "ui_frm_report_options.h"

namespace zorvel {
namespace {

// Where an item of the tree holds the number of its node.
constexpr int kNumberRole = Qt::UserRole;

// The places in layoutMain.
enum Part { kList, kSummary, kOptions };

}  // namespace

frmReportOptions::frmReportOptions(ReportOptions& options, QWidget* parent)
    : QDialog(parent), options_(options), ui_(std::make_unique<Ui::frmReportOptions>()) {
    ui_->setupUi(this);
    ShowOptions();
    ShowSummary();
    MakeTree();
    Connect();
    ConnectTree();
}

frmReportOptions::~frmReportOptions() = default;

int frmReportOptions::exec() {
    const int result = QDialog::exec();
    if (failure_) std::rethrow_exception(std::exchange(failure_, nullptr));
    return result;
}

void frmReportOptions::reject() {
    options_.Cancel();
    QDialog::reject();
}

void frmReportOptions::Guard(const std::function<void()>& operation) {
    try {
        operation();
    } catch (...) {
        failure_ = std::current_exception();
        reject();
    }
}

void frmReportOptions::ShowOptions() {
    setWindowTitle(ToQString(options_.caption));
    ui_->frameCapture->setTitle(ToQString(options_.list_caption));
    ShowDatasetsIn(*ui_->lstCapture, options_.lstCapture, options_.item_notes);
    if (!options_.lstCapture.empty()) ui_->lstCapture->setCurrentRow(0);
    for (const std::string& item : options_.comboSortBy)
        ui_->comboSortBy->addItem(ToQString(item));
    ui_->comboSortBy->setCurrentText(ToQString(options_.sort));
    ui_->comboSortBy->setEnabled(options_.order_enabled);
    ui_->chkOrder->setEnabled(options_.order_enabled);
    ui_->chkOrder->setChecked(options_.chkOrder);
    ui_->butAdvanced->setText(ToQString(options_.butAdvanced));
    ui_->butAdvanced->setEnabled(options_.butAdvancedEnabled);
    ui_->butOk->setEnabled(options_.butOkEnabled);
}

void frmReportOptions::ShowSummary() {
    ShowSummaryIn(*ui_, options_.summary);
}

void frmReportOptions::MakeTree() {
    const IssueTree& tree = options_.treeRO;
    for (std::size_t number = 0; number < tree.nodes().size(); ++number) {
        const IssueNode& node = tree.nodes()[number];
        auto* item = tree.IsCategory(number) ? new QTreeWidgetItem(ui_->treeRO)
                                             : new QTreeWidgetItem(items_[node.category]);
        item->setText(0, ToQString(node.text));
        item->setData(0, kNumberRole, static_cast<qulonglong>(number));
        items_.push_back(item);
    }
    ShowTree();
}

void frmReportOptions::ShowTree() {
    const QSignalBlocker showing(ui_->treeRO);
    QFont bold = ui_->treeRO->font();
    bold.setBold(true);
    const std::vector<IssueNode>& nodes = options_.treeRO.nodes();
    for (std::size_t number = 0; number < nodes.size(); ++number) {
        items_[number]->setCheckState(0, nodes[number].checked ? Qt::Checked : Qt::Unchecked);
        items_[number]->setData(0, Qt::FontRole, nodes[number].bold ? QVariant(bold) : QVariant());
    }
}

void frmReportOptions::Connect() {
    connect(ui_->lstCapture, &QListWidget::currentRowChanged, this, [this](int line) {
        Guard([&] { options_.Select(static_cast<std::size_t>(line)); });
        ShowSummary();
    });
    connect(ui_->comboSortBy, &QComboBox::currentTextChanged, this,
            [this](const QString& text) { options_.sort = FromQString(text); });
    connect(ui_->chkOrder, &QCheckBox::toggled, this, [this](bool checked) { options_.chkOrder = checked; });
    connect(ui_->butAdvanced, &QPushButton::clicked, this, &frmReportOptions::ToggleAdvanced);
    connect(ui_->butOk, &QPushButton::clicked, this, [this] {
        if (options_.Generate()) accept();
    });
    connect(ui_->butCancel, &QPushButton::clicked, this, &QDialog::reject);
}

void frmReportOptions::ConnectTree() {
    connect(ui_->treeRO, &QTreeWidget::itemChanged, this, [this](QTreeWidgetItem* item) {
        options_.treeRO.Check(item->data(0, kNumberRole).toULongLong(), item->checkState(0) == Qt::Checked);
        ShowTree();
    });
    const auto on = [this](QToolButton* button, void (IssueTree::*operation)()) {
        connect(button, &QToolButton::clicked, this, [this, operation] {
            (options_.treeRO.*operation)();
            ShowTree();
        });
    };
    on(ui_->butTreeROControl_1, &IssueTree::SelectAll);
    on(ui_->butTreeROControl_2, &IssueTree::UnselectAll);
    on(ui_->butTreeROControl_3, &IssueTree::Invert);
}

void frmReportOptions::ToggleAdvanced() {
    options_.ToggleAdvanced();
    ui_->butAdvanced->setText(ToQString(options_.butAdvanced));
    // The window grows and shrinks by what comes and goes. The rest keeps its size, and from then on all of
    // them share what the user gives the window.
    const int rest = height() - ui_->frameOptions->height();
    ui_->layoutMain->setStretch(kList, ui_->frameCapture->height());
    ui_->layoutMain->setStretch(kSummary, ui_->frameSummary->height());
    ui_->frameAdvanced->setVisible(options_.advanced_open);
    const int wanted = ui_->frameOptions->sizeHint().height();
    ui_->layoutMain->setStretch(kOptions, options_.advanced_open ? wanted : 0);
    // At once: the window's smallest size has to follow before the window shrinks.
    ui_->frameOptions->updateGeometry();
    ui_->layoutMain->activate();
    if (!isMaximized() && !isFullScreen()) resize(width(), rest + wanted);
}

}  // namespace zorvel
