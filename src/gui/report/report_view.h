// The pages of a report one below the other, as they print; those in sight are drawn.
#pragma once

#include <QAbstractScrollArea>
#include <QPointF>
#include <QRectF>
#include <QSize>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>

#include "gui/text/search_bar.h"
#include "paper/report_fonts.h"
#include "paper/report_painter.h"
#include "reporting/page_layout.h"
#include "reporting/report_search.h"

namespace zorvel {

class ReportView final : public QAbstractScrollArea, public SearchTarget {
    Q_OBJECT

  public:
    // What the zoom follows when the window changes its size.
    enum class Fit { kNone, kWidth, kPage };

    explicit ReportView(QWidget* parent = nullptr);
    ~ReportView() override;

    // Shows a report from its first page. All of this must outlive the view. To be called once, ahead of
    // everything else.
    void ShowReport(const Report& report, const PageLayout& layout, const PaperFonts& fonts);

    // The page that is shown, from 0: the one that was asked for last as long as nothing was scrolled since,
    // else the one in the upper part of the view.
    std::size_t page() const { return page_; }
    // Brings the top of a page to the top of the view.
    void GoToPage(std::size_t page);
    // Brings the heading of a group to the top of the view.
    void GoToGroup(std::size_t group);

    // 1 is the size of the paper, by what the screen says of itself.
    double zoom() const { return zoom_; }
    Fit fit() const { return fit_; }
    void SetZoom(double zoom);
    void ZoomIn();
    void ZoomOut();
    void SetFit(Fit fit);

    // What the search found last.
    const std::optional<MarkedText>& mark() const { return mark_; }

    // What stands at a point of the viewport; nothing where there is no value, heading or note.
    std::optional<TextPlace> PlaceAt(QPoint point) const;

    // SearchTarget
    SearchResult Search(const QString& needle, bool match_case, SearchStart start) override;
    std::size_t CountMatches(const QString& needle, bool match_case) const override;
    QString SelectedNeedle() const override;

    QSize sizeHint() const override;

  Q_SIGNALS:
    void PageChanged();
    void ZoomChanged();

  protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;

  private:
    // A point of a page, in points from its upper left corner.
    struct PagePoint {
        std::size_t page = 0;
        QPointF point;
    };

    // Pixels in a point.
    double Scale() const;
    QSize PageSize() const;
    qint64 Stride() const;                     // from the top of a page to that of the next
    qint64 Height() const;                     // of all pages
    qint64 Top() const;                        // of the viewport, from the top of all
    QPointF OriginOf(std::size_t page) const;  // on the viewport
    std::size_t PageAt(qint64 y) const;
    PagePoint PointAt(QPointF place) const;

    void UpdateScrollBars();
    void ScrollTo(qint64 top);
    // Sets the zoom and leaves what is at `place` of the viewport where it is.
    void ZoomAt(double zoom, QPointF place);
    void ApplyFit();
    double FittingZoom() const;
    void SetPage(std::size_t page);
    void DrawPage(QPainter& painter, std::size_t page, const QRect& visible) const;

    // The first text of a page for which `wanted` holds, which it is asked about in reading order.
    bool LookFor(std::size_t page, const std::function<bool(const PageText&)>& wanted) const;
    // Where a part of a text lies: its page, and its area there in points.
    std::optional<std::pair<std::size_t, QRectF>> Locate(const MarkedText& text) const;
    // The first place on the page that is shown at which a search can begin.
    TextPlace PlaceInSight() const;
    void BringIntoSight(std::size_t page, const QRectF& area);

    const PageLayout* layout_ = nullptr;
    const PaperFonts* fonts_ = nullptr;
    const Report* report_ = nullptr;
    std::optional<ReportSearch> search_;
    double zoom_ = 1;
    Fit fit_ = Fit::kWidth;
    std::size_t page_ = 0;
    bool going_ = false;  // to a page that was asked for
    int unit_ = 1;        // pixels in a step of the vertical scroll bar, more than 1 for very many pages
    std::optional<MarkedText> mark_;
    std::optional<QPoint> dragged_from_;
};

}  // namespace zorvel
