// What pages are drawn on: texts and areas, in points from the page's upper left corner.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace zorvel {

// A font in ems: the advance of each character of the code page, and how far it reaches over and under its
// base line.
struct FontFace {
    std::array<double, 256> advances{};
    double ascent = 0;
    double descent = 0;

    // The width of a text in points at a size in points.
    double Width(std::string_view text, double size) const;
};

struct ReportFonts {
    FontFace regular;
    FontFace bold;
};

// What a colour is for; the canvas decides what it looks like.
enum class PageColour {
    kText,
    kFaintText,  // notes, facts, page numbers
    kTitle,      // the report's title and the headings of outer groups
    kBand,       // behind headings of the outermost groups
    kLightBand,  // behind headings of the groups within
    kStripe,     // behind every second row
    kRule,       // lines
    kBar,        // of charts
};

// Where a text on a page comes from.
struct TextPlace {
    enum class Kind { kFurniture, kCell, kHeading, kNote };

    Kind kind = Kind::kFurniture;
    std::size_t index = 0;   // the row of a cell, or the number of the group
    std::size_t column = 0;  // of a cell
    std::size_t offset = 0;  // of the text's first character in the value as it is displayed
};

// A part of a value as it is displayed: the characters [place.offset, place.offset + length).
struct MarkedText {
    TextPlace place;
    std::size_t length = 0;
};

struct PageText {
    double x = 0;         // of the left end of the base line
    double baseline = 0;  // from the top of the page
    double size = 0;      // of the font
    bool bold = false;
    bool turned = false;  // runs upwards from that point
    PageColour colour = PageColour::kText;
    std::string_view text;  // valid during the call; one line of printable characters of the code page
    TextPlace place;
};

class PageCanvas {
  public:
    virtual ~PageCanvas() = default;
    virtual void Draw(const PageText& text) = 0;
    virtual void Fill(double x, double y, double width, double height, PageColour colour) = 0;
};

}  // namespace zorvel
