#include "gui/text/line_view.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QFontDatabase>
#include <QFontMetricsF>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <string>
#include <tuple>
#include <utility>

#include "gui/text/line_painter.h"
#include "gui/text/lines_mime_data.h"
#include "gui/widgets/qt_text.h"
#include "viewers/text_search.h"

namespace zorvel {
namespace {

constexpr int kMargin = 4;                // pixels left of the text
constexpr int kDragInterval = 50;         // milliseconds between two steps of a selection that scrolls
constexpr std::size_t kContext = 3;       // lines or columns that are kept in sight around a match
constexpr std::size_t kLongNeedle = 200;  // characters of a selection that nobody means to look for

int ToScroll(std::size_t number) {
    return static_cast<int>(std::min<std::size_t>(number, std::numeric_limits<int>::max()));
}

}  // namespace

LineView::LineView(QWidget* parent)
    : QAbstractScrollArea(parent), lines_(std::make_shared<const RichLines>()) {
    setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    setFocusPolicy(Qt::StrongFocus);
    setBackgroundRole(QPalette::Base);
    viewport()->setBackgroundRole(QPalette::Base);
    viewport()->setCursor(Qt::IBeamCursor);
    Measure();
}

LineView::~LineView() = default;

void LineView::ReadFile(const Files& files, std::string_view path) {
    const auto lines = std::make_shared<RichLines>();
    lines->ReadFile(files, path);
    SetLines(lines);
}

void LineView::SetRichText(std::string_view rtf) {
    const auto lines = std::make_shared<RichLines>();
    ReadRichText(rtf, *lines);
    SetLines(lines);
}

void LineView::Clear() {
    SetLines(std::make_shared<const RichLines>());
}

void LineView::SetLines(std::shared_ptr<const RichLines> lines) {
    lines_ = std::move(lines);
    drag_timer_.stop();
    dragging_ = false;
    anchor_ = cursor_ = wanted_column_ = 0;
    UpdateScrollBars();
    verticalScrollBar()->setValue(0);
    horizontalScrollBar()->setValue(0);
    viewport()->update();
    Q_EMIT CursorMoved();
}

// Geometry

void LineView::Measure() {
    const QFontMetricsF metrics(font());
    cell_.width = std::max(metrics.horizontalAdvance(QLatin1Char('M')), 1.0);
    cell_.height = std::max(std::ceil(metrics.height()), 1.0);
    cell_.ascent = metrics.ascent();
    UpdateScrollBars();
    viewport()->update();
}

void LineView::UpdateScrollBars() {
    verticalScrollBar()->setRange(0, ToScroll(lines_->size() - std::min(lines_->size(), Rows())));
    verticalScrollBar()->setPageStep(ToScroll(Rows()));
    const std::size_t columns = lines_->columns() + 1;  // the cursor stands behind the last character
    horizontalScrollBar()->setRange(0, ToScroll(columns - std::min(columns, Columns())));
    horizontalScrollBar()->setPageStep(ToScroll(Columns()));
    constexpr int kHorizontalStep = 4;
    horizontalScrollBar()->setSingleStep(kHorizontalStep);
}

std::size_t LineView::Rows() const {
    return static_cast<std::size_t>(std::max(viewport()->height() / cell_.height, 1.0));
}

std::size_t LineView::Columns() const {
    return static_cast<std::size_t>(std::max((viewport()->width() - kMargin) / cell_.width, 1.0));
}

std::size_t LineView::FirstLine() const {
    return static_cast<std::size_t>(verticalScrollBar()->value());
}

std::size_t LineView::FirstColumn() const {
    return static_cast<std::size_t>(horizontalScrollBar()->value());
}

QRectF LineView::CharacterRect(std::size_t offset) const {
    const double column = static_cast<double>(lines_->Column(offset)) - static_cast<double>(FirstColumn());
    const double row = static_cast<double>(lines_->LineAt(offset)) - static_cast<double>(FirstLine());
    return {kMargin + column * cell_.width, row * cell_.height, cell_.width, cell_.height};
}

std::size_t LineView::OffsetAt(QPoint point) const {
    if (lines_->size() == 0) return 0;
    const double row = std::floor(point.y() / cell_.height) + verticalScrollBar()->value();
    const double column = std::round((point.x() - kMargin) / cell_.width) + horizontalScrollBar()->value();
    const auto line = static_cast<std::size_t>(std::clamp(row, 0.0, static_cast<double>(lines_->size() - 1)));
    return lines_->OffsetAt(line, static_cast<std::size_t>(std::max(column, 0.0)));
}

void LineView::EnsureVisible(std::size_t offset) {
    if (lines_->size() == 0) return;
    const std::size_t line = lines_->LineAt(offset);
    if (line < FirstLine() || line >= FirstLine() + Rows()) {
        // A step beyond the edge scrolls by that step; what is further away comes to the middle.
        const bool above = line < FirstLine();
        const std::size_t distance = above ? FirstLine() - line : line - FirstLine() - Rows() + 1;
        std::size_t first = line - std::min(line, Rows() / 2);
        if (distance <= kContext) first = above ? line : line + 1 - Rows();
        verticalScrollBar()->setValue(ToScroll(first));
    }
    const std::size_t column = lines_->Column(offset);
    if (column < FirstColumn())
        horizontalScrollBar()->setValue(ToScroll(column - std::min(column, kContext)));
    else if (column >= FirstColumn() + Columns())
        horizontalScrollBar()->setValue(ToScroll(column + kContext - std::min(column, Columns())));
}

QSize LineView::sizeHint() const {
    constexpr int kColumns = 110;
    constexpr int kRows = 32;
    return {static_cast<int>(kColumns * cell_.width), static_cast<int>(kRows * cell_.height)};
}

QSize LineView::minimumSizeHint() const {
    constexpr int kColumns = 30;
    constexpr int kRows = 5;
    return {static_cast<int>(kColumns * cell_.width), static_cast<int>(kRows * cell_.height)};
}

void LineView::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    LinePainter lines(painter, *lines_, palette(), font(), cell_.width);
    lines.SetSelection(selection_begin(), selection_end());
    const int top = std::max(event->rect().top(), 0);
    const auto first = FirstLine() + static_cast<std::size_t>(top / cell_.height);
    for (std::size_t line = first; line < lines_->size(); ++line) {
        const double y = static_cast<double>(line - FirstLine()) * cell_.height;
        if (y > event->rect().bottom()) break;
        lines.Paint(line, QRectF(kMargin, y, viewport()->width() - kMargin, cell_.height), FirstColumn(),
                    cell_.ascent);
    }
    if (!hasFocus() || lines_->size() == 0) return;
    const QRectF place = CharacterRect(cursor_);
    painter.fillRect(QRectF(place.left(), place.top(), 1, place.height()), palette().text());
}

