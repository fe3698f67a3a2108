// The font table and the colour table of an RTF document.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <vector>

#include "viewers/rich_text.h"
#include "viewers/rtf_lexer.h"

namespace zorvel {

// Reads up to the "}" that closes the group the lexer stands in, and passes it.
void SkipRtfGroup(RtfLexer& lexer);

class RtfTables {
  public:
    // Read a table, from behind \fonttbl or \colortbl to the end of its group. Of fonts under one number the
    // first counts.
    void ReadFonts(RtfLexer& lexer);
    void ReadColours(RtfLexer& lexer);

    // The font with a number; one without a name when there is none.
    const RichTextFont& Font(std::int32_t number) const;
    // The colour with a number; none for a default entry and for a number outside the table.
    std::optional<RichTextColour> Colour(std::int32_t number) const;

  private:
    // Tables of documents hold a few dozen entries; what a damaged file lists beyond this is dropped.
    static constexpr std::size_t kMostEntries = 4096;

    void AddFont(std::int32_t number, RichTextFont& font);

    std::map<std::int32_t, RichTextFont> fonts_;  // formats point into it
    std::vector<std::optional<RichTextColour>> colours_;
    RichTextFont nameless_;
};

}  // namespace zorvel
