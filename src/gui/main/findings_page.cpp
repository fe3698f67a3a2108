#include "gui/main/findings_page.h"

#include <QClipboard>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMenu>
#include <QScrollBar>
#include <QSignalBlocker>
#include <utility>

#include "findings/column_layout.h"
#include "gui/dialogs/frm_accept.h"
#include "gui/main/finding_details_text.h"
#include "gui/main/finding_table_model.h"
#include "gui/widgets/hourglass.h"
#include "gui/widgets/qt_text.h"
#include "platform/error.h"
#include "shell/formats.h"
#include "ui_findings_page.h"

namespace zorvel {
namespace {

// Milliseconds that pass before what is typed is filtered, and before the details of a row are read: whoever
// goes on meanwhile does not wait.
constexpr int kFilterPause = 150;
constexpr int kDetailsPause = 60;

// Of a line of the facets.
enum FacetRole : int { kFacet = Qt::UserRole, kValue };

// Widths of the columns at first, in average characters.
constexpr std::array<int, kFindingColumns.size()> kWidths = {11, 17, 24, 15, 19, 9, 34, 18, 25, 9};

constexpr int kFacetsWidth = 230;
constexpr int kFacetsIndent = 12;
constexpr int kDetailsHeight = 190;
constexpr int kSplitSize = 10'000;  // the rest, whatever the window's size

const FindingFormat& FormatOfFilter(const QString& filter) {
    for (const FindingFormat& format : FindingFormats())
        if (filter == ToQString(format.filter)) return format;
    return FindingFormats().front();
}

QString SuffixOf(const FindingFormat& format) {
    return ToQString(format.suffix.substr(1));
}

}  // namespace

FindingsPage::FindingsPage(MainController& controller, Run run, QWidget* parent)
    : QWidget(parent),
      controller_(controller),
      run_(std::move(run)),
      view_(controller.services(), MainController::Version()),
      ui_(std::make_unique<Ui::FindingsPage>()),
      model_(new FindingTableModel(view_, this)) {
    ui_->setupUi(this);
    ui_->tabFindings->setModel(model_);
    ui_->splitFindings->setSizes({kFacetsWidth, kSplitSize});
    ui_->splitRight->setSizes({kSplitSize, kDetailsHeight});
    ui_->splitFindings->setStretchFactor(1, 1);
    ui_->splitRight->setStretchFactor(0, 2);
    ui_->splitRight->setStretchFactor(1, 1);
    ui_->treeFacets->setHeaderLabels({QString(), QString()});  // hidden, but they would take room
    ui_->treeFacets->setIndentation(kFacetsIndent);
    ui_->treeFacets->header()->setStretchLastSection(false);
    ui_->treeFacets->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    ui_->treeFacets->header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    ArrangeColumns();
    ConnectControls();
    ShowDataset();
}

FindingsPage::~FindingsPage() = default;

void FindingsPage::ConnectControls() {
    const auto on = [this](QPushButton* button, void (FindingsPage::*operation)()) {
        connect(button, &QPushButton::clicked, this,
                [this, operation] { run_([this, operation] { (this->*operation)(); }); });
    };
    on(ui_->butAccept, &FindingsPage::Accept);
    on(ui_->butWithdraw, &FindingsPage::Withdraw);
    on(ui_->butCopy, &FindingsPage::Copy);
    on(ui_->butExport, &FindingsPage::Export);
    connect(ui_->butClear, &QPushButton::clicked, this, [this] { Change([this] { view_.ClearFilter(); }); });
    connect(ui_->butRule, &QPushButton::clicked, this,
            [this] { Change([this] { view_.ShowAllOfRule(CurrentRow()); }); });
    connect(ui_->butApplication, &QPushButton::clicked, this,
            [this] { Change([this] { view_.ShowAllOfApplication(CurrentRow()); }); });
    connect(ui_->comDataset, &QComboBox::activated, this, &FindingsPage::ChooseDataset);
    for (QTimer* const timer : {&filter_timer_, &details_timer_})
        timer->setSingleShot(true);
    connect(ui_->txtFilter, &QLineEdit::textChanged, this, [this] { filter_timer_.start(kFilterPause); });
    connect(ui_->txtFilter, &QLineEdit::returnPressed, this, [this] {
        TakeFilter();
        ui_->tabFindings->setFocus();
    });
    connect(&filter_timer_, &QTimer::timeout, this, &FindingsPage::TakeFilter);
    connect(&details_timer_, &QTimer::timeout, this, [this] { run_([this] { ShowDetails(); }); });
    connect(ui_->treeFacets, &QTreeWidget::itemChanged, this, &FindingsPage::ChooseFacet);
    connect(ui_->tabFindings->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &FindingsPage::EnableActions);
    connect(ui_->tabFindings->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this] { details_timer_.start(kDetailsPause); });
    connect(ui_->tabFindings, &QWidget::customContextMenuRequested, this, &FindingsPage::ShowMenu);
    ui_->tabFindings->installEventFilter(this);
    ui_->txtFilter->installEventFilter(this);
}

