#include "gui/text/frm_view_log.h"

#include <QShortcut>

#include "gui/widgets/hourglass.h"
#include "gui/widgets/qt_text.h"
#include "ui_frm_view_log.h"
#include "viewers/log_view.h"

namespace zorvel {

frmViewLog::frmViewLog(QWidget* parent) : QDialog(parent), ui_(std::make_unique<Ui::frmViewLog>()) {
    ui_->setupUi(this);
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    ui_->barSearch->Serve(*ui_->RichTextBox1, *ui_->RichTextBox1, *this);
    connect(ui_->cmdOK, &QPushButton::clicked, this, &QDialog::accept);
    const auto next = [this] { GoTo(problems_.Next(ui_->RichTextBox1->CursorLine())); };
    const auto previous = [this] { GoTo(problems_.Previous(ui_->RichTextBox1->CursorLine())); };
    connect(ui_->butNextProblem, &QPushButton::clicked, this, next);
    connect(ui_->butPreviousProblem, &QPushButton::clicked, this, previous);
    connect(new QShortcut(Qt::Key_F8, this), &QShortcut::activated, this, next);
    connect(new QShortcut(Qt::SHIFT | Qt::Key_F8, this), &QShortcut::activated, this, previous);
    connect(ui_->RichTextBox1, &LineView::CursorMoved, this, &frmViewLog::ShowProblem);
    ShowProblem();
}

frmViewLog::~frmViewLog() = default;

bool frmViewLog::Open(const Services& services) {
    const Hourglass hourglass;
    return LogView(services).Open([&](std::string_view path) { Show(path, services.files); });
}

void frmViewLog::Show(std::string_view path, const Files& files) {
    LineView& view = *ui_->RichTextBox1;
    view.ReadFile(files, path);
    problems_ = LogProblems(view.lines());
    view.Select(view.lines().End(), view.lines().End());
}

void frmViewLog::GoTo(std::optional<std::size_t> line) {
    if (!line) return;
    LineView& view = *ui_->RichTextBox1;
    view.Select(view.lines().LineEnd(*line), view.lines().LineBegin(*line));
    view.setFocus(Qt::OtherFocusReason);  // also because the button may be of no more use
}

void frmViewLog::ShowProblem() {
    const std::size_t line = ui_->RichTextBox1->CursorLine();
    ui_->labProblem->setText(ToQString(problems_.Text(line)));
    ui_->butNextProblem->setEnabled(problems_.Next(line).has_value());
    ui_->butPreviousProblem->setEnabled(problems_.Previous(line).has_value());
}

}  // namespace zorvel