void LineView::resizeEvent(QResizeEvent* /*event*/) {
    UpdateScrollBars();
}

void LineView::changeEvent(QEvent* event) {
    QAbstractScrollArea::changeEvent(event);
    if (event->type() == QEvent::FontChange) Measure();
}

void LineView::focusInEvent(QFocusEvent* /*event*/) {
    viewport()->update();
}

void LineView::focusOutEvent(QFocusEvent* /*event*/) {
    viewport()->update();
}

void LineView::scrollContentsBy(int /*dx*/, int /*dy*/) {
    viewport()->update();
}

// Selection

void LineView::Select(std::size_t anchor, std::size_t cursor) {
    anchor_ = std::min(anchor, lines_->End());
    MoveCursor(cursor, true);
}

void LineView::SelectAll() {
    anchor_ = 0;
    cursor_ = lines_->End();
    viewport()->update();
    Q_EMIT CursorMoved();
}

void LineView::MoveCursor(std::size_t offset, bool extend) {
    cursor_ = std::min(offset, lines_->End());
    if (!extend) anchor_ = cursor_;
    wanted_column_ = lines_->Column(cursor_);
    EnsureVisible(cursor_);
    viewport()->update();
    Q_EMIT CursorMoved();
}

void LineView::MoveLines(std::ptrdiff_t lines, bool extend) {
    if (lines_->size() == 0) return;
    const auto line = static_cast<std::ptrdiff_t>(lines_->LineAt(cursor_)) + lines;
    const auto last = static_cast<std::ptrdiff_t>(lines_->size()) - 1;
    const std::size_t column = wanted_column_;
    MoveCursor(lines_->OffsetAt(static_cast<std::size_t>(std::clamp<std::ptrdiff_t>(line, 0, last)), column),
               extend);
    wanted_column_ = column;
}