void FindingsPage::ArrangeColumns() {
    QTableView& table = *ui_->tabFindings;
    table.verticalHeader()->hide();
    table.verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    table.verticalHeader()->setDefaultSectionSize(table.fontMetrics().height() + 6);
    QHeaderView& header = *table.horizontalHeader();
    header.setSectionsMovable(true);
    header.setSectionsClickable(true);
    header.setHighlightSections(false);
    header.setSortIndicatorShown(true);
    header.setSortIndicator(static_cast<int>(view_.column()), Qt::AscendingOrder);
    header.setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    for (std::size_t i = 0; i < kWidths.size(); ++i)
        header.resizeSection(static_cast<int>(i), kWidths[i] * table.fontMetrics().averageCharWidth());
    const ColumnLayout layout = ReadColumnLayout(controller_.services().files);
    for (std::size_t place = 0; place < layout.size(); ++place) {
        const int column = static_cast<int>(layout[place].column);
        header.moveSection(header.visualIndex(column), static_cast<int>(place));
        header.resizeSection(column, layout[place].width);
    }
    const auto changed = [this] { columns_changed_ = true; };
    connect(&header, &QHeaderView::sectionMoved, this, changed);
    connect(&header, &QHeaderView::sectionResized, this, changed);
    connect(&header, &QHeaderView::sectionClicked, this, &FindingsPage::SortBy);
}

void FindingsPage::SaveColumns() {
    if (!std::exchange(columns_changed_, false)) return;
    const QHeaderView& header = *ui_->tabFindings->horizontalHeader();
    ColumnLayout layout;
    for (int place = 0; place < header.count(); ++place) {
        const int column = header.logicalIndex(place);
        layout.push_back({static_cast<FindingColumn>(column), header.sectionSize(column)});
    }
    try {
        SaveColumnLayout(controller_.services().files, layout);
    } catch (const Error& error) {
        controller_.services().log.WriteLog("WARNING: The columns of the findings could not be kept: " +
                                            error.Reason());
    }
}

void FindingsPage::ListDatasets() {
    if (!controller_.session().MasterConnection) return;
    const Hourglass hourglass;
    const Findings* const before = view_.findings();
    try {
        view_.ListDatasets(Catalogue(*controller_.session().MasterConnection));
    } catch (...) {
        ShowDataset();
        throw;
    }
    const bool same_list = ui_->comDataset->count() == static_cast<int>(view_.datasets().size());
    if (before == nullptr || view_.findings() != before || !same_list) ShowDataset();
}

void FindingsPage::ChooseDataset(int number) {
    run_([this, number] {
        const Hourglass hourglass;
        try {
            view_.ChooseDataset(static_cast<std::size_t>(number));
        } catch (...) {
            ShowDataset();
            throw;
        }
        ShowDataset();
    });
}

void FindingsPage::TakeFilter() {
    filter_timer_.stop();
    const std::string text = FromQString(ui_->txtFilter->text());
    if (text != view_.filter_text()) Change([&] { view_.SetFilter(text); });
}

void FindingsPage::SortBy(int column) {
    const auto chosen = static_cast<FindingColumn>(column);
    const bool descending = chosen == view_.column() && !view_.descending();
    ui_->tabFindings->horizontalHeader()->setSortIndicator(
        column, descending ? Qt::DescendingOrder : Qt::AscendingOrder);
    Change([&] { view_.Sort(chosen, descending); });
}

