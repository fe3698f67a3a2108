// Searching a long text of Windows-1252 for another.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zorvel {

// Time is in proportion to the text that is passed, whatever text and needle are.
class TextSearch {
  public:
    // Without `match_case` letters match by the code page ("É" finds "é"). An empty needle is never found.
    TextSearch(std::string_view needle, bool match_case);

    std::size_t size() const { return forwards_.needle.size(); }

    // The place of the first match that begins at `from` or behind it.
    std::optional<std::size_t> Next(std::string_view text, std::size_t from) const;
    // The place of the last match that ends at `before` or ahead of it.
    std::optional<std::size_t> Previous(std::string_view text, std::size_t before) const;
    // The number of matches, of which none overlaps the one before it.
    std::size_t Count(std::string_view text) const;

  private:
    using Fold = std::array<unsigned char, 256>;

    // The needle in one direction, with, for each number of its characters that match, the number that still
    // match when they are taken one character later (Knuth, Morris and Pratt).
    struct Pattern {
        explicit Pattern(std::string folded_needle);
        // The distance from `text` to behind the first match.
        template <typename Iterator>
        std::optional<std::size_t> Find(Iterator text, Iterator end, const Fold& fold) const;

        std::string needle;
        std::vector<std::uint32_t> fallback;
    };

    static Fold MakeFold(bool match_case);
    std::string Folded(std::string_view needle) const;

    Fold fold_;
    Pattern forwards_;
    Pattern backwards_;
};

}  // namespace zorvel
