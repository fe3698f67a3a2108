#include "paper/report_painter.h"

#include <QGlyphRun>
#include <QPageSize>
#include <QPagedPaintDevice>
#include <algorithm>
#include <cmath>
#include <string_view>

#include "platform/error.h"

namespace zorvel {
namespace {

constexpr QRgb kMarkColour = 0xFFFFE070;

bool SamePlace(const TextPlace& left, const TextPlace& right) {
    return left.kind == right.kind && left.index == right.index && left.column == right.column;
}

// What pages are made smaller by, so that they fit on another paper than theirs; 1 when they do.
double Shrinking(const QPagedPaintDevice& device, const PageLayout& layout) {
    const QSizeF paper = device.pageLayout().fullRect(QPageLayout::Point).size();
    const double factor =
        std::min(paper.width() / layout.page_width(), paper.height() / layout.page_height());
    constexpr double kSame = 0.99;  // papers are known by whole points
    return factor > kSame || factor <= 0 ? 1 : factor;
}

}  // namespace

QColor PaperColour(PageColour colour) {
    switch (colour) {
        case PageColour::kText:
            return {0x1C, 0x22, 0x2A};
        case PageColour::kFaintText:
            return {0x5E, 0x6A, 0x77};
        case PageColour::kTitle:
            return {0x1F, 0x3A, 0x5F};
        case PageColour::kBand:
            return {0xD3, 0xDE, 0xEA};
        case PageColour::kLightBand:
            return {0xEA, 0xEF, 0xF5};
        case PageColour::kStripe:
            return {0xF6, 0xF8, 0xFA};
        case PageColour::kRule:
            return {0xA9, 0xB4, 0xC0};
        case PageColour::kBar:
            return {0x4A, 0x7F, 0xB5};
    }
    return Qt::black;
}

std::optional<QRectF> MarkedArea(const PageText& text, const MarkedText& mark, const ReportFonts& fonts) {
    if (!SamePlace(text.place, mark.place)) return {};
    const std::size_t text_end = text.place.offset + text.text.size();
    const std::size_t begin = std::max(mark.place.offset, text.place.offset);
    const std::size_t end = std::min(mark.place.offset + mark.length, text_end);
    if (begin >= end) return {};
    const FontFace& face = text.bold ? fonts.bold : fonts.regular;
    const double before = face.Width(text.text.substr(0, begin - text.place.offset), text.size);
    const double width = face.Width(text.text.substr(begin - text.place.offset, end - begin), text.size);
    const double ascent = face.ascent * text.size;
    const double height = ascent + face.descent * text.size;
    if (text.turned) return QRectF(text.x - ascent, text.baseline - before - width, height, width);
    return QRectF(text.x + before, text.baseline - ascent, width, height);
}

bool ReportPainter::OutOfSight(const PageText& text) const {
    if (!visible_ || text.turned) return false;
    // No font reaches further than two ems.
    const double reach = 2 * text.size * scale_;
    const double baseline = origin_.y() + text.baseline * scale_;
    return baseline + reach < visible_->top() || baseline - reach > visible_->bottom();
}

void ReportPainter::DrawMark(const PageText& text) {
    if (!mark_) return;
    const std::optional<QRectF> area = MarkedArea(text, *mark_, fonts_.metrics());
    if (!area) return;
    painter_.fillRect(QRectF(origin_ + area->topLeft() * scale_, area->size() * scale_).toAlignedRect(),
                      QColor(kMarkColour));
}

void ReportPainter::Draw(const PageText& text) {
    if (text.text.empty() || OutOfSight(text)) return;
    DrawMark(text);
    const PaperFont& font = fonts_.Of(text.bold);
    const double size = text.size * scale_;
    glyphs_.clear();
    places_.clear();
    double x = 0;
    for (const char character : text.text) {
        const auto code = static_cast<unsigned char>(character);
        glyphs_.push_back(font.Glyph(code));
        places_.emplace_back(x, 0);
        x += font.face().advances[code] * size;
    }
    QGlyphRun run;
    run.setRawFont(font.Sized(size));
    run.setRawData(glyphs_.data(), places_.data(), static_cast<int>(glyphs_.size()));
    painter_.setPen(PaperColour(text.colour));
    const QPointF begin = origin_ + QPointF(text.x, text.baseline) * scale_;
    if (!text.turned) {
        painter_.drawGlyphRun(begin, run);
        return;
    }
    constexpr double kUpwards = -90;
    painter_.save();
    painter_.translate(begin);
    painter_.rotate(kUpwards);
    painter_.drawGlyphRun({}, run);
    painter_.restore();
}

void ReportPainter::Fill(double x, double y, double width, double height, PageColour colour) {
    // Edges lie on whole units, so that areas that touch do so on the screen too, and no rule is too thin to
    // be seen.
    const double left = std::round(origin_.x() + x * scale_);
    const double top = std::round(origin_.y() + y * scale_);
    const double right = std::max(std::round(origin_.x() + (x + width) * scale_), left + 1);
    const double bottom = std::max(std::round(origin_.y() + (y + height) * scale_), top + 1);
    painter_.fillRect(QRectF(left, top, right - left, bottom - top), PaperColour(colour));
}

QPageLayout PaperOf(const PageLayout& layout) {
    // Papers are known by their upright size.
    const bool landscape = layout.page_width() > layout.page_height();
    QSizeF size(layout.page_width(), layout.page_height());
    if (landscape) size.transpose();
    return {QPageSize(size, QPageSize::Point), landscape ? QPageLayout::Landscape : QPageLayout::Portrait,
            QMarginsF()};
}

bool DrawPages(QPagedPaintDevice& device, const std::string& name, const PageLayout& layout,
               const PaperFonts& fonts, std::span<const std::size_t> pages,
               const std::function<bool(std::size_t done, std::size_t pages)>& progress) {
    const auto check = [&name](bool taken) {
        if (!taken) throw OutputError(Error(errors::kPathFileAccess).At(name));
    };
    if (pages.empty()) return true;
    QPainter painter;
    check(painter.begin(&device));
    constexpr double kPointsInAnInch = 72;
    ReportPainter canvas(painter, fonts, Shrinking(device, layout) * device.logicalDpiX() / kPointsInAnInch);
    for (std::size_t done = 0; done < pages.size(); ++done) {
        if (progress && !progress(done, pages.size())) return false;
        if (done != 0) check(device.newPage());
        layout.Draw(pages[done], canvas);
    }
    check(painter.end());
    return true;
}

}  // namespace zorvel
