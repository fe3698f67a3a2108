#include "gui/text/line_painter.h"

#include <QFontMetricsF>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "gui/text/rich_text_colours.h"
#include "gui/widgets/qt_text.h"

namespace zorvel {
namespace {

// Places in a table of faces, to be added up.
constexpr std::size_t kBold = 1;
constexpr std::size_t kItalic = 2;
constexpr std::size_t kUnderline = 4;

bool IsPrintableAscii(char character) {
    return character >= ' ' && character <= '~';
}

}  // namespace

LinePainter::LinePainter(QPainter& painter, const RichLines& lines, const QPalette& palette,
                         const QFont& font, double cell_width)
    : painter_(painter), lines_(lines), palette_(palette), cell_width_(cell_width) {
    constexpr double kTolerance = 0.001;
    for (std::size_t bits = 0; bits < faces_.size(); ++bits) {
        Face& face = faces_[bits];
        face.font = font;
        face.font.setKerning(false);
        face.font.setBold((bits & kBold) != 0);
        face.font.setItalic((bits & kItalic) != 0);
        face.font.setUnderline((bits & kUnderline) != 0);
        const QFontMetricsF metrics(face.font);
        face.fits = std::abs(metrics.horizontalAdvance(QLatin1Char('i')) - cell_width) < kTolerance &&
                    std::abs(metrics.horizontalAdvance(QLatin1Char('M')) - cell_width) < kTolerance;
    }
}

void LinePainter::SetSelection(std::size_t begin, std::size_t end) {
    selection_begin_ = begin;
    selection_end_ = end;
}

const LinePainter::Face& LinePainter::FaceOf(const LineFormat& format) const {
    std::size_t face = 0;
    if (format.bold) face += kBold;
    if (format.italic) face += kItalic;
    if (format.underline) face += kUnderline;
    return faces_[face];
}

void LinePainter::Paint(std::size_t line, const QRectF& area, std::size_t first_column, double ascent) {
    const std::size_t line_end = lines_.LineEnd(line);
    const auto columns = static_cast<std::size_t>(std::ceil(area.width() / cell_width_));
    const std::size_t begin = lines_.OffsetAt(line, first_column);
    const std::size_t end = std::min(lines_.OffsetAt(line, first_column + columns) + 1, line_end);
    const double baseline = area.top() + ascent;
    // A line all on one background is seen as a bar, wherever the view is scrolled.
    if (const auto background = lines_.Background(line))
        painter_.fillRect(QRectF(0, area.top(), area.right(), area.height()), ToQColor(*background));
    for (const LineRun& run : lines_.Runs(begin, end)) {
        const std::size_t selected_begin = std::clamp(selection_begin_, run.begin, run.end);
        const std::size_t selected_end = std::clamp(selection_end_, run.begin, run.end);
        PaintRun({run.begin, selected_begin, run.format}, false, area, first_column, baseline);
        PaintRun({selected_begin, selected_end, run.format}, true, area, first_column, baseline);
        PaintRun({selected_end, run.end, run.format}, false, area, first_column, baseline);
    }
    // A selected line end shows as one blank.
    if (end == line_end && selection_begin_ <= line_end && line_end < selection_end_) {
        const double left = area.left() + cell_width_ * (static_cast<double>(lines_.Column(line_end)) -
                                                         static_cast<double>(first_column));
        if (left >= area.left())
            painter_.fillRect(QRectF(left, area.top(), cell_width_, area.height()),
                              palette_.brush(QPalette::Active, QPalette::Highlight));
    }
}

void LinePainter::PaintRun(const LineRun& run, bool selected, const QRectF& area, std::size_t first_column,
                           double baseline) {
    if (run.begin == run.end) return;
    const std::size_t column = lines_.Column(run.begin);
    const auto x = [&](std::size_t at) {
        return area.left() + cell_width_ * (static_cast<double>(at) - static_cast<double>(first_column));
    };
    const QRectF behind(QPointF(x(column), area.top()), QPointF(x(lines_.Column(run.end)), area.bottom()));
    if (selected) {
        // Whether or not the view has the keyboard: a match is looked for from elsewhere.
        painter_.fillRect(behind, palette_.brush(QPalette::Active, QPalette::Highlight));
        painter_.setPen(palette_.color(QPalette::Active, QPalette::HighlightedText));
    } else {
        if (run.format.background) painter_.fillRect(behind, ToQColor(*run.format.background));
        painter_.setPen(TextColour(run.format.colour, run.format.background, palette_));
    }
    const Face& face = FaceOf(run.format);
    painter_.setFont(face.font);
    PaintText(run.begin, run.end, column, x(column), baseline, face.fits);
}

void LinePainter::PaintText(std::size_t begin, std::size_t end, std::size_t column, double left,
                            double baseline, bool fits) {
    const std::string_view text = lines_.text();
    while (begin < end) {
        // As much at once as is sure to keep to its cells; the rest may come from fonts of other widths.
        std::size_t length = 1;
        if (fits && IsPrintableAscii(text[begin]))
            while (begin + length < end && IsPrintableAscii(text[begin + length]))
                ++length;
        std::size_t width = length;
        if (text[begin] == '\t')
            width = RichLines::kTabColumns - column % RichLines::kTabColumns;
        else if (text[begin] != ' ' || length > 1)
            painter_.drawText(QPointF(left, baseline), ToQString(text.substr(begin, length)));
        begin += length;
        column += width;
        left += cell_width_ * static_cast<double>(width);
    }
}

}  // namespace zorvel
