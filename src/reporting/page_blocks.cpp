#include "reporting/page_blocks.h"

#include <algorithm>
#include <numeric>

#include "reporting/report_values.h"
#include "shell/formats.h"

namespace zorvel {
namespace {

// Room above and below texts, in points.
constexpr double kRowAbove = 1.5;
constexpr double kRowBelow = 1.5;
constexpr double kHeadingAbove = 2.5;
constexpr double kHeadingBelow = 2;
constexpr double kChartAbove = 10;
constexpr double kNothingAbove = 20;

// Headings of groups by level: how much larger than the rows they are, and how far each level is set in.
constexpr double kOuterLarger = 2;
constexpr double kInnerLarger = 0.5;
constexpr double kLevelIndent = 8;

// How much of the width a fact's name, a bar's label and a bar's number take.
constexpr double kFactName = 0.14;
constexpr double kBarLabel = 0.38;
constexpr double kBarNumber = 0.08;

constexpr double kLeading = 1.06;
constexpr std::string_view kTotalsGap = "     ";

}  // namespace

PageBlocks::PageBlocks(const Report& report, const ReportFonts& fonts)
    : report_(report), fonts_(fonts), page_(report.definition().page) {
    MakeHeadings();
}

double PageBlocks::LineHeight(double size) const {
    return (fonts_.bold.ascent + fonts_.bold.descent) * size * kLeading;
}

void PageBlocks::MakeHeadings() {
    const std::vector<ReportColumn>& columns = report_.definition().columns;
    const double all =
        std::accumulate(columns.begin(), columns.end(), 0.0,
                        [](double sum, const ReportColumn& column) { return sum + column.width; });
    double x = left();
    for (const ReportColumn& column : columns) {
        ColumnHeadings::Heading heading{
            x, column.width / all * (right() - left()), DisplayText(column.heading), {}};
        x += heading.width;
        double height = fonts_.bold.Width(heading.text, text_size()) + 2 * kCellPadding;
        if (!column.turned) {
            BreakLines(heading.text, fonts_.bold, text_size(), heading.width - 2 * kCellPadding,
                       heading.lines);
            height =
                static_cast<double>(heading.lines.size()) * LineHeight(text_size()) + kRowAbove + kRowBelow;
        }
        headings_.height = std::max(headings_.height, height);
        headings_.headings.push_back(std::move(heading));
    }
}

void PageBlocks::Make(const FlowPosition& position, const std::vector<FactLine>& facts, bool first_on_page,
                      PageBlock& block) const {
    block.cell_count = 0;
    block.line_count = 0;
    block.line_height = LineHeight(text_size());
    block.above = kRowAbove;
    block.below = kRowBelow;
    block.fill.reset();
    block.bar_width = 0;
    switch (position.kind) {
        case BlockKind::kExplanation:
            return MakeText(report_.definition().explanation, block);
        case BlockKind::kFact:
            return MakeFact(facts[position.item], block);
        case BlockKind::kChartHeading:
            return MakeChartHeading(position.item, block);
        case BlockKind::kBar:
            return MakeBar(position.item, position.bar, block);
        case BlockKind::kHeading:
            return MakeHeading(position.item, block);
        case BlockKind::kNote:
            return MakeNote(position.item, block);
        case BlockKind::kRow:
            return MakeRow(position.row, first_on_page, block);
        case BlockKind::kNothing:
            block.above = kNothingAbove;
            return MakeText(kNothingToReport, block);
        case BlockKind::kTotals:
            return MakeTotals(block);
        case BlockKind::kEnd:
            return;
    }
}

BlockCell& PageBlocks::AddCell(PageBlock& block, double x, double width, double size) const {
    if (block.cell_count == block.cells.size()) block.cells.emplace_back();
    BlockCell& cell = block.cells[block.cell_count++];
    cell.x = x + kCellPadding;
    cell.width = width - 2 * kCellPadding;
    cell.alignment = ColumnAlignment::kLeft;
    cell.size = size;
    cell.bold = false;
    cell.colour = PageColour::kText;
    cell.place = {};
    return cell;
}

void PageBlocks::Break(PageBlock& block, BlockCell& cell) const {
    BreakLines(cell.text, Face(cell.bold), cell.size, cell.width, cell.lines);
    block.line_count = std::max(block.line_count, cell.lines.size());
}

void PageBlocks::MakeText(std::string_view text, PageBlock& block) const {
    BlockCell& cell = AddCell(block, left(), right() - left(), text_size());
    cell.colour = PageColour::kFaintText;
    cell.text = DisplayValue(text, ValueFormat::kText, cell.storage);
    Break(block, cell);
}

void PageBlocks::MakeFact(const FactLine& fact, PageBlock& block) const {
    const double name_width = (right() - left()) * kFactName;
    BlockCell& name = AddCell(block, left(), name_width, text_size());
    name.colour = PageColour::kFaintText;
    name.text = fact.name;
    Break(block, name);
    BlockCell& value = AddCell(block, left() + name_width, right() - left() - name_width, text_size());
    value.text = DisplayValue(fact.value, ValueFormat::kText, value.storage);
    Break(block, value);
    block.above = 0;
    block.below = 0;
}

void PageBlocks::MakeChartHeading(std::size_t chart, PageBlock& block) const {
    BlockCell& cell = AddCell(block, left(), right() - left(), text_size() + kOuterLarger);
    cell.bold = true;
    cell.colour = PageColour::kTitle;
    cell.text = DisplayValue(report_.definition().charts[chart].heading, ValueFormat::kText, cell.storage);
    Break(block, cell);
    block.line_height = LineHeight(cell.size);
    block.above = kChartAbove;
}

void PageBlocks::MakeBar(std::size_t chart, std::size_t bar, PageBlock& block) const {
    const std::vector<ChartBar>& bars = report_.rows().charts()[chart];
    const double width = right() - left();
    BlockCell& label = AddCell(block, left(), width * kBarLabel, text_size());
    label.text = DisplayValue(bars[bar].label, ValueFormat::kText, label.storage);
    Break(block, label);
    BlockCell& number = AddCell(block, left() + width * kBarLabel, width * kBarNumber, text_size());
    number.alignment = ColumnAlignment::kRight;
    number.storage = GroupedOrZero(bars[bar].value);
    number.text = number.storage;
    Break(block, number);
    if (bars[bar].is_rest) return;
    const std::int64_t longest = std::max<std::int64_t>(bars.front().value, 1);
    const double room = width * (1 - kBarLabel - kBarNumber) - 2 * kCellPadding;
    block.bar_x = left() + width * (kBarLabel + kBarNumber) + kCellPadding;
    block.bar_width =
        room * static_cast<double>(std::max<std::int64_t>(bars[bar].value, 0)) / static_cast<double>(longest);
}

double PageBlocks::Indent(std::size_t level) const {
    return kLevelIndent * static_cast<double>(level);
}

double PageBlocks::HeadingSize(std::size_t level) const {
    return text_size() + (level == 0 ? kOuterLarger : kInnerLarger);
}

void PageBlocks::MakeGroupLine(std::size_t group, PageBlock& block) const {
    const std::size_t level = report_.rows().groups()[group].level;
    const double x = left() + Indent(level);
    block.line_height = LineHeight(HeadingSize(level));
    block.above = kHeadingAbove;
    block.below = kHeadingBelow;
    block.fill_x = x;
    if (level == 0) block.fill = PageColour::kBand;
    if (level == 1) block.fill = PageColour::kLightBand;
    BlockCell& heading = AddCell(block, x, right() - x, HeadingSize(level));
    heading.bold = true;
    heading.colour = level == 0 ? PageColour::kTitle : PageColour::kText;
    heading.place = {TextPlace::Kind::kHeading, group, 0, 0};
}

void PageBlocks::MakeHeading(std::size_t group, PageBlock& block) const {
    MakeGroupLine(group, block);
    double room = block.cells.front().width;
    std::string totals;
    for (const std::string& total : report_.GroupTotals(group))
        totals += (totals.empty() ? "" : std::string(kTotalsGap)) + total;
    if (!totals.empty()) {
        const double whole = fonts_.regular.Width(totals, text_size()) + 4 * kCellPadding;
        const double width = std::min(whole, room / 2);
        room -= width;
        BlockCell& cell = AddCell(block, right() - width, width, text_size());
        cell.alignment = ColumnAlignment::kRight;
        cell.storage = std::move(totals);
        cell.text = cell.storage;
        Break(block, cell);
    }
    BlockCell& heading = block.cells.front();
    heading.width = room;
    heading.storage = report_.Heading(group);
    heading.text = heading.storage;
    Break(block, heading);
}

void PageBlocks::MakeRepeated(std::size_t group, PageBlock& block) const {
    constexpr std::string_view kContinued = " (continued)";
    block.cell_count = 0;
    MakeGroupLine(group, block);
    BlockCell& heading = block.cells.front();
    const double room = heading.width - fonts_.bold.Width(kContinued, heading.size);
    heading.storage = CutToLine(report_.Heading(group), fonts_.bold, heading.size, room);
    heading.storage += kContinued;
    heading.text = heading.storage;
    heading.place = {};
    heading.lines.assign(1, {0, heading.text.size()});
    block.line_count = 1;
}

void PageBlocks::MakeNote(std::size_t group, PageBlock& block) const {
    const double x = left() + Indent(report_.rows().groups()[group].level);
    BlockCell& cell = AddCell(block, x, right() - x, text_size());
    cell.colour = PageColour::kFaintText;
    cell.place = {TextPlace::Kind::kNote, group, 0, 0};
    cell.storage = report_.Note(group);
    cell.text = cell.storage;
    Break(block, cell);
}

void PageBlocks::MakeRow(std::size_t row, bool first_on_page, PageBlock& block) const {
    const std::vector<ReportColumn>& columns = report_.definition().columns;
    const ReportRows& rows = report_.rows();
    for (std::size_t i = 0; i < columns.size(); ++i) {
        BlockCell& cell = AddCell(block, headings_.headings[i].x, headings_.headings[i].width, text_size());
        cell.alignment = columns[i].alignment;
        cell.place = {TextPlace::Kind::kCell, row, i, 0};
        const bool left_out = !first_on_page && rows.Repeats(row, i);
        cell.text = left_out ? "" : DisplayValue(rows.ColumnValue(row, i), columns[i].format, cell.storage);
        if (columns[i].format == ValueFormat::kYesNo && cell.text != "Yes")
            cell.colour = PageColour::kFaintText;
        Break(block, cell);
    }
    if (row % 2 == 1) {
        block.fill = PageColour::kStripe;
        block.fill_x = left();
    }
}

void PageBlocks::MakeTotals(PageBlock& block) const {
    block.above = kHeadingAbove;
    block.below = kHeadingBelow;
    block.fill = PageColour::kBand;
    block.fill_x = left();
    BlockCell& cell = AddCell(block, left(), right() - left(), text_size() + kOuterLarger);
    cell.bold = true;
    cell.colour = PageColour::kTitle;
    cell.storage = "Total";
    for (const std::string& total : report_.Totals()) {
        cell.storage += kTotalsGap;
        cell.storage += total;
    }
    cell.text = cell.storage;
    block.line_height = LineHeight(cell.size);
    Break(block, cell);
}

}  // namespace zorvel
