// Compiles the first line of an input as an expression and searches the rest for it. A fault is told at a
// place of the expression; a match does not depend on what makes the search fast, which a group around the
// expression prevents.
#include <optional>
#include <string>
#include <string_view>

#include "fuzz_input.h"
#include "platform/regex.h"
#include "platform/regex_syntax.h"

namespace zorvel::fuzz {
namespace {

// Whether the expression matches; nothing when it is faulty, or the search is given up.
std::optional<bool> Matches(const std::string& expression, std::string_view text) {
    return Readable({errors::kInvalidCall}, [&] { return Regex(expression).Matches(text); });
}

void CheckTranslation(std::string_view expression) {
    const auto translated = Readable({errors::kInvalidCall}, [&] { return TranslateExpression(expression); });
    if (!translated) return;
    Require(translated->places.size() == translated->text.size() && translated->ways >= 1);
    for (const std::size_t place : translated->places)
        Require(place < expression.size());
}

void CheckFault(std::string_view expression) {
    constexpr std::string_view kPlace = "Invalid expression at character ";
    try {
        const Regex regex(expression);
    } catch (const Error& error) {
        Require(error.description().starts_with(kPlace));
        const std::size_t place = std::stoul(error.description().substr(kPlace.size()));
        Require(place >= 1 && place <= expression.size() + 1);
    }
}

}  // namespace

void TestOneInput(std::string_view input) {
    const std::string expression(TakePart(input, '\n'));
    CheckTranslation(expression);
    CheckFault(expression);
    const std::optional<bool> fast = Matches(expression, input);
    if (!fast) return;
    const std::optional<bool> slow = Matches("(?:" + expression + ')', input);
    Require(!slow || slow == fast);
}

}  // namespace zorvel::fuzz
