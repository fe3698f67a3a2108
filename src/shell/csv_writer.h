// Comma-separated values (RFC 4180) as spreadsheets read them.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

#include "platform/output_file.h"
#include "shell/character_table.h"

namespace zorvel {

// Values are in quotes where they have to be. An apostrophe stands before a text that a spreadsheet would
// take for a formula; control characters other than tabs and ends of lines become their pictures ("\u241B"
// for 27) or U+FFFD: they stay visible, cut no text short and tell a terminal nothing.
class CsvWriter {
  public:
    // Writes to `file`, which must outlive the object, beginning with a byte order mark, by which
    // spreadsheets know UTF-8. All raise the file's errors.
    explicit CsvWriter(OutputFile& file);

    // Writes a value behind the record's earlier ones.
    void Write(std::string_view value);
    void EndRecord();

  private:
    unsigned TraitsOf(char character) const { return traits_[static_cast<unsigned char>(character)]; }
    void WriteValue(std::string_view value);

    OutputFile& file_;
    CharacterTable spelling_;
    std::array<unsigned char, 256> traits_{};  // what is to be known of a character
    std::size_t values_ = 0;                   // of the record
    bool only_is_empty_ = false;               // the record has one value so far, an empty one
};

}  // namespace zorvel
