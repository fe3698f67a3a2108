// The blocks of a report's pages: what stands beside and below each other in them, broken into lines.
#pragma once

#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "reporting/page_canvas.h"
#include "reporting/page_flow.h"
#include "reporting/report.h"
#include "reporting/text_lines.h"

namespace zorvel {

// The room beside a text in its cell, on either side, points: of the columns' headings and of what stands
// below them.
inline constexpr double kCellPadding = 4;

// A text of a block with a width of its own.
struct BlockCell {
    double x = 0;
    double width = 0;
    ColumnAlignment alignment = ColumnAlignment::kLeft;
    double size = 0;  // of the font, points
    bool bold = false;
    PageColour colour = PageColour::kText;
    TextPlace place;
    std::string_view text;
    std::vector<TextLine> lines;
    std::string storage;  // of a text that lies nowhere else
};

// Cells side by side, all with lines of one height.
struct PageBlock {
    std::deque<BlockCell> cells;  // each stays where it is, as its text may lie in it
    std::size_t cell_count = 0;   // in use; the others are kept for their memory
    std::size_t line_count = 0;
    double line_height = 0;
    double above = 0;  // room ahead of the first line
    double below = 0;  // and behind the last
    std::optional<PageColour> fill;
    double fill_x = 0;
    // A chart's bar, in the first line.
    double bar_x = 0;
    double bar_width = 0;

    double Height() const { return above + static_cast<double>(line_count) * line_height + below; }
};

// The headings of the columns, at the top of each page with rows.
struct ColumnHeadings {
    struct Heading {
        double x = 0;
        double width = 0;
        std::string text;
        std::vector<TextLine> lines;
    };
    std::vector<Heading> headings;  // in the order of the columns
    double height = 0;
};

class PageBlocks {
  public:
    // Report and fonts must outlive the object.
    PageBlocks(const Report& report, const ReportFonts& fonts);

    // Makes the block at `position`. `first_on_page`: no row stands above it on its page.
    void Make(const FlowPosition& position, const std::vector<FactLine>& facts, bool first_on_page,
              PageBlock& block) const;
    // The heading of a group in one line, to be repeated on a page where the group goes on.
    void MakeRepeated(std::size_t group, PageBlock& block) const;

    const ColumnHeadings& headings() const { return headings_; }
    const FontFace& Face(bool bold) const { return bold ? fonts_.bold : fonts_.regular; }
    double LineHeight(double size) const;
    double left() const { return page_.margin; }
    double right() const { return page_.width - page_.margin; }
    double text_size() const { return page_.text_size; }

  private:
    void MakeHeadings();
    BlockCell& AddCell(PageBlock& block, double x, double width, double size) const;
    // Breaks the cell's text, which is in place, into lines.
    void Break(PageBlock& block, BlockCell& cell) const;
    void MakeText(std::string_view text, PageBlock& block) const;
    void MakeFact(const FactLine& fact, PageBlock& block) const;
    void MakeChartHeading(std::size_t chart, PageBlock& block) const;
    void MakeBar(std::size_t chart, std::size_t bar, PageBlock& block) const;
    void MakeGroupLine(std::size_t group, PageBlock& block) const;
    void MakeHeading(std::size_t group, PageBlock& block) const;
    void MakeNote(std::size_t group, PageBlock& block) const;
    void MakeRow(std::size_t row, bool first_on_page, PageBlock& block) const;
    void MakeTotals(PageBlock& block) const;
    double Indent(std::size_t level) const;
    double HeadingSize(std::size_t level) const;

    const Report& report_;
    const ReportFonts& fonts_;
    const ReportPage& page_;
    ColumnHeadings headings_;
};

}  // namespace zorvel
