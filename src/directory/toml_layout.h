// Where the parts of a TOML text stand in it.
#pragma once

#include <toml++/toml.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace zorvel {

// Places are offsets of bytes. The text must live as long.
class TomlLayout {
  public:
    struct Range {
        std::size_t begin;
        std::size_t end;
    };

    TomlLayout(std::string_view text, const toml::table& document);

    // What ends the text's lines.
    std::string_view line_end() const { return line_end_; }
    // Where the first line begins.
    std::size_t FirstLine() const { return lines_.front(); }
    // A value, without what stands around it.
    Range ValueOf(const toml::node& node) const;
    // The whole lines of a key with its value.
    Range LinesOf(const toml::key& key, const toml::node& value) const;
    // The whole lines of a table below a header of its own: with the comment right above, unless it begins
    // the text, with those right below its last value, and with the blank lines that follow.
    Range SectionOf(const toml::table& table) const;
    // Where the line behind the one with `place` begins; the end of the text behind the last.
    std::size_t BehindLine(std::size_t place) const;

  private:
    std::size_t PlaceOf(const toml::source_position& position) const;
    std::size_t LineAt(std::size_t place) const;
    std::size_t LineBegin(std::size_t line) const {
        return line < lines_.size() ? lines_[line] : text_.size();
    }
    bool IsComment(std::size_t line) const { return FirstOf(line) == '#'; }
    bool IsBlank(std::size_t line) const { return FirstOf(line) == '\0'; }
    bool IsHeader(std::size_t line) const;
    char FirstOf(std::size_t line) const;
    void FindHeaders(const toml::node& node);
    std::size_t LastPlace(const toml::node& node) const;

    std::string_view text_;
    std::string_view line_end_ = "\n";
    std::vector<std::size_t> lines_;    // where each begins
    std::vector<std::size_t> headers_;  // the lines of headers, ascending
};

}  // namespace zorvel
