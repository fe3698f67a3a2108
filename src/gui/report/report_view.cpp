#include "gui/report/report_view.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>
#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "gui/widgets/palette.h"
#include "gui/widgets/qt_text.h"

namespace zorvel {
namespace {

constexpr int kGap = 12;      // pixels between pages, and around them
constexpr int kLine = 40;     // pixels that an arrow key scrolls
constexpr int kContext = 24;  // pixels that are kept in sight around a match
constexpr double kPointsInAnInch = 72;
constexpr qint64 kMostSteps = 1 << 30;  // of a scroll bar

constexpr std::array kZooms{0.1, 0.25, 0.33, 0.5, 0.67, 0.75, 0.9, 1.0, 1.25, 1.5, 2.0, 3.0, 4.0, 6.0};

// Hands the texts of a page to a function.
class TextReader final : public PageCanvas {
  public:
    explicit TextReader(const std::function<void(const PageText&)>& read) : read_(read) {}
    void Draw(const PageText& text) override { read_(text); }
    void Fill(double /*x*/, double /*y*/, double /*width*/, double /*height*/,
              PageColour /*colour*/) override {}

  private:
    const std::function<void(const PageText&)>& read_;
};

}  // namespace

ReportView::ReportView(QWidget* parent) : QAbstractScrollArea(parent) {
    setFocusPolicy(Qt::StrongFocus);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setContextMenuPolicy(Qt::CustomContextMenu);
    viewport()->setCursor(Qt::OpenHandCursor);
}

ReportView::~ReportView() = default;

void ReportView::ShowReport(const Report& report, const PageLayout& layout, const PaperFonts& fonts) {
    report_ = &report;
    layout_ = &layout;
    fonts_ = &fonts;
    search_.emplace(report);
    ApplyFit();
    GoToPage(0);
}

// Geometry

double ReportView::Scale() const {
    return zoom_ * logicalDpiY() / kPointsInAnInch;
}

QSize ReportView::PageSize() const {
    return {std::max(static_cast<int>(std::round(layout_->page_width() * Scale())), 1),
            std::max(static_cast<int>(std::round(layout_->page_height() * Scale())), 1)};
}

qint64 ReportView::Stride() const {
    return PageSize().height() + kGap;
}

qint64 ReportView::Height() const {
    return kGap + Stride() * static_cast<qint64>(layout_->page_count());
}

qint64 ReportView::Top() const {
    return static_cast<qint64>(verticalScrollBar()->value()) * unit_;
}

QPointF ReportView::OriginOf(std::size_t page) const {
    const int width = PageSize().width();
    const int room = viewport()->width() - width;
    const int x = room >= 2 * kGap ? room / 2 : kGap - horizontalScrollBar()->value();
    const qint64 y = kGap + static_cast<qint64>(page) * Stride() - Top();
    return {static_cast<double>(x), static_cast<double>(y)};
}

std::size_t ReportView::PageAt(qint64 y) const {
    const auto last = static_cast<qint64>(layout_->page_count()) - 1;
    return static_cast<std::size_t>(std::clamp<qint64>((y - kGap) / Stride(), 0, last));
}

ReportView::PagePoint ReportView::PointAt(QPointF place) const {
    const std::size_t page = PageAt(Top() + static_cast<qint64>(place.y()));
    return {page, (place - OriginOf(page)) / Scale()};
}

void ReportView::UpdateScrollBars() {
    if (layout_ == nullptr) return;
    const QSize room = viewport()->size();
    QScrollBar& bar = *verticalScrollBar();
    const qint64 height = Height();
    unit_ = static_cast<int>(height / kMostSteps) + 1;
    bar.setRange(0, static_cast<int>(std::max<qint64>(height - room.height() + unit_ - 1, 0) / unit_));
    // With one page in sight, a page.
    bar.setPageStep(std::max(room.height() - kGap, 1) / unit_);
    bar.setSingleStep(kLine);
    horizontalScrollBar()->setRange(0, std::max(PageSize().width() + 2 * kGap - room.width(), 0));
    horizontalScrollBar()->setPageStep(room.width());
    horizontalScrollBar()->setSingleStep(kLine);
}

void ReportView::ScrollTo(qint64 top) {
    verticalScrollBar()->setValue(static_cast<int>(std::clamp<qint64>(top, 0, Height()) / unit_));
}

void ReportView::SetPage(std::size_t page) {
    if (std::exchange(page_, page) != page) Q_EMIT PageChanged();
}

void ReportView::GoToPage(std::size_t page) {
    page = std::min(page, layout_->page_count() - 1);
    going_ = true;
    ScrollTo(static_cast<qint64>(page) * Stride());
    going_ = false;
    SetPage(page);
}

void ReportView::GoToGroup(std::size_t group) {
    const std::size_t page = layout_->PageOfGroup(group);
    double top = 0;
    LookFor(page, [&](const PageText& text) {
        if (text.place.kind != TextPlace::Kind::kHeading || text.place.index != group) return false;
        top = text.baseline - fonts_->metrics().bold.ascent * text.size;
        return true;
    });
    GoToPage(page);
    going_ = true;
    const double beyond = std::max(top * Scale() - kGap, 0.0);
    ScrollTo(static_cast<qint64>(page) * Stride() + static_cast<qint64>(beyond));
    going_ = false;
}

void ReportView::scrollContentsBy(int dx, int dy) {
    if (layout_ == nullptr) return;
    if (unit_ == 1)
        viewport()->scroll(dx, dy);
    else
        viewport()->update();
    constexpr int kUpperPart = 3;
    if (!going_ && dy != 0) SetPage(PageAt(Top() + viewport()->height() / kUpperPart));
}

void ReportView::resizeEvent(QResizeEvent* /*event*/) {
    if (layout_ == nullptr) return;
    const std::size_t page = page_;
    const bool at_its_top = Top() == static_cast<qint64>(page) * Stride();
    if (fit_ == Fit::kNone)
        UpdateScrollBars();
    else
        ApplyFit();
    if (at_its_top) GoToPage(page);
}

// Zoom

double ReportView::FittingZoom() const {
    const double unit = logicalDpiY() / kPointsInAnInch;
    const double across = (viewport()->width() - 2 * kGap) / (layout_->page_width() * unit);
    const double down = (viewport()->height() - 2 * kGap) / (layout_->page_height() * unit);
    return fit_ == Fit::kPage ? std::min(across, down) : across;
}

void ReportView::ApplyFit() {
    ZoomAt(FittingZoom(), QPointF(0, 0));
}

void ReportView::ZoomAt(double zoom, QPointF place) {
    const PagePoint point = PointAt(place);
    const std::size_t page = page_;
    zoom_ = std::clamp(zoom, kZooms.front(), kZooms.back());
    going_ = true;
    UpdateScrollBars();
    const QPointF offset = point.point * Scale() - place;
    ScrollTo(kGap + static_cast<qint64>(point.page) * Stride() + std::llround(offset.y()));
    horizontalScrollBar()->setValue(kGap + static_cast<int>(std::lround(offset.x())));
    going_ = false;
    SetPage(page);
    viewport()->update();
    Q_EMIT ZoomChanged();
}

void ReportView::SetZoom(double zoom) {
    fit_ = Fit::kNone;
    ZoomAt(zoom, QPointF(viewport()->rect().center().x(), 0));
}

void ReportView::ZoomIn() {
    constexpr double kMore = 1.01;  // what a fit chose may lie next to a step
    const auto* step = std::upper_bound(kZooms.begin(), kZooms.end(), zoom_ * kMore);
    SetZoom(step == kZooms.end() ? kZooms.back() : *step);
}

void ReportView::ZoomOut() {
    constexpr double kLess = 0.99;
    const auto* step = std::lower_bound(kZooms.begin(), kZooms.end(), zoom_ * kLess);
    SetZoom(step == kZooms.begin() ? kZooms.front() : *(step - 1));
}

void ReportView::SetFit(Fit fit) {
    fit_ = fit;
    if (fit == Fit::kNone) return;
    ApplyFit();
    if (fit == Fit::kPage) GoToPage(page_);
}

// Painting

void ReportView::DrawPage(QPainter& painter, std::size_t page, const QRect& visible) const {
    const QRect sheet(OriginOf(page).toPoint(), PageSize());
    painter.fillRect(sheet, Qt::white);
    painter.setPen(IsDark(palette()) ? QColor(0x70, 0x70, 0x70) : QColor(0x8A, 0x92, 0x9B));
    painter.drawRect(sheet.adjusted(-1, -1, 0, 0));
    painter.setClipRect(sheet & visible);
    ReportPainter canvas(painter, *fonts_, Scale());
    canvas.SetOrigin(sheet.topLeft());
    canvas.SetVisible(visible);
    canvas.SetMark(mark_);
    layout_->Draw(page, canvas);
    painter.setClipping(false);
}

void ReportView::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    const QRect visible = event->rect();
    painter.fillRect(visible, IsDark(palette()) ? QColor(0x2B, 0x2D, 0x30) : QColor(0xC4, 0xC9, 0xCF));
    if (layout_ == nullptr) return;
    const std::size_t last = PageAt(Top() + visible.bottom() + kGap);
    for (std::size_t page = PageAt(Top() + visible.top() - kGap); page <= last; ++page)
        DrawPage(painter, page, visible);
}

