#include "find/find_box.h"

namespace zorvel {
void FindBox::Choose(std::optional<std::size_t> search) {
    chosen_ = search;
    detail_ = kPrompt;
    if (!search) return;
    const PredefinedSearch& chosen = PredefinedSearches.at(*search);
    text_ = chosen.name;
    detail_ = chosen.description;
}

void FindBox::Edit(std::string_view text) {
    text_ = text;
    Choose(std::nullopt);
}

bool FindBox::PressKey(int key) {
    detail_ = kPrompt;
    return key == kEnterKey && CanStart();
}

bool FindBox::CanStart() const {
    return text_.find_first_not_of(' ') != std::string::npos;
}

std::string_view FindBox::FindPattern() const {
    return chosen_ ? PredefinedSearches.at(*chosen_).expression : std::string_view(text_);
}

void FindBox::ShowLabInfo(std::string_view total) {
    lab_info_ = total;
    lab_info_shown_ = true;
}

}  // namespace zorvel
