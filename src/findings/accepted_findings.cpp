#include "findings/accepted_findings.h"

#include <toml++/toml.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <set>

#include "issues/issue_catalogue.h"
#include "platform/code_page.h"
#include "platform/error.h"
#include "platform/hex.h"

namespace zorvel {
namespace {

constexpr std::string_view kTables = "accepted";
constexpr std::array<std::string_view, 6> kKeys = {"code", "application", "target", "reason", "until", "by"};
constexpr const char* kWantsTables = "expected tables under [[accepted]]";
constexpr const char* kWantsCode = "\"code\": expected the code of an issue, such as \"REGISTRYUNC\"";

[[noreturn]] void Fail(const std::string& path, std::size_t line, const std::string& reason) {
    throw Error(errors::kInvalidCall).With(path + ", line " + std::to_string(line) + ": " + reason);
}

toml::table Parse(std::string_view text, const std::string& path) {
    try {
        return toml::parse(text);
    } catch (const toml::parse_error& error) {
        Fail(path, error.source().begin.line, FromUtf8(error.description()));
    }
}

// One [[accepted]] table.
class EntryReader {
  public:
    EntryReader(const toml::table& table, const std::string& path) : table_(table), path_(path) {}

    AcceptedFinding Read() const {
        RefuseUnknownKeys();
        AcceptedFinding accepted;
        accepted.line = table_.source().begin.line;
        accepted.code = Required("code");
        accepted.application = Required("application");
        accepted.target = Text("target");
        accepted.reason = Required("reason");
        accepted.until = ReadUntil();
        accepted.by = Text("by").value_or("");
        if (const std::string fault = FaultOf(accepted); !fault.empty()) {
            // The fault begins with the key that it is about, in quotes.
            const toml::node* const node = table_.get(fault.substr(1, fault.find('"', 1) - 1));
            Fail(path_, node == nullptr ? accepted.line : node->source().begin.line, fault);
        }
        return accepted;
    }

  private:
    void RefuseUnknownKeys() const {
        for (const auto& [key, node] : table_) {
            if (std::find(kKeys.begin(), kKeys.end(), key.str()) != kKeys.end()) continue;
            std::string known;
            for (const std::string_view name : kKeys)
                known += (known.empty() ? "" : ", ") + std::string(name);
            Fail(path_, node.source().begin.line,
                 "[[accepted]] has no \"" + FromUtf8(key.str()) + "\"; expected one of: " + known);
        }
    }
    std::optional<std::string> Text(std::string_view key) const {
        const toml::node* const node = table_.get(key);
        if (node == nullptr) return std::nullopt;
        const std::optional<std::string> text = node->value_exact<std::string>();
        if (!text)
            Fail(path_, node->source().begin.line, '"' + std::string(key) + "\": expected a text in quotes");
        return FromUtf8(*text);
    }
    std::string Required(std::string_view key) const {
        std::optional<std::string> text = Text(key);
        if (!text)
            Fail(path_, table_.source().begin.line,
                 "[[accepted]]: expected a text \"" + std::string(key) + '"');
        return *std::move(text);
    }
    std::optional<Date> ReadUntil() const {
        const toml::node* const node = table_.get("until");
        if (node == nullptr) return std::nullopt;
        const std::optional<toml::date> date = node->value_exact<toml::date>();
        if (!date)
            Fail(path_, node->source().begin.line,
                 "\"until\": expected a date without quotes, such as 2027-06-01");
        return Date(std::chrono::year(date->year), std::chrono::month(date->month),
                    std::chrono::day(date->day));
    }

    const toml::table& table_;
    const std::string& path_;
};

// The elements of [[accepted]], in the order of the file.
std::vector<const toml::table*> Entries(const toml::table& document, const std::string& path) {
    for (const auto& [key, node] : document) {
        if (key.str() != kTables)
            Fail(path, node.source().begin.line,
                 "there is no \"" + FromUtf8(key.str()) + "\" here; " + kWantsTables);
    }
    const toml::node* const list = document.get(kTables);
    if (list == nullptr) return {};
    if (!list->is_array()) Fail(path, list->source().begin.line, kWantsTables);
    std::vector<const toml::table*> entries;
    for (const toml::node& node : *list->as_array()) {
        if (!node.is_table()) Fail(path, node.source().begin.line, kWantsTables);
        entries.push_back(node.as_table());
    }
    return entries;
}

// A text as a TOML string.
std::string Quoted(std::string_view text) {
    std::string quoted = "\"";
    for (const char character : text) {
        if (character == '"' || character == '\\') quoted += '\\';
        if (IsControl(character)) {
            quoted += "\\u00";
            AppendHex(quoted, static_cast<unsigned char>(character));
        } else {
            AppendUtf8(quoted, std::string_view(&character, 1));
        }
    }
    return quoted + '"';
}

std::string EntryText(const AcceptedFinding& accepted, std::string_view line_end) {
    std::string text = "[[accepted]]";
    text += line_end;
    const auto add = [&](std::string_view key, const std::string& value) {
        text.append(key).append(" = ").append(value).append(line_end);
    };
    add("code", Quoted(accepted.code));
    add("application", Quoted(accepted.application));
    if (accepted.target) add("target", Quoted(*accepted.target));
    add("reason", Quoted(accepted.reason));
    if (accepted.until) add("until", DateText(*accepted.until));
    if (!accepted.by.empty()) add("by", Quoted(accepted.by));
    return text;
}

// The lines of a text, each with its end.
std::vector<std::string_view> LinesOf(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size() - 1) + 1;
        lines.push_back(text.substr(0, end));
        text.remove_prefix(end);
    }
    return lines;
}

