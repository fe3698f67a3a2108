// How a file format spells each character of the code page.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

#include "platform/code_page.h"
#include "platform/output_file.h"

namespace zorvel {

class CharacterTable {
  public:
    // Spells every character as its UTF-8.
    CharacterTable() {
        for (std::size_t code = 0; code < texts_.size(); ++code) {
            const auto character = static_cast<char>(static_cast<unsigned char>(code));
            texts_[code] = ToUtf8(std::string_view(&character, 1));
            plain_[code] = texts_[code] == std::string_view(&character, 1);
        }
    }

    void Spell(std::size_t code, std::string text) {
        texts_[code] = std::move(text);
        plain_[code] = false;
    }

    // Spells each control character, whose code it gives to `spelling`, as the text that it returns.
    template <typename Spelling>
    void SpellControls(Spelling spelling) {
        for (std::size_t code = 0; code < texts_.size(); ++code)
            if (IsControl(static_cast<char>(static_cast<unsigned char>(code)))) Spell(code, spelling(code));
    }

    // Spells a character as itself.
    void Keep(std::size_t code) { plain_[code] = true; }

    bool IsPlain(char character) const { return plain_[static_cast<unsigned char>(character)]; }

    void Write(std::string_view text, OutputFile& file) const {
        while (!text.empty()) {
            const auto* end = std::find_if(text.begin(), text.end(),
                                           [this](char character) { return !IsPlain(character); });
            file.Write(std::string_view(text.begin(), end));
            text.remove_prefix(static_cast<std::size_t>(end - text.begin()));
            if (text.empty()) return;
            file.Write(texts_[static_cast<unsigned char>(text.front())]);
            text.remove_prefix(1);
        }
    }

  private:
    std::array<std::string, 256> texts_;
    std::array<bool, 256> plain_{};
};

}  // namespace zorvel
