// Many texts of paths and registry keys, kept small: each folder and each name but once.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/number_table.h"
#include "platform/text_pool.h"

namespace zorvel {

class PathTexts {
  public:
    // A text that is kept: its part up to its last "\", and what follows.
    struct Text {
        std::uint32_t folder = 0;
        std::uint32_t name = 0;
    };
    // For each text, whether it holds a word, without regard to case.
    class Matches {
      public:
        bool Has(Text text) const {
            return whole_[text.folder] || whole_[text.name] || (ends_[text.folder] && begins_[text.name]);
        }

      private:
        friend class PathTexts;
        // Of each part: the word stands in it; it ends, or begins, with what of a word with a "\" stands in a
        // folder, or in its name.
        std::vector<unsigned char> whole_;
        std::vector<unsigned char> ends_;
        std::vector<unsigned char> begins_;
    };

    Text Keep(std::string_view text);
    // Frees what only Keep needs, which must not be called any more.
    void Complete();

    void AppendTo(std::string& to, Text text) const {
        to.append(parts_[text.folder]).append(parts_[text.name]);
    }
    Matches Search(std::string_view word) const;
    // The place of each part when all are sorted without regard to case: texts sort by those of their folder
    // and their name.
    std::vector<std::uint32_t> Ranks() const;

  private:
    std::uint32_t KeepPart(std::string_view part);

    TextPool pool_;
    std::vector<std::string_view> parts_;
    NumberTable numbers_;
};

}  // namespace zorvel
