#include "streams/macro_rules.h"

#include <array>

#include "platform/code_page.h"
#include "streams/issue_rule.h"

namespace zorvel {
namespace {

struct Macro {
    std::string_view name;
    std::string_view value;

    bool IsShortPath() const { return EqualIgnoringCase(name, "SHORT_TARGET_PATH"); }
};

// True when every folder of `path` has at most 8 characters and its last part at most 8 before the "." or the
// end.
bool IsShortForm(std::string_view path) {
    constexpr std::size_t kLongest = 8;
    for (std::size_t end = path.find('\\'); end != std::string_view::npos; end = path.find('\\')) {
        if (end > kLongest) return false;
        path.remove_prefix(end + 1);
    }
    return path.size() <= kLongest || path.substr(0, kLongest + 1).find('.') != std::string_view::npos;
}

constexpr std::array<IssueRule<Macro>, 2> kMacroRules = {{
    {.issue = Issue::kMacroUnc,
     .holds = [](const Macro& macro) { return macro.value.starts_with(R"(\\)") && !macro.IsShortPath(); }},
    {.issue = Issue::kMacroShortPath,
     .holds = [](const Macro& macro) { return macro.IsShortPath() && !IsShortForm(macro.value); }},
}};

}  // namespace

std::string_view MacroValid(std::string_view macro_name, std::string_view macro_value) {
    return FirstIssue(kMacroRules, Macro{.name = macro_name, .value = macro_value});
}

}  // namespace zorvel
