#include "database/sql_text.h"

#include <algorithm>

#include "platform/error.h"

namespace zorvel {

std::string_view CutEscaped(std::string_view value, std::size_t length) {
    if (value.size() <= length / 2) return value;
    std::size_t kept = 0;
    for (std::size_t used = 0; kept < value.size(); ++kept) {
        used += value[kept] == '\'' ? 2 : 1;
        if (used > length) break;
    }
    return value.substr(0, kept);
}

std::optional<std::string> LiteralValue(std::string_view text) {
    std::string value;
    value.reserve(text.size());
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] == '\'' && (++at == text.size() || text[at] != '\'')) return std::nullopt;
        value += text[at];
    }
    return value;
}

void RejectStatement(const Database& database, std::string_view sql) {
    database.Check(sql);
    throw Error(errors::kStore, "an apostrophe in a value ends its text literal").With(CutForMessage(sql));
}

}  // namespace zorvel
