// The Find tab: the box in which a search is typed or chosen, and the texts around it.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "find/predefined_searches.h"

namespace zorvel {

class FindBox {
  public:
    static constexpr int kEnterKey = 13;

    // The box's text, and the predefined search that was chosen, by its number from 0.
    const std::string& comFind() const { return text_; }
    std::optional<std::size_t> chosen() const { return chosen_; }
    // What rtfDetail shows in place of results: the description of the chosen search, or what to do.
    std::string_view detail() const { return detail_; }
    // The label labInfo, and whether it is shown.
    const std::string& labInfo() const { return lab_info_; }
    bool labInfo_shown() const { return lab_info_shown_; }

    // A predefined search was clicked, by its number from 0; none when the click left the typed text.
    void Choose(std::optional<std::size_t> search);
    // The text was edited: no predefined search is chosen any more, and the prompt is shown again.
    void Edit(std::string_view text);
    // The focus enters the box. Returns how many characters to select, from the first on: all.
    std::size_t Focus() const { return text_.size(); }
    // A key was pressed in the box. True when it starts the search: Enter, when there is something to find.
    bool PressKey(int key);

    // Whether there is something to find: the text is not blank.
    bool CanStart() const;
    // The expression that a search started now looks for.
    std::string_view FindPattern() const;

    // A Find run begins, and has ended with `total` as its last word.
    void HideLabInfo() { lab_info_shown_ = false; }
    void ShowLabInfo(std::string_view total);

  private:
    static constexpr std::string_view kPrompt =
        "Please enter the text to find in the selected applications, or choose one of the pre-defined "
        "searches to find particular types of data in the applications - click the 'Find' button to start "
        "the search.";

    std::string text_ = "(enter text)";
    std::optional<std::size_t> chosen_;
    std::string_view detail_ = kPrompt;
    std::string lab_info_ = "Zorvel Find";
    bool lab_info_shown_ = true;
};

}  // namespace zorvel