QSize ReportView::sizeHint() const {
    constexpr QSize kSize(900, 700);
    return kSize;
}

// Keys and mouse

void ReportView::keyPressEvent(QKeyEvent* event) {
    QScrollBar& bar = *verticalScrollBar();
    switch (event->key()) {
        case Qt::Key_Home:
            GoToPage(0);
            break;
        case Qt::Key_End:
            GoToPage(layout_->page_count() - 1);
            going_ = true;
            bar.setValue(bar.maximum());
            going_ = false;
            break;
        case Qt::Key_PageUp:
            bar.triggerAction(QScrollBar::SliderPageStepSub);
            break;
        case Qt::Key_PageDown:
            bar.triggerAction(QScrollBar::SliderPageStepAdd);
            break;
        case Qt::Key_Up:
            bar.triggerAction(QScrollBar::SliderSingleStepSub);
            break;
        case Qt::Key_Down:
            bar.triggerAction(QScrollBar::SliderSingleStepAdd);
            break;
        case Qt::Key_Left:
            horizontalScrollBar()->triggerAction(QScrollBar::SliderSingleStepSub);
            break;
        case Qt::Key_Right:
            horizontalScrollBar()->triggerAction(QScrollBar::SliderSingleStepAdd);
            break;
        default:
            event->ignore();
    }
}

