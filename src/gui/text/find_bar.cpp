#include "gui/text/find_bar.h"

#include <QKeyEvent>
#include <QShortcut>
#include <QStyle>

#include "gui/widgets/qt_text.h"
#include "shell/formats.h"
#include "ui_find_bar.h"

namespace zorvel {
namespace {

// Milliseconds after the last key at which the matches are counted: a count passes the whole text.
constexpr int kCountDelay = 250;

}  // namespace

FindBar::FindBar(QWidget* parent) : QWidget(parent), ui_(std::make_unique<Ui::FindBar>()) {
    ui_->setupUi(this);
    hide();
    count_.setSingleShot(true);
    count_.setInterval(kCountDelay);
    connect(&count_, &QTimer::timeout, this, &FindBar::ShowCount);
    connect(ui_->txtFind, &QLineEdit::textChanged, this, &FindBar::Changed);
    connect(ui_->checkCase, &QCheckBox::toggled, this, &FindBar::Changed);
    connect(ui_->butNext, &QPushButton::clicked, this, [this] { Find(FindStart::kBehind); });
    connect(ui_->butPrevious, &QPushButton::clicked, this, [this] { Find(FindStart::kAhead); });
    ui_->butClose->setIcon(style()->standardIcon(QStyle::SP_TitleBarCloseButton));
    connect(ui_->butClose, &QToolButton::clicked, this, &FindBar::Close);
}

FindBar::~FindBar() = default;

void FindBar::Serve(FindTarget& target, QWidget& view, QWidget& owner) {
    target_ = &target;
    view_ = &view;
    const auto on = [&](const QKeySequence& key, auto action) {
        auto* shortcut = new QShortcut(key, &owner);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        connect(shortcut, &QShortcut::activated, this, action);
    };
    on(QKeySequence::Find, [this] { Open(); });
    on(Qt::Key_F3, [this] { Find(FindStart::kBehind); });
    on(Qt::SHIFT | Qt::Key_F3, [this] { Find(FindStart::kAhead); });
}

void FindBar::ForgetMatches() {
    Say({}, {});
    if (isVisible() && !ui_->txtFind->text().isEmpty()) count_.start();
}

void FindBar::Say(const QString& matches, const QString& place) {
    matches_ = matches;
    place_ = place;
    const QString between = matches.isEmpty() || place.isEmpty() ? QString() : QStringLiteral(" - ");
    ui_->labFound->setText(matches + between + place);
}

void FindBar::Open() {
    const QString needle = target_->SelectedNeedle();
    show();
    if (!needle.isEmpty()) ui_->txtFind->setText(needle);
    ui_->txtFind->setFocus(Qt::ShortcutFocusReason);
    ui_->txtFind->selectAll();
}

void FindBar::Close() {
    hide();
    view_->setFocus(Qt::OtherFocusReason);
}

void FindBar::Changed() {
    const bool empty = ui_->txtFind->text().isEmpty();
    ui_->butNext->setEnabled(!empty);
    ui_->butPrevious->setEnabled(!empty);
    Say({}, {});
    count_.stop();
    if (empty) return;
    count_.start();
    Find(FindStart::kSelection);
}

void FindBar::Find(FindStart start) {
    const QString needle = ui_->txtFind->text();
    if (needle.isEmpty()) {
        Open();
        return;
    }
    switch (target_->Find(needle, ui_->checkCase->isChecked(), start)) {
        case FindResult::kNothing:
            count_.stop();
            show();
            Say(QStringLiteral("Nothing was found"), {});
            break;
        case FindResult::kFound:
            Say(matches_, {});
            break;
        case FindResult::kWrapped:
            Say(matches_, start == FindStart::kAhead ? QStringLiteral("went on from the end")
                                                     : QStringLiteral("went on from the top"));
            break;
    }
}

void FindBar::ShowCount() {
    const std::size_t count = target_->CountMatches(ui_->txtFind->text(), ui_->checkCase->isChecked());
    const char* unit = count == 1 ? " match" : " matches";
    Say(ToQString(GroupedCount(count) + unit), place_);
}

// What the bar's controls leave over; a dialog would take it for its buttons.
void FindBar::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            Find(event->modifiers().testFlag(Qt::ShiftModifier) ? FindStart::kAhead : FindStart::kBehind);
            break;
        case Qt::Key_Escape:
            Close();
            break;
        default:
            QWidget::keyPressEvent(event);
    }
}

}  // namespace zorvel
