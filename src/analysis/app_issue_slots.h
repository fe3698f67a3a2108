// The issues that concern an application as a whole.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

#include "issues/issue_catalogue.h"

namespace zorvel {

// The slots by what they flag; further slots are free.
enum class AppIssue : std::size_t {
    kNoDescription,
    kNoAdminNotes,
    kNoAssociations,
    kComplexIni,
    kComplexText,
    kComplexRegistry
};

// Slots 0 to 10: a code, and whether the application at hand has that issue. A slot without a code is never
// written.
struct AppIssueSlots {
    struct Slot {
        bool on = false;
        std::string_view code;
    };
    std::array<Slot, 11> slots;

    // Gives the slots their codes, at start-up.
    void Fill() {
        constexpr std::array<Issue, 6> kIssues = {Issue::kNoDescription,  Issue::kNoAdminNotes,
                                                  Issue::kNoAssociations, Issue::kComplexIni,
                                                  Issue::kComplexText,    Issue::kComplexRegistry};
        for (std::size_t i = 0; i < kIssues.size(); ++i)
            slots[i].code = CodeOf(kIssues[i]);
    }
    void Set(AppIssue issue, bool on) { slots[static_cast<std::size_t>(issue)].on = on; }
    // The state in which every application begins: what it lacks is taken for missing until it is found.
    void Reset() {
        for (Slot& slot : slots)
            slot.on = false;
        Set(AppIssue::kNoDescription, true);
        Set(AppIssue::kNoAdminNotes, true);
        Set(AppIssue::kNoAssociations, true);
    }
};

}  // namespace zorvel
