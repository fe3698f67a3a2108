// Searching a long text for another, in both directions.
#include "viewers/text_search.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "platform/code_page.h"

namespace zorvel {
namespace {

TEST(TextSearch, FindsWithAndWithoutRegardToCase) {
    struct Case {
        const char *text, *needle;
        std::optional<std::size_t> first;       // without regard to case
        std::optional<std::size_t> first_case;  // with
        std::size_t count;                      // without regard to case
    };
    for (const auto& c :
         {Case{"an ERROR, an error", "error", 3, 13, 2},
          Case{"an ERROR, an error", "Error", 3, std::nullopt, 2}, Case{"\xC9t\xE9", "\xE9", 0, 2, 2},
          Case{"aaaaa", "AA", 0, std::nullopt, 2}, Case{"ababac", "abac", 2, 2, 1},
          Case{"aabaabaaa", "aabaaa", 3, 3, 1}, Case{"one\ntwo", "e\nt", 2, 2, 1},
          Case{"text", "", std::nullopt, std::nullopt, 0}, Case{"", "a", std::nullopt, std::nullopt, 0},
          Case{"ab", "abc", std::nullopt, std::nullopt, 0}}) {
        EXPECT_EQ(TextSearch(c.needle, false).Next(c.text, 0), c.first) << c.text << ": " << c.needle;
        EXPECT_EQ(TextSearch(c.needle, true).Next(c.text, 0), c.first_case) << c.text << ": " << c.needle;
        EXPECT_EQ(TextSearch(c.needle, false).Count(c.text), c.count) << c.text << ": " << c.needle;
    }
}

TEST(TextSearch, FindsEveryPlaceInBothDirections) {
    // All texts and needles of two letters, up to eight and four long.
    const auto words = [](std::size_t longest) {
        std::vector<std::string> all = {""};
        for (std::size_t i = 0; all[i].size() < longest; ++i)
            for (const char letter : {'a', 'b'})
                all.push_back(all[i] + letter);
        return all;
    };
    for (const std::string& needle : words(4)) {
        if (needle.empty()) continue;
        const TextSearch search(UpperCase(needle), false);
        for (const std::string& text : words(8)) {
            for (std::size_t at = 0; at <= text.size() + 1; ++at) {
                const std::size_t next = text.find(needle, at);
                ASSERT_EQ(search.Next(text, at).value_or(std::string::npos), next)
                    << needle << " in " << text << " from " << at;
                const std::size_t previous =
                    at < needle.size() ? std::string::npos : text.rfind(needle, at - needle.size());
                ASSERT_EQ(search.Previous(text, at).value_or(std::string::npos), previous)
                    << needle << " in " << text << " before " << at;
            }
        }
    }
}

}  // namespace
}  // namespace zorvel
