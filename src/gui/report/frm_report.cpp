#include "gui/report/frm_report.h"

#include <QClipboard>
#include <QCloseEvent>
#include <QElapsedTimer>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMouseEvent>
#include <QPrintDialog>
#include <QProgressDialog>
#include <QScopedValueRollback>
#include <QSignalBlocker>
#include <QSpinBox>
#include <cmath>
#include <string>
#include <utility>

#include "gui/report/report_copy.h"
#include "gui/report/report_print.h"
#include "gui/widgets/hourglass.h"
#include "gui/widgets/qt_text.h"
#include "gui/widgets/roomy_delegate.h"
#include "paper/report_painter.h"
#include "platform/write_in_place.h"
#include "shell/formats.h"
#include "shell/report_error.h"
#include "ui_frm_report.h"

namespace zorvel {
namespace {

constexpr int kTreeWidth = 260;
constexpr int kBarMargin = 6;
constexpr int kProgressInterval = 40;  // milliseconds between two looks at the pending events
constexpr int kPatience = 700;         // milliseconds ahead of a progress window

std::string Counted(std::size_t number, const char* one, const char* many) {
    return GroupedCount(number) + (number == 1 ? one : many);
}

const ReportFormat& FormatOfFilter(const QString& filter) {
    for (const ReportFormat& format : ReportFormats())
        if (filter == ToQString(format.filter)) return format;
    return ReportFormats().front();
}

// The suffix as file dialogs put it on a name.
QString SuffixOf(const ReportFormat& format) {
    return ToQString(format.suffix.substr(1));
}

bool ShowPrintDialog(QPrinter& printer, std::size_t pages, QWidget* window) {
    QPrintDialog dialog(&printer, window);
    dialog.setOptions(QAbstractPrintDialog::PrintToFile | QAbstractPrintDialog::PrintPageRange |
                      QAbstractPrintDialog::PrintCurrentPage | QAbstractPrintDialog::PrintCollateCopies |
                      QAbstractPrintDialog::PrintShowPageSize);
    dialog.setMinMax(1, static_cast<int>(pages));
    dialog.setFromTo(1, static_cast<int>(pages));
    return dialog.exec() == QDialog::Accepted;
}

}  // namespace

frmReport::frmReport(Services& services, std::shared_ptr<const Report> report, const AskInterrupted& ask)
    : services_(services),
      report_(std::move(report)),
      layout_(*report_, fonts_.metrics(), ask),
      ui_(std::make_unique<Ui::frmReport>()),
      ask_printer_(ShowPrintDialog) {
    setAttribute(Qt::WA_DeleteOnClose);
    ui_->setupUi(this);
    setWindowTitle(ToQString(report_->facts().caption));
    AddPageBox();
    ConnectActions();
    ui_->barSearch->setContentsMargins(kBarMargin, kBarMargin, kBarMargin, kBarMargin);
    ui_->barSearch->Serve(*ui_->viewReport, *ui_->viewReport, *this);
    FillTree();
    auto* size = new QLabel(ToQString(Counted(report_->rows().size(), " row", " rows") + " on " +
                                      Counted(layout_.page_count(), " page", " pages")));
    size->setObjectName("labSize");
    ui_->barStatus->addPermanentWidget(size);
    connect(ui_->viewReport, &ReportView::PageChanged, this, &frmReport::ShowPage);
    connect(ui_->viewReport, &ReportView::ZoomChanged, this, &frmReport::ShowZoom);
    ui_->viewReport->ShowReport(*report_, layout_, fonts_);
    ui_->viewReport->setFocus();
    ShowPage();
}

frmReport::~frmReport() = default;

void frmReport::AddPageBox() {
    page_box_ = new QSpinBox;
    page_box_->setObjectName("txtPage");
    page_box_->setAccessibleName("Page");
    page_box_->setKeyboardTracking(false);
    page_box_->setGroupSeparatorShown(true);
    page_box_->setButtonSymbols(QAbstractSpinBox::NoButtons);
    page_box_->setAlignment(Qt::AlignCenter);
    page_box_->setRange(1, static_cast<int>(layout_.page_count()));
    page_box_->setSuffix(ToQString(" of " + GroupedCount(layout_.page_count())));
    ui_->barTools->insertWidget(ui_->actNext, page_box_);
    ReportView& view = *ui_->viewReport;
    connect(page_box_, &QSpinBox::valueChanged, this,
            [&view](int number) { view.GoToPage(static_cast<std::size_t>(number) - 1); });
    connect(page_box_->findChild<QLineEdit*>(), &QLineEdit::returnPressed, this,
            [&view] { view.setFocus(); });
    zoom_label_ = new QLabel;
    zoom_label_->setObjectName("labZoom");
    zoom_label_->setAlignment(Qt::AlignCenter);
    zoom_label_->setMinimumWidth(fontMetrics().horizontalAdvance("0000 %"));
    ui_->barTools->insertWidget(ui_->actZoomIn, zoom_label_);
}

void frmReport::ConnectActions() {
    ReportView& view = *ui_->viewReport;
    const auto on = [this](QAction* action, auto&& operation) {
        connect(action, &QAction::triggered, this, std::forward<decltype(operation)>(operation));
        addAction(action);
    };
    on(ui_->actSave, [this] { Save(); });
    on(ui_->actPrint, [this] { Print(); });
    on(ui_->actSearch, [this] { ui_->barSearch->Open(); });
    on(ui_->actFirst, [&view] { view.GoToPage(0); });
    on(ui_->actPrevious, [&view] { view.GoToPage(view.page() - std::min<std::size_t>(view.page(), 1)); });
    on(ui_->actNext, [&view] { view.GoToPage(view.page() + 1); });
    on(ui_->actLast, [this, &view] { view.GoToPage(layout_.page_count() - 1); });
    on(ui_->actZoomOut, [&view] { view.ZoomOut(); });
    on(ui_->actZoomIn, [&view] { view.ZoomIn(); });
    ui_->actZoomIn->setShortcuts(
        {QKeySequence(Qt::CTRL | Qt::Key_Plus), QKeySequence(Qt::CTRL | Qt::Key_Equal)});
    on(ui_->actActualSize, [&view] { view.SetZoom(1); });
    on(ui_->actFitWidth, [&view] { view.SetFit(ReportView::Fit::kWidth); });
    on(ui_->actFitPage, [&view] { view.SetFit(ReportView::Fit::kPage); });
    on(ui_->actClose, [this] { close(); });
    on(ui_->actCopy, [this] { CopyFound(); });
    connect(&view, &QWidget::customContextMenuRequested, this, &frmReport::ShowCopyMenu);
}

void frmReport::FillTree() {
    QTreeView& tree = *ui_->treeGroups;
    tree.setItemDelegate(new RoomyDelegate(&tree));
    if (report_->rows().groups().empty()) {
        tree.hide();
        return;
    }
    groups_ = new GroupTreeModel(report_, this);
    tree.setModel(groups_);
    tree.setRootIsDecorated(report_->definition().groups.size() > 1);
    ui_->splitter->setSizes({kTreeWidth, width() - kTreeWidth});
    if (groups_->rowCount({}) == 1) tree.expand(groups_->index(0, 0, {}));
    connect(tree.selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex& index) {
                if (!following_) JumpTo(index);
            });
    // The current group is jumped to again when it is clicked; a click on another one makes it current first.
    tree.viewport()->installEventFilter(this);
    connect(&tree, &QTreeView::clicked, this, [this](const QModelIndex& index) {
        if (pressed_current_) JumpTo(index);
    });
}

