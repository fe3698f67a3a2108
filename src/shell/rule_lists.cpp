#include "shell/rule_lists.h"

#include <utility>

#include "platform/code_page.h"
#include "shell/text_records.h"

namespace zorvel {

std::vector<std::string> ReadRuleList(InputFile file) {
    std::vector<std::string> entries;
    LineReader reader(std::move(file), LineEnd::kAny);
    for (std::string line; reader.Next(line);) {
        const bool comment = line.starts_with(';');
        const bool blank = line.find_first_not_of(' ') == std::string::npos;
        if (!comment && !blank) entries.push_back(UpperCase(line));
    }
    return entries;
}

}  // namespace zorvel