void FindingsPage::ChooseFacet(QTreeWidgetItem* item) {
    if (item->parent() == nullptr) return;
    Change([&] {
        view_.ChooseFacet(static_cast<Facet>(item->data(0, kFacet).toULongLong()),
                          item->data(0, kValue).toULongLong(), item->checkState(0) == Qt::Checked);
    });
}

void FindingsPage::Change(const std::function<void()>& change) {
    run_([&] {
        change();
        ShowRows();
    });
}

void FindingsPage::ShowDataset() {
    ui_->comDataset->clear();
    for (const CatalogueRow& row : view_.datasets()) {
        const std::string comment = row.Description.empty() ? "" : "  " + row.Description;
        ui_->comDataset->addItem(ToQString(row.Captured + "  " + row.Tree + comment));
    }
    ui_->comDataset->setCurrentIndex(view_.chosen() ? static_cast<int>(*view_.chosen()) : -1);
    ui_->comDataset->setEnabled(!view_.datasets().empty());
    FillFacets();
    ShowRows();
}

void FindingsPage::ShowRows() {
    const QSignalBlocker typing(ui_->txtFilter);
    if (FromQString(ui_->txtFilter->text()) != view_.filter_text())
        ui_->txtFilter->setText(ToQString(view_.filter_text()));
    ui_->txtFilter->setEnabled(view_.findings() != nullptr);
    model_->Reset();
    ShowFacetCounts();
    const std::string empty = view_.EmptyText();
    ui_->labEmpty->setText(ToQString(empty));
    ui_->stackFindings->setCurrentWidget(empty.empty() ? ui_->pageTable : ui_->pageEmpty);
    ui_->labCounts->setText(ToQString(view_.Counts()));
    std::string notes;
    for (const std::string& note : view_.Notes())
        notes += (notes.empty() ? "" : "\n") + note;
    if (view_.findings() != nullptr && view_.findings()->facts().incomplete)
        notes = "import not completed" + (notes.empty() ? "" : '\n' + notes);
    ui_->labNotes->setText(ToQString(notes));
    ui_->labNotes->setVisible(!notes.empty());
    if (empty.empty())
        ui_->tabFindings->setCurrentIndex(
            model_->index(0, ui_->tabFindings->horizontalHeader()->logicalIndex(0)));
    ShowDetails();
    EnableActions();
}

void FindingsPage::FillFacets() {
    const QSignalBlocker filling(ui_->treeFacets);
    ui_->treeFacets->clear();
    if (view_.findings() == nullptr) return;
    for (std::size_t facet = 0; facet < kFacets.size(); ++facet) {
        auto* const heading = new QTreeWidgetItem(ui_->treeFacets, {ToQString(kFacets[facet]), QString()});
        QFont bold = heading->font(0);
        bold.setBold(true);
        heading->setFont(0, bold);
        heading->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
        const std::vector<FacetValue>& values = view_.FacetValues(static_cast<Facet>(facet));
        for (std::size_t value = 0; value < values.size(); ++value) {
            const QString text = ToQString(values[value].text).replace('\n', ' ');
            auto* const item = new QTreeWidgetItem(heading, {text, QString()});
            item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
            item->setCheckState(0, Qt::Unchecked);
            item->setToolTip(0, PlainToolTip(text));
            item->setTextAlignment(1, Qt::AlignRight | Qt::AlignVCenter);
            item->setData(0, kFacet, QVariant::fromValue(facet));
            item->setData(0, kValue, QVariant::fromValue(value));
        }
        heading->setExpanded(true);
    }
}

void FindingsPage::ShowFacetCounts() {
    const QSignalBlocker filling(ui_->treeFacets);
    for (int i = 0; i < ui_->treeFacets->topLevelItemCount(); ++i) {
        QTreeWidgetItem& heading = *ui_->treeFacets->topLevelItem(i);
        const std::vector<FacetValue>& values = view_.FacetValues(static_cast<Facet>(i));
        for (int child = 0; child < heading.childCount(); ++child) {
            QTreeWidgetItem& item = *heading.child(child);
            const FacetValue& value = values[static_cast<std::size_t>(child)];
            item.setText(1, ToQString(GroupedCount(value.count)));
            item.setCheckState(0, value.chosen ? Qt::Checked : Qt::Unchecked);
            const bool hidden = value.count == 0 && !value.chosen;
            if (item.isHidden() != hidden) item.setHidden(hidden);
        }
    }
}