bool frmReport::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::MouseButtonPress) {
        const QPoint place = static_cast<QMouseEvent*>(event)->position().toPoint();
        pressed_current_ = ui_->treeGroups->indexAt(place) == ui_->treeGroups->currentIndex();
    }
    return QMainWindow::eventFilter(watched, event);
}

void frmReport::JumpTo(const QModelIndex& index) {
    if (index.isValid()) ui_->viewReport->GoToGroup(GroupTreeModel::Group(index));
}

void frmReport::ShowPage() {
    const std::size_t page = ui_->viewReport->page();
    const QSignalBlocker showing(page_box_);
    page_box_->setValue(static_cast<int>(page) + 1);
    for (QAction* action : {ui_->actFirst, ui_->actPrevious})
        action->setEnabled(page > 0);
    for (QAction* action : {ui_->actNext, ui_->actLast})
        action->setEnabled(page + 1 < layout_.page_count());
    FollowPage();
}

void frmReport::ShowZoom() {
    const ReportView& view = *ui_->viewReport;
    constexpr double kPercent = 100;
    zoom_label_->setText(QString::number(std::lround(view.zoom() * kPercent)) + " %");
    ui_->actFitWidth->setChecked(view.fit() == ReportView::Fit::kWidth);
    ui_->actFitPage->setChecked(view.fit() == ReportView::Fit::kPage);
}

void frmReport::FollowPage() {
    if (groups_ == nullptr) return;
    QTreeView& tree = *ui_->treeGroups;
    const std::size_t page = ui_->viewReport->page();
    const QModelIndex current = tree.currentIndex();
    if (current.isValid() && layout_.PageOfGroup(GroupTreeModel::Group(current)) == page) return;
    // The first group that begins on the page, else the one that goes on there.
    std::size_t group = 0;
    std::size_t behind = report_->rows().groups().size();
    while (group < behind) {
        const std::size_t middle = group + (behind - group) / 2;
        if (layout_.PageOfGroup(middle) < page)
            group = middle + 1;
        else
            behind = middle;
    }
    const bool begins = group < report_->rows().groups().size() && layout_.PageOfGroup(group) == page;
    if (!begins && group > 0) --group;
    QModelIndex index = groups_->IndexOf(group);
    for (QModelIndex outer = index.parent(); outer.isValid(); outer = outer.parent())
        if (!tree.isExpanded(outer)) index = outer;
    const QScopedValueRollback following(following_, true);
    tree.setCurrentIndex(index);
}

