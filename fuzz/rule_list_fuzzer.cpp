// Reads arbitrary bytes as a rule list: its entries are lines in upper case that are neither blank nor
// comments, and read the same when they are written again.
#include <string>
#include <string_view>
#include <vector>

#include "fuzz_input.h"
#include "platform/code_page.h"
#include "shell/rule_lists.h"

namespace zorvel::fuzz {

void TestOneInput(std::string_view input) {
    const std::vector<std::string> entries = ReadRuleList(AsFile(input));
    std::string text;
    for (const std::string& entry : entries) {
        Require(!entry.starts_with(';') && entry.find_first_not_of(' ') != std::string::npos);
        Require(entry.find_first_of("\r\n") == std::string::npos && UpperCase(entry) == entry);
        text += entry + "\r\n";
    }
    Require(text.size() <= 2 * input.size() + 2);
    Require(ReadRuleList(AsFile(text)) == entries);
}

}  // namespace zorvel::fuzz