// True when the key moves the cursor or the view.
bool LineView::MoveBy(const QKeyEvent& key) {
    const bool extend = key.modifiers().testFlag(Qt::ShiftModifier);
    const bool control = key.modifiers().testFlag(Qt::ControlModifier);
    const auto page = static_cast<std::ptrdiff_t>(Rows());
    QScrollBar& bar = *verticalScrollBar();
    const std::size_t line = lines_->size() == 0 ? 0 : lines_->LineAt(cursor_);
    switch (key.key()) {
        case Qt::Key_Left:
            MoveCursor(cursor_ - std::min<std::size_t>(cursor_, 1), extend);
            return true;
        case Qt::Key_Right:
            MoveCursor(cursor_ + 1, extend);
            return true;
        case Qt::Key_Up:
        case Qt::Key_Down: {
            const int step = key.key() == Qt::Key_Up ? -1 : 1;
            if (control)
                bar.setValue(bar.value() + step);
            else
                MoveLines(step, extend);
            return true;
        }
        case Qt::Key_PageUp:
            bar.setValue(bar.value() - ToScroll(Rows()));
            MoveLines(-page, extend);
            return true;
        case Qt::Key_PageDown:
            bar.setValue(bar.value() + ToScroll(Rows()));
            MoveLines(page, extend);
            return true;
        case Qt::Key_Home:
            MoveCursor(control || lines_->size() == 0 ? 0 : lines_->LineBegin(line), extend);
            return true;
        case Qt::Key_End:
            MoveCursor(control || lines_->size() == 0 ? lines_->End() : lines_->LineEnd(line), extend);
            return true;
        default:
            return false;
    }
}

void LineView::keyPressEvent(QKeyEvent* event) {
    if (event == QKeySequence::Copy)
        Copy();
    else if (event == QKeySequence::SelectAll)
        SelectAll();
    else if (!MoveBy(*event))
        event->ignore();  // not for the scroll bars: Enter and ESC are the window's
}

void LineView::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return;
    dragging_ = true;
    word_begin_ = word_end_ = 0;
    MoveCursor(OffsetAt(event->pos()), event->modifiers().testFlag(Qt::ShiftModifier));
}

void LineView::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return;
    dragging_ = true;
    // The character under the mouse, not the gap next to it.
    const QPoint half_cell(static_cast<int>(cell_.width / 2), 0);
    std::tie(word_begin_, word_end_) = lines_->WordAt(OffsetAt(event->pos() - half_cell));
    Select(word_begin_, word_end_);
}

void LineView::DragTo(QPoint point) {
    const std::size_t offset = OffsetAt(point);
    if (word_begin_ == word_end_) {
        MoveCursor(offset, true);
        return;
    }
    const auto [begin, end] = lines_->WordAt(offset);
    if (offset < word_begin_)
        Select(word_end_, begin);
    else
        Select(word_begin_, std::max(word_end_, end));
}

