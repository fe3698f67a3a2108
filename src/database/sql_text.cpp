#include "database/sql_text.h"

#include <algorithm>

#include "platform/error.h"

namespace zorvel {
namespace {

Error RefusalOf(const Database& database, std::string_view sql) {
    try {
        database.Check(sql);
    } catch (const Error& error) {
        return error;
    }
    return Error(errors::kStore, "an apostrophe in a value ends its text literal");
}

}  // namespace

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

void RejectStatement(const Database& database, std::string_view sql, std::string_view field,
                     std::string_view value) {
    const Error error = RefusalOf(database, sql);
    throw error.With(std::string(field) + " '" + CutForMessage(value) +
                     "' holds an apostrophe: " + error.description());
}

}  // namespace zorvel