void frmReport::Handle(const std::function<void()>& operation) {
    if (operating_) return;
    const QScopedValueRollback operating(operating_, true);
    try {
        operation();
    } catch (...) {
        TellUnexpectedError(services_.ui, services_.log, CurrentError(), "frmReport");
    }
}

void frmReport::closeEvent(QCloseEvent* event) {
    // What is under way works on the report.
    event->setAccepted(!operating_);
}

void frmReport::ShowCopyMenu(QPoint point) {
    const ReportView& view = *ui_->viewReport;
    const std::optional<TextPlace> place = view.PlaceAt(point);
    if (!place) return;
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    const auto add = [menu](const char* name, const QString& text) {
        menu->addAction(name, menu, [text] { QGuiApplication::clipboard()->setText(text); });
    };
    add("Copy &Value", ValueText(*report_, *place));
    if (place->kind == TextPlace::Kind::kCell) add("Copy &Row", RowText(*report_, place->index));
    menu->popup(view.viewport()->mapToGlobal(point));
}

void frmReport::CopyFound() {
    const std::optional<MarkedText>& mark = ui_->viewReport->mark();
    if (mark) QGuiApplication::clipboard()->setText(ValueText(*report_, mark->place));
}

void frmReport::Save() {
    Handle([this] {
        QFileDialog dialog(this, "Save Report");
        dialog.setAcceptMode(QFileDialog::AcceptSave);
        QStringList filters;
        for (const ReportFormat& format : ReportFormats())
            filters.append(ToQString(format.filter));
        dialog.setNameFilters(filters);
        dialog.setDefaultSuffix(SuffixOf(ReportFormats().front()));
        connect(&dialog, &QFileDialog::filterSelected, &dialog, [&dialog](const QString& filter) {
            dialog.setDefaultSuffix(SuffixOf(FormatOfFilter(filter)));
        });
        dialog.selectFile(ToQString(report_->facts().caption).replace('/', ' '));
        if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return;
        QString name = dialog.selectedFiles().constFirst();
        const ReportFormat* format = FormatOf(QFile::encodeName(name).toStdString());
        if (format == nullptr) {
            // The dialog has asked about another name.
            format = &FormatOfFilter(dialog.selectedNameFilter());
            name += ToQString(format->suffix);
            if (QFileInfo::exists(name) &&
                !services_.ui.Ask(FromQString(name) + " already exists.\nDo you want to replace it?",
                                  MessageIcon::kExclamation, Answer::kNo))
                return;
        }
        Write(QFile::encodeName(name).toStdString(), *format);
    });
}

void frmReport::Write(const std::filesystem::path& path, const ReportFormat& format) {
    bool written = true;
    if (format.write == nullptr) {
        written = WithProgress("Saving the report...", [&](const PageProgress& progress) {
            return WritePdf(*report_, layout_, fonts_, AllPages(layout_), PaperOf(layout_), path, progress);
        });
    } else {
        const Hourglass hourglass;
        WriteInPlace(path, [&](OutputFile& file) { format.write(*report_, file, {}); });
    }
    if (written) ui_->barStatus->showMessage("Saved as " + QFile::decodeName(path.c_str()));
}

void frmReport::Print() {
    Handle([this] {
        QPrinter printer(QPrinter::HighResolution);
        PreparePrinter(printer, *report_, layout_);
        if (!ask_printer_(printer, layout_.page_count(), this)) return;
        const auto pages = PagesToPrint(printer, layout_.page_count(), ui_->viewReport->page());
        const bool printed = WithProgress("Printing the report...", [&](const PageProgress& progress) {
            // A file that is printed into tells of a full disk only when it is written here.
            if (printer.outputFormat() == QPrinter::PdfFormat) {
                const std::filesystem::path path = QFile::encodeName(printer.outputFileName()).toStdString();
                return WritePdf(*report_, layout_, fonts_, pages, printer.pageLayout(), path, progress);
            }
            return PrintPages(printer, layout_, fonts_, pages, progress);
        });
        if (printed)
            ui_->barStatus->showMessage(ToQString(Counted(pages.size(), " page", " pages") + " printed"));
    });
}

bool frmReport::WithProgress(const QString& text, const std::function<bool(const PageProgress&)>& work) {
    QProgressDialog window(text, "Cancel", 0, 0, this);
    window.setWindowModality(Qt::ApplicationModal);
    window.setMinimumDuration(kPatience);
    QElapsedTimer since_last;
    since_last.start();
    return work([&](std::size_t done, std::size_t pages) {
        if (done != 0 && since_last.elapsed() < kProgressInterval) return true;
        since_last.restart();
        window.setMaximum(static_cast<int>(pages));
        window.setLabelText(text +
                            ToQString(" page " + GroupedCount(done + 1) + " of " + GroupedCount(pages)));
        window.setValue(static_cast<int>(done));  // lets pending events run
        return !window.wasCanceled();
    });
}

}  // namespace zorvel