void LineView::mouseMoveEvent(QMouseEvent* event) {
    if (!dragging_) return;
    const QRect inside = viewport()->rect();
    if (inside.contains(event->pos()))
        drag_timer_.stop();
    else if (!drag_timer_.isActive())
        drag_timer_.start(kDragInterval, this);
    DragTo({std::clamp(event->pos().x(), inside.left(), inside.right()),
            std::clamp(event->pos().y(), inside.top(), inside.bottom())});
}

void LineView::timerEvent(QTimerEvent* event) {
    if (event->timerId() != drag_timer_.timerId()) {
        QAbstractScrollArea::timerEvent(event);
        return;
    }
    // The further outside the mouse is, the faster.
    const QPoint mouse = viewport()->mapFromGlobal(QCursor::pos());
    const auto beyond = [](int place, int last) { return place < 0 ? place : std::max(place - last, 0); };
    verticalScrollBar()->setValue(
        verticalScrollBar()->value() +
        static_cast<int>(std::ceil(beyond(mouse.y(), viewport()->height()) / cell_.height)));
    horizontalScrollBar()->setValue(
        horizontalScrollBar()->value() +
        static_cast<int>(std::ceil(beyond(mouse.x(), viewport()->width()) / cell_.width)));
    DragTo({std::clamp(mouse.x(), 0, viewport()->width() - 1),
            std::clamp(mouse.y(), 0, viewport()->height() - 1)});
}

void LineView::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return;
    dragging_ = false;
    drag_timer_.stop();
    QClipboard& clipboard = *QApplication::clipboard();
    if (clipboard.supportsSelection() && anchor_ != cursor_)
        clipboard.setMimeData(MakeSelectionData(), QClipboard::Selection);
}

void LineView::contextMenuEvent(QContextMenuEvent* event) {
    QMenu menu(this);
    QAction* copy = menu.addAction(QStringLiteral("&Copy"), QKeySequence::Copy, this, &LineView::Copy);
    copy->setEnabled(anchor_ != cursor_);
    QAction* all =
        menu.addAction(QStringLiteral("Select &All"), QKeySequence::SelectAll, this, &LineView::SelectAll);
    all->setEnabled(lines_->size() != 0);
    menu.exec(event->globalPos());
}

QMimeData* LineView::MakeMimeData() const {
    return new LinesMimeData(lines_, 0, lines_->text().size());
}

QMimeData* LineView::MakeSelectionData() const {
    return new LinesMimeData(lines_, selection_begin(), selection_end());
}

void LineView::Copy() const {
    if (anchor_ != cursor_) QApplication::clipboard()->setMimeData(MakeSelectionData());
}

// Search

SearchResult LineView::Search(const QString& needle, bool match_case, SearchStart start) {
    const std::string& text = lines_->text();
    const TextSearch search(NeedleText(needle), match_case);
    SearchResult result = SearchResult::kFound;
    std::optional<std::size_t> place;
    if (start == SearchStart::kAhead) {
        place = search.Previous(text, selection_begin());
        if (!place) {
            result = SearchResult::kWrapped;
            place = search.Previous(text, text.size());
        }
    } else {
        place = search.Next(text, start == SearchStart::kSelection ? selection_begin() : selection_end());
        if (!place) {
            result = SearchResult::kWrapped;
            place = search.Next(text, 0);
        }
    }
    if (!place) return SearchResult::kNothing;
    Select(*place, *place + search.size());
    EnsureVisible(*place);
    return result;
}

std::size_t LineView::CountMatches(const QString& needle, bool match_case) const {
    return TextSearch(NeedleText(needle), match_case).Count(lines_->text());
}

QString LineView::SelectedNeedle() const {
    const std::size_t length = selection_end() - selection_begin();
    if (length == 0 || length > kLongNeedle) return {};
    const std::string_view selected = std::string_view(lines_->text()).substr(selection_begin(), length);
    return selected.find('\n') == std::string_view::npos ? ToQString(selected) : QString();
}

}  // namespace zorvel
