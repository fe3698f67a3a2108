#include "gui/text/search_bar.h"

#include <QKeyEvent>
#include <QShortcut>
#include <QStyle>

#include "gui/widgets/qt_text.h"
#include "shell/formats.h"
#include "ui_search_bar.h"

namespace zorvel {
namespace {

// Milliseconds after the last key at which the matches are counted: a count passes the whole text.
constexpr int kCountDelay = 250;

}  // namespace

SearchBar::SearchBar(QWidget* parent) : QWidget(parent), ui_(std::make_unique<Ui::SearchBar>()) {
    ui_->setupUi(this);
    hide();
    count_.setSingleShot(true);
    count_.setInterval(kCountDelay);
    connect(&count_, &QTimer::timeout, this, &SearchBar::ShowCount);
    connect(ui_->txtSearch, &QLineEdit::textChanged, this, &SearchBar::Changed);
    connect(ui_->checkCase, &QCheckBox::toggled, this, &SearchBar::Changed);
    connect(ui_->butNext, &QPushButton::clicked, this, [this] { Search(SearchStart::kBehind); });
    connect(ui_->butPrevious, &QPushButton::clicked, this, [this] { Search(SearchStart::kAhead); });
    ui_->butClose->setIcon(style()->standardIcon(QStyle::SP_TitleBarCloseButton));
    connect(ui_->butClose, &QToolButton::clicked, this, &SearchBar::Close);
}

SearchBar::~SearchBar() = default;

void SearchBar::Serve(SearchTarget& target, QWidget& view, QWidget& owner) {
    target_ = &target;
    view_ = &view;
    const auto on = [&](const QKeySequence& key, auto action) {
        auto* shortcut = new QShortcut(key, &owner);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        connect(shortcut, &QShortcut::activated, this, action);
    };
    on(QKeySequence::Find, [this] { Open(); });
    on(Qt::Key_F3, [this] { Search(SearchStart::kBehind); });
    on(Qt::SHIFT | Qt::Key_F3, [this] { Search(SearchStart::kAhead); });
}

void SearchBar::ForgetMatches() {
    Say({}, {});
    if (isVisible() && !ui_->txtSearch->text().isEmpty()) count_.start();
}

void SearchBar::Say(const QString& matches, const QString& place) {
    matches_ = matches;
    place_ = place;
    const QString between = matches.isEmpty() || place.isEmpty() ? QString() : QStringLiteral(" - ");
    ui_->labFound->setText(matches + between + place);
}

void SearchBar::Open() {
    const QString needle = target_->SelectedNeedle();
    show();
    if (!needle.isEmpty()) ui_->txtSearch->setText(needle);
    ui_->txtSearch->setFocus(Qt::ShortcutFocusReason);
    ui_->txtSearch->selectAll();
}

void SearchBar::Close() {
    hide();
    view_->setFocus(Qt::OtherFocusReason);
}

void SearchBar::Changed() {
    const bool empty = ui_->txtSearch->text().isEmpty();
    ui_->butNext->setEnabled(!empty);
    ui_->butPrevious->setEnabled(!empty);
    Say({}, {});
    count_.stop();
    if (empty) return;
    count_.start();
    Search(SearchStart::kSelection);
}

void SearchBar::Search(SearchStart start) {
    const QString needle = ui_->txtSearch->text();
    if (needle.isEmpty()) {
        Open();
        return;
    }
    switch (target_->Search(needle, ui_->checkCase->isChecked(), start)) {
        case SearchResult::kNothing:
            count_.stop();
            show();
            Say(QStringLiteral("Nothing was found"), {});
            break;
        case SearchResult::kFound:
            Say(matches_, {});
            break;
        case SearchResult::kWrapped:
            Say(matches_, start == SearchStart::kAhead ? QStringLiteral("went on from the end")
                                                       : QStringLiteral("went on from the top"));
            break;
    }
}

void SearchBar::ShowCount() {
    const std::size_t count = target_->CountMatches(ui_->txtSearch->text(), ui_->checkCase->isChecked());
    const char* unit = count == 1 ? " match" : " matches";
    Say(ToQString(GroupedCount(count) + unit), place_);
}

// What the bar's controls leave over; a dialog would take it for its buttons.
void SearchBar::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            Search(event->modifiers().testFlag(Qt::ShiftModifier) ? SearchStart::kAhead
                                                                  : SearchStart::kBehind);
            break;
        case Qt::Key_Escape:
            Close();
            break;
        default:
            QWidget::keyPressEvent(event);
    }
}

}  // namespace zorvel
