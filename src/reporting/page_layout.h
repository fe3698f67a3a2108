// A report on pages. One layout serves the screen, the printer and PDF.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "platform/interruption.h"
#include "reporting/page_blocks.h"
#include "reporting/page_canvas.h"
#include "reporting/page_flow.h"
#include "reporting/report.h"

namespace zorvel {

class PageLayout {
  public:
    // Lays the whole report out. Report and fonts must outlive the object. Raises Interrupted when `ask`,
    // which is asked for each page, says so.
    PageLayout(const Report& report, const ReportFonts& fonts, const AskInterrupted& ask = {});

    PageLayout(const PageLayout&) = delete;
    PageLayout& operator=(const PageLayout&) = delete;
    PageLayout(PageLayout&&) = delete;
    PageLayout& operator=(PageLayout&&) = delete;
    ~PageLayout() = default;

    // At least 1.
    std::size_t page_count() const { return starts_.size(); }
    double page_width() const { return report_.definition().page.width; }    // points
    double page_height() const { return report_.definition().page.height; }  // points

    // Draws a page, from 0. Texts come in reading order.
    void Draw(std::size_t page, PageCanvas& canvas) const;

    // The page on which a row, or the heading of a group, begins.
    std::size_t PageOfRow(std::size_t row) const;
    std::size_t PageOfGroup(std::size_t group) const;

  private:
    // A page that is being filled, and drawn if there is a canvas.
    struct Sheet {
        PageCanvas* canvas = nullptr;
        double top = 0;  // where the next block goes
        double bottom = 0;
        double body_height = 0;
        bool empty = true;      // no block is on it yet
        bool headed = false;    // the columns' headings are on it
        bool first_row = true;  // no row is on it yet
    };
    // A text at the left end of a line.
    struct End {
        std::string text;
        double size = 0;
        bool bold = false;
    };

    // Fills a page from `position` on; returns where the next one goes on.
    FlowPosition Fill(FlowPosition position, std::size_t page, PageCanvas* canvas) const;
    // True when the page should end ahead of a heading, so that it stays with what it is the heading of.
    bool BreaksAhead(const FlowPosition& position, const Sheet& sheet) const;
    double HeightWithNext(FlowPosition position) const;
    // Makes the block that holds `position`, unless it is at hand: a value that goes on for many pages is
    // broken into lines once.
    void MakeBlock(const FlowPosition& position, bool first_on_page) const;
    // Places what fits of the block at `position`, which moves behind that; false when the page is full.
    bool Place(FlowPosition& position, Sheet& sheet) const;
    void PlaceHeadings(const FlowPosition& position, Sheet& sheet) const;
    // Draws `count` lines of a block, from line `first` on.
    void DrawBlock(const PageBlock& block, std::size_t first, std::size_t count, double height, double above,
                   const Sheet& sheet) const;
    void DrawLine(const PageBlock& block, const BlockCell& cell, std::size_t line, double top,
                  PageCanvas& canvas) const;
    void DrawColumnHeadings(double top, PageCanvas& canvas) const;
    // Draws what stands above and below the blocks of a page.
    void DrawFurniture(std::size_t page, PageCanvas& canvas) const;
    // Draws a line with a text at either end.
    void DrawEnds(const End& left, std::string_view right, double top, PageCanvas& canvas) const;
    double BodyTop(std::size_t page) const;
    double BodyBottom() const;
    std::size_t PageOf(const FlowPosition& position) const;

    const Report& report_;
    PageBlocks blocks_;
    PageFlow flow_;
    std::vector<FlowPosition> starts_;  // of each page
    // The block at hand, where it begins, and how it was made.
    mutable PageBlock block_;
    mutable FlowPosition block_position_;
    mutable bool block_first_on_page_ = false;
    mutable PageBlock repeated_;  // the heading of a group that goes on
};

}  // namespace zorvel