void ReportView::wheelEvent(QWheelEvent* event) {
    if (!event->modifiers().testFlag(Qt::ControlModifier)) {
        QAbstractScrollArea::wheelEvent(event);
        return;
    }
    constexpr double kNotch = 120;
    constexpr double kFactor = 1.2;  // of a notch
    fit_ = Fit::kNone;
    ZoomAt(zoom_ * std::pow(kFactor, event->angleDelta().y() / kNotch), event->position());
    event->accept();
}

void ReportView::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return;
    dragged_from_ = event->pos();
    viewport()->setCursor(Qt::ClosedHandCursor);
}

void ReportView::mouseMoveEvent(QMouseEvent* event) {
    if (!dragged_from_) return;
    const QPoint by = *dragged_from_ - event->pos();
    dragged_from_ = event->pos();
    ScrollTo(Top() + by.y());
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() + by.x());
}

void ReportView::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return;
    dragged_from_.reset();
    viewport()->setCursor(Qt::OpenHandCursor);
}

// Search

bool ReportView::LookFor(std::size_t page, const std::function<bool(const PageText&)>& wanted) const {
    bool found = false;
    const std::function<void(const PageText&)> ask = [&](const PageText& text) {
        found = found || wanted(text);
    };
    TextReader reader(ask);
    layout_->Draw(page, reader);
    return found;
}

