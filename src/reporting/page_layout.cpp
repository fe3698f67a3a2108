#include "reporting/page_layout.h"

#include <algorithm>

#include "reporting/report_values.h"
#include "shell/formats.h"

namespace zorvel {
namespace {

constexpr double kTitleSize = 15;
constexpr double kRunningTitleSize = 10;
constexpr double kFurnitureSize = 7.5;
constexpr double kFurnitureGap = 6;  // between furniture and blocks, points
constexpr double kRule = 0.6;        // thickness, points
constexpr double kGap = 20;          // between two texts of one line, at least
constexpr double kBarHeight = 0.72;  // of a line
constexpr double kTableGap = 10;     // ahead of the columns' headings, when something stands above them

// A block is kept in one piece unless it takes more of the page than this.
constexpr double kKeptTogether = 0.5;
// Headings stay with so many lines of their first row.
constexpr std::size_t kLinesWithHeading = 3;

}  // namespace

PageLayout::PageLayout(const Report& report, const ReportFonts& fonts, const AskInterrupted& ask)
    : report_(report), blocks_(report, fonts), flow_(report) {
    FlowPosition position = flow_.First();
    do {
        EndIfInterrupted(ask);
        starts_.push_back(position);
        position = Fill(position, starts_.size() - 1, nullptr);
    } while (position.kind != BlockKind::kEnd);
}

void PageLayout::Draw(std::size_t page, PageCanvas& canvas) const {
    DrawFurniture(page, canvas);
    Fill(starts_[page], page, &canvas);
}

std::size_t PageLayout::PageOf(const FlowPosition& position) const {
    const auto behind = std::upper_bound(starts_.begin(), starts_.end(), position, Precedes);
    return static_cast<std::size_t>(behind - starts_.begin()) - 1;
}

std::size_t PageLayout::PageOfRow(std::size_t row) const {
    return PageOf({.kind = BlockKind::kRow, .row = row});
}

std::size_t PageLayout::PageOfGroup(std::size_t group) const {
    return PageOf({.kind = BlockKind::kHeading, .row = report_.rows().groups()[group].begin, .item = group});
}

double PageLayout::BodyTop(std::size_t page) const {
    const double title = page == 0
                             ? blocks_.LineHeight(kTitleSize)
                             : blocks_.LineHeight(kRunningTitleSize) + blocks_.LineHeight(kFurnitureSize);
    return report_.definition().page.margin + title + kFurnitureGap;
}

double PageLayout::BodyBottom() const {
    return page_height() - report_.definition().page.margin - blocks_.LineHeight(kFurnitureSize) -
           kFurnitureGap;
}

FlowPosition PageLayout::Fill(FlowPosition position, std::size_t page, PageCanvas* canvas) const {
    Sheet sheet;
    sheet.canvas = canvas;
    sheet.top = BodyTop(page);
    sheet.body_height = BodyBottom() - sheet.top;
    sheet.bottom = BodyBottom();
    while (position.kind != BlockKind::kEnd) {
        if (BreaksAhead(position, sheet)) break;
        if (position.InTable() && !sheet.headed) PlaceHeadings(position, sheet);
        if (!Place(position, sheet)) break;
    }
    return position;
}

bool PageLayout::BreaksAhead(const FlowPosition& position, const Sheet& sheet) const {
    if (sheet.empty || position.line > 0) return false;
    if (position.kind == BlockKind::kHeading && report_.rows().BeginsPage(position.item)) return true;
    const bool leads = position.kind == BlockKind::kHeading || position.kind == BlockKind::kChartHeading;
    if (!leads) return false;
    const double headings = sheet.headed ? 0 : kTableGap + blocks_.headings().height + kRule;
    const double height = HeightWithNext(position) + (position.InTable() ? headings : 0);
    return height <= sheet.body_height && sheet.top + height > sheet.bottom;
}

double PageLayout::HeightWithNext(FlowPosition position) const {
    double height = 0;
    while (true) {
        MakeBlock(position, true);
        if (position.kind == BlockKind::kRow || position.kind == BlockKind::kBar) {
            const std::size_t beyond = block_.line_count - std::min(block_.line_count, kLinesWithHeading);
            return height + block_.Height() - static_cast<double>(beyond) * block_.line_height;
        }
        height += block_.Height();
        position = flow_.Next(position);
    }
}

void PageLayout::MakeBlock(const FlowPosition& position, bool first_on_page) const {
    FlowPosition begin = position;
    begin.line = 0;
    begin.first_on_page = false;
    if (begin == block_position_ && first_on_page == block_first_on_page_) return;
    blocks_.Make(begin, flow_.facts(), first_on_page, block_);
    block_position_ = begin;
    block_first_on_page_ = first_on_page;
}

bool PageLayout::Place(FlowPosition& position, Sheet& sheet) const {
    const bool first_on_page = position.line == 0 ? sheet.first_row : position.first_on_page;
    MakeBlock(position, first_on_page);
    const std::size_t left = block_.line_count - position.line;
    const double above = position.line == 0 ? block_.above : 0;
    const double room = sheet.bottom - sheet.top - above;
    const double whole = static_cast<double>(left) * block_.line_height + block_.below;
    std::size_t lines = left;
    if (whole > room) {
        if (!sheet.empty && position.line == 0 && whole <= sheet.body_height * kKeptTogether) return false;
        lines = static_cast<std::size_t>(std::max(room, 0.0) / block_.line_height);
        if (lines == 0 && !sheet.empty) return false;
        // A page that has room for nothing takes one line all the same, or there would be no end of pages.
        lines = std::clamp<std::size_t>(lines, 1, left);
    }
    const bool ends = lines == left;
    const double height = above + static_cast<double>(lines) * block_.line_height + (ends ? block_.below : 0);
    if (sheet.canvas != nullptr) DrawBlock(block_, position.line, lines, height, above, sheet);
    sheet.top += height;
    sheet.empty = false;
    // Below a row that goes on from the page before, what it left out or began with is not to be seen.
    if (position.kind == BlockKind::kRow && position.line == 0) sheet.first_row = false;
    if (ends) {
        position = flow_.Next(position);
    } else {
        position.line += lines;
        position.first_on_page = first_on_page;
    }
    return ends;
}

void PageLayout::DrawBlock(const PageBlock& block, std::size_t first, std::size_t count, double height,
                           double above, const Sheet& sheet) const {
    PageCanvas& canvas = *sheet.canvas;
    if (block.fill) {
        canvas.Fill(block.fill_x, sheet.top, blocks_.right() - block.fill_x, height, *block.fill);
    }
    const double top = sheet.top + above;
    if (block.bar_width > 0 && first == 0) {
        const double gap = (1 - kBarHeight) / 2 * block.line_height;
        canvas.Fill(block.bar_x, top + gap, block.bar_width, block.line_height * kBarHeight,
                    PageColour::kBar);
    }
    for (std::size_t i = 0; i < block.cell_count; ++i) {
        const BlockCell& cell = block.cells[i];
        for (std::size_t line = first; line < std::min(first + count, cell.lines.size()); ++line)
            DrawLine(block, cell, line, top + static_cast<double>(line - first) * block.line_height, canvas);
    }
}

void PageLayout::DrawLine(const PageBlock& block, const BlockCell& cell, std::size_t line, double top,
                          PageCanvas& canvas) const {
    const TextLine& part = cell.lines[line];
    if (part.begin == part.end) return;
    const FontFace& face = blocks_.Face(cell.bold);
    PageText text;
    text.text = cell.text.substr(part.begin, part.end - part.begin);
    text.x = cell.x;
    if (cell.alignment != ColumnAlignment::kLeft) {
        const double spare = std::max(0.0, cell.width - face.Width(text.text, cell.size));
        text.x += cell.alignment == ColumnAlignment::kRight ? spare : spare / 2;
    }
    // Texts of different sizes in one line stand on one base line.
    const double slack = block.line_height - (face.ascent + face.descent) * cell.size;
    text.baseline = top + slack / 2 + face.ascent * cell.size;
    text.size = cell.size;
    text.bold = cell.bold;
    text.colour = cell.colour;
    text.place = cell.place;
    text.place.offset = part.begin;
    canvas.Draw(text);
}

void PageLayout::PlaceHeadings(const FlowPosition& position, Sheet& sheet) const {
    if (!sheet.empty) sheet.top += kTableGap;
    if (sheet.canvas != nullptr) DrawColumnHeadings(sheet.top, *sheet.canvas);
    sheet.top += blocks_.headings().height + kRule;
    sheet.headed = true;
    sheet.first_row = true;
    // The groups that go on from the page before say so, unless there are so many that they would fill the
    // page.
    const std::vector<RowGroup>& groups = report_.rows().groups();
    const std::size_t levels = report_.definition().groups.size();
    for (std::size_t level = 0; level < levels; ++level) {
        const std::size_t group = report_.rows().GroupOf(position.row, level);
        const FlowPosition heading{.kind = BlockKind::kHeading, .row = groups[group].begin, .item = group};
        const bool at_hand = position.kind == BlockKind::kHeading && position.item == group;
        if (at_hand || !Precedes(heading, position)) continue;
        blocks_.MakeRepeated(group, repeated_);
        const double height = repeated_.Height();
        if (sheet.top + height > sheet.bottom - sheet.body_height * kKeptTogether) return;
        if (sheet.canvas != nullptr) DrawBlock(repeated_, 0, 1, height, repeated_.above, sheet);
        sheet.top += height;
    }
}

void PageLayout::DrawColumnHeadings(double top, PageCanvas& canvas) const {
    const ColumnHeadings& all = blocks_.headings();
    const double size = blocks_.text_size();
    const FontFace& face = blocks_.Face(true);
    const double line_height = blocks_.LineHeight(size);
    for (std::size_t i = 0; i < all.headings.size(); ++i) {
        const ColumnHeadings::Heading& heading = all.headings[i];
        const ReportColumn& column = report_.definition().columns[i];
        PageText text;
        text.size = size;
        text.bold = true;
        text.colour = PageColour::kTitle;
        if (column.turned) {
            text.turned = true;
            text.text = heading.text;
            text.x = heading.x + heading.width / 2 + (face.ascent - face.descent) * size / 2;
            text.baseline = top + all.height - kCellPadding;
            canvas.Draw(text);
            continue;
        }
        double bottom = top + all.height - static_cast<double>(heading.lines.size()) * line_height;
        for (const TextLine& line : heading.lines) {
            text.text = std::string_view(heading.text).substr(line.begin, line.end - line.begin);
            const double spare = heading.width - 2 * kCellPadding - face.Width(text.text, size);
            text.x = heading.x + kCellPadding;
            if (column.alignment == ColumnAlignment::kRight) text.x += spare;
            if (column.alignment == ColumnAlignment::kCentre) text.x += spare / 2;
            text.baseline = bottom + face.ascent * size;
            canvas.Draw(text);
            bottom += line_height;
        }
    }
    canvas.Fill(blocks_.left(), top + all.height, blocks_.right() - blocks_.left(), kRule,
                PageColour::kTitle);
}

void PageLayout::DrawFurniture(std::size_t page, PageCanvas& canvas) const {
    const ReportFacts& facts = report_.facts();
    double top = report_.definition().page.margin;
    if (page == 0) {
        DrawEnds({report_.definition().title, kTitleSize, true}, facts.captured, top, canvas);
    } else {
        DrawEnds({report_.definition().title, kRunningTitleSize, true}, facts.captured, top, canvas);
        top += blocks_.LineHeight(kRunningTitleSize);
        std::string source = facts.dataset;
        if (!facts.tree.empty()) source = facts.tree + "   " + source;
        DrawEnds({source, kFurnitureSize, false}, facts.comment, top, canvas);
    }
    const double bottom = BodyBottom() + kFurnitureGap;
    canvas.Fill(blocks_.left(), bottom - kFurnitureGap / 2, blocks_.right() - blocks_.left(), kRule,
                PageColour::kRule);
    DrawEnds({facts.generated.empty() ? "Zorvel" : "Zorvel, " + facts.generated, kFurnitureSize, false},
             "Page " + GroupedCount(page + 1) + " of " + GroupedCount(page_count()), bottom, canvas);
}

void PageLayout::DrawEnds(const End& left, std::string_view right, double top, PageCanvas& canvas) const {
    const FontFace& regular = blocks_.Face(false);
    const FontFace& face = blocks_.Face(left.bold);
    const double width = blocks_.right() - blocks_.left();
    std::string scratch;
    PageText text;
    text.size = left.size;
    text.bold = left.bold;
    text.colour = left.bold ? PageColour::kTitle : PageColour::kFaintText;
    text.x = blocks_.left();
    text.baseline = top + face.ascent * left.size;
    const std::string begin =
        CutToLine(DisplayValue(left.text, ValueFormat::kText, scratch), face, left.size, width);
    text.text = begin;
    canvas.Draw(text);
    const double room = width - face.Width(begin, left.size) - kGap;
    if (right.empty() || room <= 0) return;
    const std::string end =
        CutToLine(DisplayValue(right, ValueFormat::kText, scratch), regular, kFurnitureSize, room);
    text.size = kFurnitureSize;
    text.bold = false;
    text.colour = PageColour::kFaintText;
    text.x = blocks_.right() - regular.Width(end, kFurnitureSize);
    text.text = end;
    canvas.Draw(text);
}

}  // namespace zorvel
