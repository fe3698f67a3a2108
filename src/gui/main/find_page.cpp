#include "gui/main/find_page.h"

#include <QClipboard>
#include <QFocusEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QTimer>
#include <utility>

#include "gui/widgets/qt_text.h"
#include "ui_find_page.h"

namespace zorvel {
namespace {

// Whether a key changes the text or starts the search; keys that move about leave the results in sight.
bool EntersText(const QKeyEvent& key) {
    if (key.modifiers() & (Qt::AltModifier | Qt::ControlModifier | Qt::MetaModifier)) return false;
    return !key.text().isEmpty() && key.key() != Qt::Key_Tab && key.key() != Qt::Key_Backtab &&
           key.key() != Qt::Key_Escape;
}

}  // namespace

FindPage::FindPage(const Files& files, UserInterface& user, QWidget* parent)
    : QWidget(parent), files_(files), user_(user), ui_(std::make_unique<Ui::FindPage>()) {
    ui_->setupUi(this);
    for (const PredefinedSearch& search : PredefinedSearches)
        ui_->comFind->addItem(ToQString(search.name));
    ui_->comFind->setCurrentIndex(-1);
    ui_->comFind->setEditText(ToQString(box_.comFind()));
    // What is typed is searched as it is typed: nothing completes it.
    ui_->comFind->setCompleter(nullptr);
    // The keys and the focus are the box's own, the clicks those of the line edit in it.
    ui_->comFind->installEventFilter(this);
    ui_->comFind->lineEdit()->installEventFilter(this);
    connect(ui_->comFind, &QComboBox::activated, this, [this](int index) {
        box_.Choose(static_cast<std::size_t>(index));
        ShowDetail();
    });
    connect(ui_->comFind->lineEdit(), &QLineEdit::textEdited, this, [this](const QString& text) {
        box_.Edit(FromQString(text));
        ShowDetail();
    });
    connect(ui_->butToClipBoard, &QPushButton::clicked, this, &FindPage::SendToClipboard);
    ShowDetail();
    ShowInfo();
}

FindPage::~FindPage() = default;

std::optional<std::string> FindPage::PatternToFind() {
    if (ToQString(FromQString(ui_->comFind->currentText())) != ui_->comFind->currentText()) {
        user_.Tell("The expression holds a character that the code page of the streams lacks.",
                   MessageIcon::kExclamation);
    } else if (box_.CanStart()) {
        return std::string(box_.FindPattern());
    }
    ui_->comFind->setFocus();
    ui_->comFind->lineEdit()->selectAll();
    return std::nullopt;
}

bool FindPage::eventFilter(QObject* watched, QEvent* event) {
    bool done = false;
    switch (event->type()) {
        case QEvent::Wheel:
            // A wheel that only passes by chooses nothing.
            event->ignore();
            return true;
        case QEvent::FocusIn:
            Enter(static_cast<const QFocusEvent*>(event)->reason());
            break;
        case QEvent::MouseButtonRelease:
            // What the mouse has marked meanwhile stays as it is.
            if (std::exchange(clicked_into_, false) && !ui_->comFind->lineEdit()->hasSelectedText())
                SelectText();
            break;
        case QEvent::KeyPress:
            done = PressKey(*static_cast<const QKeyEvent*>(event));
            break;
        default:
            break;
    }
    return done || QWidget::eventFilter(watched, event);
}

void FindPage::Enter(Qt::FocusReason reason) {
    clicked_into_ = reason == Qt::MouseFocusReason;
    const bool comes_back = reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason;
    if (!clicked_into_ && !comes_back) SelectText();
}

void FindPage::SelectText() {
    // After the line edit has placed its cursor, which would clear a selection made now.
    QTimer::singleShot(0, ui_->comFind->lineEdit(), &QLineEdit::selectAll);
}

bool FindPage::PressKey(const QKeyEvent& event) {
    if (!EntersText(event)) return false;
    const bool enter = event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
    const bool start = box_.PressKey(enter ? FindBox::kEnterKey : event.key());
    ShowDetail();
    if (start) Q_EMIT SearchWanted();
    return enter;
}

void FindPage::ShowDetail() {
    ui_->rtfPrompt->setPlainText(ToQString(box_.detail()));
    ui_->rtfDetail->setCurrentWidget(ui_->rtfPrompt);
    ui_->butToClipBoard->setEnabled(!box_.detail().empty());
}

void FindPage::ShowInfo() {
    ui_->labInfo->setTitle(box_.labInfo_shown() ? ToQString(box_.labInfo()) : QString());
}

void FindPage::HideLabInfo() {
    box_.HideLabInfo();
    ShowInfo();
}

void FindPage::LoadResults(std::string_view path) {
    ui_->rtfResults->ReadFile(files_, path);
    ui_->rtfDetail->setCurrentWidget(ui_->rtfResults);
    ui_->butToClipBoard->setEnabled(true);
}

void FindPage::ShowLabInfo(std::string_view text) {
    box_.ShowLabInfo(text);
    ShowInfo();
}

void FindPage::SendToClipboard() {
    QClipboard* const clipboard = QGuiApplication::clipboard();
    clipboard->clear();
    if (ui_->rtfDetail->currentWidget() == ui_->rtfResults) {
        clipboard->setMimeData(ui_->rtfResults->MakeMimeData());
    } else {
        LineView prompt;
        prompt.SetRichText("{\\rtf1\\ansi " + std::string(box_.detail()) + "\\par\r\n}");
        clipboard->setMimeData(prompt.MakeMimeData());
    }
    user_.Tell("Results of Find have been sent to Clipboard..", MessageIcon::kInformation);
}

}  // namespace zorvel
