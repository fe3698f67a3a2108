// Draws the pages of a report: on the screen, on a printer's paper, into a PDF file.
#pragma once

#include <QColor>
#include <QPageLayout>
#include <QPainter>
#include <QPointF>
#include <QRectF>
#include <cstddef>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "paper/report_fonts.h"
#include "reporting/page_layout.h"

class QPagedPaintDevice;

namespace zorvel {

class ReportPainter final : public PageCanvas {
  public:
    // `scale` is the number of the painter's units in a point. Painter and fonts must outlive the object.
    ReportPainter(QPainter& painter, const PaperFonts& fonts, double scale)
        : painter_(painter), fonts_(fonts), scale_(scale) {}

    // Where the page's upper left corner lies, in whole units of the painter.
    void SetOrigin(QPointF origin) { origin_ = origin; }
    // The part of the painter's area that matters; texts outside it may be left out.
    void SetVisible(QRectF visible) { visible_ = visible; }
    // A text that is shown as marked, wherever it appears.
    void SetMark(std::optional<MarkedText> mark) { mark_ = mark; }

    // PageCanvas
    void Draw(const PageText& text) override;
    void Fill(double x, double y, double width, double height, PageColour colour) override;

  private:
    bool OutOfSight(const PageText& text) const;
    void DrawMark(const PageText& text);

    QPainter& painter_;
    const PaperFonts& fonts_;
    double scale_;
    QPointF origin_;
    std::optional<QRectF> visible_;
    std::optional<MarkedText> mark_;
    std::vector<quint32> glyphs_;  // of the text being drawn
    std::vector<QPointF> places_;
};

// Where a part of a text lies on its page, in points from the page's upper left corner; nothing when the text
// holds none of it.
std::optional<QRectF> MarkedArea(const PageText& text, const MarkedText& mark, const ReportFonts& fonts);

// The colour that stands for a purpose, on white paper.
QColor PaperColour(PageColour colour);

// The paper that a report's pages are made for, without margins: the layout has its own.
QPageLayout PaperOf(const PageLayout& layout);

// Draws these pages, numbered from 0, on a device, each on a page of its own, smaller when its paper is
// smaller than theirs. `progress`, when there is one, is told before each how many are done; false from it
// ends the drawing, and is returned then. Raises an OutputError (75) that names the device by `name` (of the
// code page) when it does not take them.
bool DrawPages(QPagedPaintDevice& device, const std::string& name, const PageLayout& layout,
               const PaperFonts& fonts, std::span<const std::size_t> pages,
               const std::function<bool(std::size_t done, std::size_t pages)>& progress);

}  // namespace zorvel
