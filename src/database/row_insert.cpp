#include "database/row_insert.h"

#include "platform/error.h"
#include "shell/formats.h"
#include "streams/text_helpers.h"

namespace zorvel {
namespace {

constexpr std::string_view kBlanks = " \t\r\n\f";
constexpr std::string_view kDigits = "0123456789";

std::string ParameterText(std::string_view prefix, std::size_t values) {
    std::string sql(prefix);
    for (std::size_t i = 1; i <= values; ++i)
        sql += (i == 1 ? "?" : ",?") + std::to_string(i);
    return sql + ')';
}

std::size_t TakeDigits(std::string_view& text) {
    const std::size_t count = std::min(text.find_first_not_of(kDigits), text.size());
    text.remove_prefix(count);
    return count;
}

// True for a number literal: a sign, digits, a fraction and an exponent, with blanks around it.
bool IsNumber(std::string_view text) {
    const std::size_t start = text.find_first_not_of(kBlanks);
    if (start == std::string_view::npos) return false;
    text = text.substr(start, text.find_last_not_of(kBlanks) + 1 - start);
    if (text.starts_with('-') || text.starts_with('+')) text.remove_prefix(1);
    std::size_t digits = TakeDigits(text);
    if (text.starts_with('.')) {
        text.remove_prefix(1);
        digits += TakeDigits(text);
    }
    if (digits > 0 && (text.starts_with('e') || text.starts_with('E'))) {
        text.remove_prefix(1);
        if (text.starts_with('-') || text.starts_with('+')) text.remove_prefix(1);
        digits = TakeDigits(text);
    }
    return digits > 0 && text.empty();
}

// Makes the value that the statement stores; false when the field does not stay within its place in the
// statement.
bool MakeValue(const ValueRule& rule, std::string_view field, std::string& value) {
    switch (rule.form) {
        case ValueForm::kEscaped:
            value = CutEscaped(field, rule.cut);
            return true;
        case ValueForm::kAsIs: {
            value = field.substr(0, rule.cut);
            if (value.find('\'') == std::string::npos) return true;
            std::optional<std::string> literal = LiteralValue(value);
            if (literal) value = std::move(*literal);
            return literal.has_value();
        }
        case ValueForm::kBare:
            value = field;
            return IsNumber(field);
        case ValueForm::kInteger:
            value = Rounded(NumericValue(field));
            return true;
    }
    return false;
}

std::string ValueText(const ValueRule& rule, std::string_view field) {
    switch (rule.form) {
        case ValueForm::kEscaped:
            return '\'' + EscapeQuotes(CutEscaped(field, rule.cut)) + '\'';
        case ValueForm::kAsIs:
            return '\'' + std::string(field.substr(0, rule.cut)) + '\'';
        case ValueForm::kInteger:
            return Rounded(NumericValue(field));
        default:
            return std::string(field);
    }
}

}  // namespace

RowInsert::RowInsert(const Database& dataset, std::string_view prefix, std::span<const ValueRule> rules)
    : dataset_(dataset),
      prefix_(prefix),
      rules_(rules),
      command_(dataset.Prepare(ParameterText(prefix, rules.size() + 1))),
      values_(rules.size() + 1) {}

void RowInsert::Insert(const std::string& key, const std::vector<std::string>& record) {
    values_[0] = key;
    for (std::size_t i = 0; i < rules_.size(); ++i) {
        if (MakeValue(rules_[i], record[i + 1], values_[i + 1])) continue;
        if (rules_[i].form == ValueForm::kBare)
            throw Error(errors::kStore, "a value that has to be a number is none");
        RejectStatement(dataset_, StatementText(key, record), rules_[i].name, record[i + 1]);
    }
    command_.Execute(values_);
}

std::string RowInsert::StatementText(const std::string& key, const std::vector<std::string>& record) const {
    std::string sql(prefix_);
    sql += key;
    for (std::size_t i = 0; i < rules_.size(); ++i)
        sql += ',' + ValueText(rules_[i], record[i + 1]);
    return sql + ')';
}

}  // namespace zorvel