bool IsBlank(std::string_view line) {
    return line.find_first_not_of(" \t\r\n") == std::string_view::npos;
}

}  // namespace

Date Today(const Clock& clock) {
    const DateTime now = clock.Now();
    return {std::chrono::year(now.year), std::chrono::month(static_cast<unsigned>(now.month)),
            std::chrono::day(static_cast<unsigned>(now.day))};
}

std::string DateText(const Date& date) {
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02u-%02u", static_cast<int>(date.year()),
                  static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()));
    return text.data();
}

std::optional<Date> DateFrom(std::string_view text) {
    constexpr std::string_view kForm = "dddd-dd-dd";
    if (text.size() != kForm.size()) return std::nullopt;
    std::array<int, 3> numbers{};
    std::size_t number = 0;
    for (std::size_t i = 0; i < kForm.size(); ++i) {
        const bool digit = text[i] >= '0' && text[i] <= '9';
        if (digit != (kForm[i] == 'd') || (!digit && text[i] != kForm[i])) return std::nullopt;
        if (digit) {
            numbers.at(number) = numbers.at(number) * 10 + (text[i] - '0');
        } else {
            ++number;
        }
    }
    const Date date{std::chrono::year{numbers[0]}, std::chrono::month{static_cast<unsigned>(numbers[1])},
                    std::chrono::day{static_cast<unsigned>(numbers[2])}};
    if (!date.ok()) return std::nullopt;
    return date;
}

std::string FaultOf(const AcceptedFinding& accepted) {
    const auto blank = [](const std::string& text) { return IsBlank(text); };
    if (FindIssue(accepted.code) == nullptr) return kWantsCode;
    if (blank(accepted.application))
        return "\"application\": expected a full name, with * and ? for what may differ";
    if (accepted.target && blank(*accepted.target))
        return "\"target\": expected a target that is not empty; leave it out for any";
    if (blank(accepted.reason)) return "\"reason\": expected a reason that is not empty";
    return {};
}

AcceptedFindings ParseAccepted(std::string_view text, const std::string& path) {
    const toml::table document = Parse(text, path);
    AcceptedFindings accepted;
    for (const toml::table* const entry : Entries(document, path))
        accepted.push_back(EntryReader(*entry, path).Read());
    return accepted;
}

std::string WithAccepted(std::string_view text, const AcceptedFinding& accepted, const std::string& path) {
    const std::size_t before = ParseAccepted(text, path).size();
    const std::string_view line_end = text.find("\r\n") == std::string_view::npos ? "\n" : "\r\n";
    std::string longer(text);
    if (!longer.empty() && longer.back() != '\n') longer += line_end;
    if (!longer.empty()) longer += line_end;
    longer += EntryText(accepted, line_end);
    // Behind a list in another form the tables would be a mistake.
    if (before > 0 && text.find("[[") == std::string_view::npos) Fail(path, 1, kWantsTables);
    ParseAccepted(longer, path);
    return longer;
}

std::string WithoutAccepted(std::string_view text, std::size_t line, const std::string& path) {
    const toml::table document = Parse(text, path);
    const std::vector<const toml::table*> entries = Entries(document, path);
    const auto found = std::find_if(entries.begin(), entries.end(), [line](const toml::table* entry) {
        return entry->source().begin.line == line && !entry->is_inline();
    });
    if (found == entries.end()) Fail(path, line, kWantsTables);
    // The lines of the table's head and of its values. Whole-line comments among them stay.
    std::set<std::size_t> gone = {line};
    for (const auto& [key, node] : **found) {
        for (std::size_t at = key.source().begin.line; at <= node.source().end.line; ++at)
            gone.insert(at);
    }
    std::string rest;
    const std::vector<std::string_view> lines = LinesOf(text);
    bool blank_before = true;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (gone.count(i + 1) != 0) continue;
        // Blank lines around the entry would pile up.
        const bool blank = IsBlank(lines[i]);
        const bool near = i + 2 >= *gone.begin() && i <= *gone.rbegin();
        if (blank && blank_before && near) continue;
        rest += lines[i];
        blank_before = blank;
    }
    ParseAccepted(rest, path);
    return rest;
}

}  // namespace zorvel