void FindingsPage::ShowDetails() {
    details_timer_.stop();
    const QModelIndex current = ui_->tabFindings->currentIndex();
    ui_->txtDetails->setHtml(current.isValid() ? FindingDetailsHtml(view_.Details(model_->RowOf(current)))
                                               : QString());
}

void FindingsPage::EnableActions() {
    const std::vector<std::uint32_t> rows = ChosenRows();
    for (QPushButton* const button : {ui_->butAccept, ui_->butCopy, ui_->butRule, ui_->butApplication})
        button->setEnabled(!rows.empty());
    ui_->butWithdraw->setEnabled(!rows.empty() && !view_.EntriesOf(rows).empty());
    ui_->butExport->setEnabled(view_.findings() != nullptr);
    ui_->butClear->setEnabled(view_.findings() != nullptr);
}

std::vector<std::uint32_t> FindingsPage::ChosenRows() const {
    // By ranges: an index for each cell of a million rows would take long.
    std::vector<std::uint32_t> rows;
    for (const QItemSelectionRange& range : ui_->tabFindings->selectionModel()->selection())
        for (int row = range.top(); row <= range.bottom(); ++row)
            rows.push_back(view_.rows()[static_cast<std::size_t>(row)]);
    return rows;
}

std::uint32_t FindingsPage::CurrentRow() const {
    return model_->RowOf(ui_->tabFindings->currentIndex());
}

bool FindingsPage::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress) return QWidget::eventFilter(watched, event);
    const auto& key = *static_cast<const QKeyEvent*>(event);
    if (watched == ui_->tabFindings && key.matches(QKeySequence::Copy)) {
        if (ui_->butCopy->isEnabled()) ui_->butCopy->click();
        return true;
    }
    if (watched == ui_->txtFilter && key.key() == Qt::Key_Down) {
        ui_->tabFindings->setFocus();
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

void FindingsPage::ShowMenu(QPoint place) {
    auto* const menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (QPushButton* const button : {ui_->butAccept, ui_->butWithdraw, ui_->butCopy, ui_->butRule,
                                      ui_->butApplication, ui_->butExport}) {
        QAction* const action = menu->addAction(button->text(), button, &QPushButton::click);
        action->setEnabled(button->isEnabled());
    }
    QMenu* const sort = menu->addMenu("&Sort by");
    for (std::size_t i = 0; i < kFindingColumns.size(); ++i)
        sort->addAction(ToQString(kFindingColumns[i]), this, [this, i] { SortBy(static_cast<int>(i)); });
    menu->popup(ui_->tabFindings->viewport()->mapToGlobal(place));
}

void FindingsPage::Accept() {
    AcceptDraft draft(*view_.findings(), ChosenRows());
    if (frmAccept(draft, this).exec() != QDialog::Accepted) return;
    view_.Accept(draft);
    ShowRows();
}

void FindingsPage::Withdraw() {
    const std::vector<std::uint32_t> rows = ChosenRows();
    if (!controller_.services().ui.Ask(view_.WithdrawQuestion(rows), MessageIcon::kQuestion, Answer::kNo))
        return;
    view_.Withdraw(rows);
    ShowRows();
}

void FindingsPage::Copy() {
    const Hourglass hourglass;
    QGuiApplication::clipboard()->setText(ToQString(view_.CopyText(ChosenRows())));
}

void FindingsPage::Export() {
    QFileDialog dialog(this, "Export Findings");
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    QStringList filters;
    for (const FindingFormat& format : FindingFormats())
        filters.append(ToQString(format.filter));
    dialog.setNameFilters(filters);
    dialog.setDefaultSuffix(SuffixOf(FindingFormats().front()));
    connect(&dialog, &QFileDialog::filterSelected, &dialog,
            [&dialog](const QString& filter) { dialog.setDefaultSuffix(SuffixOf(FormatOfFilter(filter))); });
    dialog.selectFile("Findings");
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return;
    const std::filesystem::path path = QFile::encodeName(dialog.selectedFiles().constFirst()).toStdString();
    const FindingFormat* const format = FindingFormatOf(path);
    const Hourglass hourglass;
    view_.Export(path, format == nullptr ? FormatOfFilter(dialog.selectedNameFilter()) : *format);
}

}  // namespace zorvel
