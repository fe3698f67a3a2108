#include "reporting/data_source.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "platform/code_page.h"
#include "platform/write_in_place.h"

namespace zorvel {
namespace {

constexpr std::string_view kSection = "[Zorvel]";

bool HasSection(std::string_view text) {
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find('\n', at), text.size());
        std::string_view line = text.substr(at, end - at);
        line = line.substr(0, line.find_last_not_of(" \t\r") + 1);
        if (EqualIgnoringCase(line, kSection)) return true;
        at = end + 1;
    }
    return false;
}

}  // namespace

void RegisterDataSource(const Files& files) {
    const std::string path = files.Path("odbc.ini");
    const std::string text = files.Exists(path) ? files.Read(path) : std::string();
    if (HasSection(text)) return;
    WriteInPlace(files.Resolve(path), [&](OutputFile& file) {
        file.Write(text);
        if (!text.empty() && text.back() != '\n') file.Write('\n');
        file.Write(kSection);
        file.Write("\nDriver = SQLite3\nDatabase =\n");
    });
}

}  // namespace zorvel
