#include "shell/rule_lists.h"

#include "platform/code_page.h"
#include "shell/text_records.h"

namespace zorvel {

std::vector<std::string> ReadRuleList(const Files& files, std::string_view path) {
    std::vector<std::string> entries;
    LineReader reader(files.Open(path), LineEnd::kAny);
    for (std::string line; reader.Next(line);) {
        const bool comment = line.starts_with(';');
        const bool blank = line.find_first_not_of(' ') == std::string::npos;
        if (!comment && !blank) entries.push_back(UpperCase(line));
    }
    return entries;
}

}  // namespace zorvel
