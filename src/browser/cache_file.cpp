#include "browser/cache_file.h"

#include <cstdint>

#include "shell/formats.h"
#include "shell/text_records.h"

namespace zorvel {

std::string CacheHead(std::string_view heading, const DateTime& today, std::size_t count) {
    return std::string(heading) + "\r\n" + ShortDate(today) + "," +
           PlainNumber(static_cast<std::int64_t>(count)) + "\r\n";
}

std::string ContainerLine(const OURecord& container) {
    return PlainNumber(container.AppsHere) + ',' + Quoted(container.Path) + ',' + Quoted(container.Class) +
           ',' + Quoted(container.Parent) + ',' + Quoted(container.Name) + ',' +
           PlainNumber(container.ChildCount) + ',' + PlainNumber(container.ChildApps) + "\r\n";
}

std::string ApplicationLine(const AppRecord& application) {
    return Quoted(application.Name) + ',' + Quoted(application.Container) + "\r\n";
}

std::string OneLine(std::string_view text) {
    std::string line;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\r' && text.substr(i + 1).starts_with('\n')) continue;
        line += text[i] == '\r' || text[i] == '\n' ? ' ' : text[i];
    }
    return line;
}

}  // namespace zorvel
