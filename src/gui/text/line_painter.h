// Paints lines of fixed-pitch text, each character in a cell of its own column.
#pragma once

#include <QFont>
#include <QPalette>
#include <array>
#include <cstddef>

#include "viewers/rich_lines.h"

class QPainter;
class QRectF;

namespace zorvel {

class LinePainter {
  public:
    // `cell_width`: what a column takes. The part [selection_begin, selection_end) is painted as selected.
    LinePainter(QPainter& painter, const RichLines& lines, const QPalette& palette, const QFont& font,
                double cell_width);
    void SetSelection(std::size_t begin, std::size_t end);

    // Paints the columns of a line that lie in `area`, whose left edge is that of column `first_column`.
    // `ascent`: from the top to the base line.
    void Paint(std::size_t line, const QRectF& area, std::size_t first_column, double ascent);

  private:
    // A font of the view, and whether each of its common characters is as wide as a cell.
    struct Face {
        QFont font;
        bool fits = false;
    };

    void PaintRun(const LineRun& run, bool selected, const QRectF& area, std::size_t first_column,
                  double baseline);
    void PaintText(std::size_t begin, std::size_t end, std::size_t column, double left, double baseline,
                   bool fits);
    const Face& FaceOf(const LineFormat& format) const;

    QPainter& painter_;
    const RichLines& lines_;
    const QPalette& palette_;
    double cell_width_;
    std::array<Face, 8> faces_;  // by bold, italic and underline
    std::size_t selection_begin_ = 0;
    std::size_t selection_end_ = 0;
};

}  // namespace zorvel