std::optional<std::pair<std::size_t, QRectF>> ReportView::Locate(const MarkedText& text) const {
    const std::size_t index = text.place.index;
    const bool cell = text.place.kind == TextPlace::Kind::kCell;
    std::size_t page = cell ? layout_->PageOfRow(index) : layout_->PageOfGroup(index);
    // A long value goes on on the pages that follow.
    const std::size_t row = cell ? index + 1 : report_->rows().groups()[index].begin;
    const std::size_t last =
        row < report_->rows().size() ? layout_->PageOfRow(row) : layout_->page_count() - 1;
    std::optional<QRectF> area;
    for (; page <= last && !area; ++page) {
        LookFor(page, [&](const PageText& drawn) {
            area = MarkedArea(drawn, text, fonts_->metrics());
            return area.has_value();
        });
        if (area) return std::pair(page, *area);
    }
    return {};
}

std::optional<TextPlace> ReportView::PlaceAt(QPoint point) const {
    const PagePoint at = PointAt(point);
    std::optional<TextPlace> place;
    LookFor(at.page, [&](const PageText& text) {
        if (text.place.kind == TextPlace::Kind::kFurniture) return false;
        const auto area = MarkedArea(text, {text.place, text.text.size()}, fonts_->metrics());
        if (area && area->contains(at.point)) place = text.place;
        return place.has_value();
    });
    return place;
}

TextPlace ReportView::PlaceInSight() const {
    TextPlace place;
    LookFor(page_, [&](const PageText& text) {
        if (text.place.kind == TextPlace::Kind::kFurniture) return false;
        place = text.place;
        return true;
    });
    if (place.kind != TextPlace::Kind::kFurniture) return place;
    // A page without rows, as the first is when it is full of charts.
    const bool grouped = !report_->rows().groups().empty();
    return {grouped ? TextPlace::Kind::kHeading : TextPlace::Kind::kCell, 0, 0, 0};
}

void ReportView::BringIntoSight(std::size_t page, const QRectF& area) {
    const QRectF place(OriginOf(page) + area.topLeft() * Scale(), area.size() * Scale());
    const QRectF inside = QRectF(viewport()->rect()).adjusted(0, kContext, 0, -kContext);
    going_ = true;
    constexpr double kUpperPart = 3;
    if (place.top() < inside.top() || place.bottom() > inside.bottom())
        ScrollTo(Top() + static_cast<qint64>(place.top() - viewport()->height() / kUpperPart));
    QScrollBar& bar = *horizontalScrollBar();
    if (place.left() < kContext)
        bar.setValue(bar.value() + static_cast<int>(place.left()) - kContext);
    else if (place.right() > viewport()->width() - kContext)
        bar.setValue(bar.value() + static_cast<int>(place.right()) - viewport()->width() + kContext);
    going_ = false;
    SetPage(page);
}

SearchResult ReportView::Search(const QString& needle, bool match_case, SearchStart start) {
    if (report_->rows().size() == 0) return SearchResult::kNothing;
    const TextSearch search(NeedleText(needle), match_case);
    TextPlace from = mark_ ? mark_->place : PlaceInSight();
    if (mark_ && start == SearchStart::kBehind) from.offset += mark_->length;
    const auto match =
        start == SearchStart::kAhead ? search_->Previous(search, from) : search_->Next(search, from);
    if (!match) return SearchResult::kNothing;
    mark_ = match->text;
    if (const auto found = Locate(*mark_)) BringIntoSight(found->first, found->second);
    viewport()->update();
    return match->wrapped ? SearchResult::kWrapped : SearchResult::kFound;
}

std::size_t ReportView::CountMatches(const QString& needle, bool match_case) const {
    return search_->Count(TextSearch(NeedleText(needle), match_case));
}

QString ReportView::SelectedNeedle() const {
    if (!mark_) return {};
    std::string scratch;
    return ToQString(search_->TextOf(mark_->place, scratch).substr(mark_->place.offset, mark_->length));
}

}  // namespace zorvel
