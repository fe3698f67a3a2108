#include "reporting/report_definition.h"

#include <toml++/toml.h>

#include <algorithm>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <utility>

#include "platform/code_page.h"
#include "platform/error.h"

namespace zorvel {
namespace {

constexpr double kPointsPerMillimetre = 72.0 / 25.4;

// The sides of the paper sizes, upright, in millimetres.
struct PaperSize {
    double width;
    double height;
};
constexpr PaperSize kA4{210, 297};
constexpr PaperSize kA3{297, 420};
constexpr PaperSize kLetter{215.9, 279.4};
constexpr PaperSize kLegal{215.9, 355.6};

constexpr double kMaxMargin = 60;  // millimetres
constexpr double kMinTextSize = 4;
constexpr double kMaxTextSize = 24;
constexpr double kMaxColumnWidth = 1000;
constexpr std::int64_t kMaxBars = 1000;

template <typename Value>
using Words = std::initializer_list<std::pair<std::string_view, Value>>;

// "a, b or c"
template <typename Value>
std::string Listed(const Words<Value>& words) {
    std::string text;
    std::size_t left = words.size();
    for (const auto& word : words) {
        text += '"' + std::string(word.first) + '"';
        --left;
        if (left > 0) text += left == 1 ? " or " : ", ";
    }
    return text;
}

// A table of the file. Each key that is asked for is known from then on; Finish refuses all others.
class Section {
  public:
    Section(const toml::table& table, const std::string& path, std::string name)
        : table_(table), path_(path), name_(std::move(name)) {}

    std::size_t line() const { return table_.source().begin.line; }
    std::size_t LineOf(std::string_view key) const {
        const toml::node* const node = table_.get(key);
        return node == nullptr ? line() : node->source().begin.line;
    }
    [[noreturn]] void Fail(const toml::node& node, const std::string& reason) const {
        FailDefinition(path_, node.source().begin.line, reason);
    }

    std::optional<std::string> Text(std::string_view key) {
        const toml::node* const node = Find(key);
        if (node == nullptr) return std::nullopt;
        return TextOf(*node, key);
    }
    std::string RequiredText(std::string_view key) {
        std::optional<std::string> text = Text(key);
        if (!text) FailDefinition(path_, line(), name_ + ": expected a text \"" + std::string(key) + '"');
        if (text->empty()) Fail(*Find(key), '"' + std::string(key) + "\": expected a text that is not empty");
        return *text;
    }
    // A text or a list of texts.
    std::vector<std::string> Texts(std::string_view key) {
        const toml::node* const node = Find(key);
        if (node == nullptr) return {};
        if (!node->is_array()) return {TextOf(*node, key)};
        std::vector<std::string> texts;
        for (const toml::node& element : *node->as_array())
            texts.push_back(TextOf(element, key));
        return texts;
    }
    std::vector<std::string> RequiredTexts(std::string_view key) {
        std::vector<std::string> texts = Texts(key);
        if (texts.empty()) {
            FailDefinition(
                path_, line(),
                name_ + ": expected \"" + std::string(key) + "\", the name of a field or a list of names");
        }
        return texts;
    }
    bool Flag(std::string_view key) {
        const toml::node* const node = Find(key);
        if (node == nullptr) return false;
        const std::optional<bool> value = node->value_exact<bool>();
        if (!value) Fail(*node, '"' + std::string(key) + "\": expected true or false");
        return *value;
    }
    double Number(std::string_view key, double otherwise, double least, double most) {
        const toml::node* const node = Find(key);
        if (node == nullptr) return otherwise;
        const std::optional<double> value = node->is_number() ? node->value<double>() : std::nullopt;
        if (!value || !(*value >= least && *value <= most)) {
            Fail(*node, '"' + std::string(key) + "\": expected a number from " + Short(least) + " to " +
                            Short(most));
        }
        return *value;
    }
    std::size_t Count(std::string_view key, std::size_t otherwise, std::int64_t most) {
        const toml::node* const node = Find(key);
        if (node == nullptr) return otherwise;
        const std::optional<std::int64_t> value = node->value_exact<std::int64_t>();
        if (!value || *value < 0 || *value > most) {
            Fail(*node,
                 '"' + std::string(key) + "\": expected a whole number from 0 to " + std::to_string(most));
        }
        return static_cast<std::size_t>(*value);
    }
    template <typename Value>
    Value Choice(std::string_view key, Value otherwise, const Words<Value>& words) {
        const toml::node* const node = Find(key);
        if (node == nullptr) return otherwise;
        const std::string text = TextOf(*node, key);
        for (const auto& [word, value] : words) {
            if (word == text) return value;
        }
        Fail(*node, '"' + std::string(key) + "\": expected " + Listed(words));
    }
    // A text with "{field}" in it.
    TextTemplate Template(std::string_view key) {
        const std::optional<std::string> text = Text(key);
        TextTemplate result;
        result.line = LineOf(key);
        for (std::string_view rest = text ? *text : std::string_view{}; !rest.empty();) {
            const std::size_t open = rest.find('{');
            if (open > 0) result.pieces.push_back({std::string(rest.substr(0, open)), false});
            if (open == std::string_view::npos) break;
            const std::size_t close = rest.find('}', open);
            if (close == std::string_view::npos || close == open + 1) {
                FailDefinition(
                    path_, result.line,
                    '"' + std::string(key) + "\": expected the name of a field and \"}\" behind \"{\"");
            }
            result.pieces.push_back({std::string(rest.substr(open + 1, close - open - 1)), true});
            rest.remove_prefix(close + 1);
        }
        return result;
    }
    // The tables of a list, each as a section of its own.
    std::vector<Section> Sections(std::string_view key) {
        const toml::node* const node = Find(key);
        if (node == nullptr) return {};
        const std::string expected = "expected tables under [[" + std::string(key) + "]]";
        if (!node->is_array()) Fail(*node, expected);
        std::vector<Section> sections;
        for (const toml::node& element : *node->as_array()) {
            if (!element.is_table()) Fail(element, expected);
            sections.emplace_back(*element.as_table(), path_, "[[" + std::string(key) + "]]");
        }
        return sections;
    }
    std::optional<Section> Table(std::string_view key) {
        const toml::node* const node = Find(key);
        if (node == nullptr) return std::nullopt;
        if (!node->is_table()) Fail(*node, "expected a table [" + std::string(key) + ']');
        return Section(*node->as_table(), path_, '[' + std::string(key) + ']');
    }
    // Refuses what no one asked for: most likely a key that is misspelled.
    void Finish() const {
        for (const auto& [key, node] : table_) {
            if (std::find(known_.begin(), known_.end(), key.str()) != known_.end()) continue;
            std::string known;
            for (const std::string_view name : known_)
                known += (known.empty() ? "" : ", ") + std::string(name);
            Fail(node, name_ + " has no \"" + FromUtf8(key.str()) + "\"; expected one of: " + known);
        }
    }

  private:
    const toml::node* Find(std::string_view key) {
        known_.push_back(key);
        return table_.get(key);
    }
    std::string TextOf(const toml::node& node, std::string_view key) const {
        const std::optional<std::string> text = node.value_exact<std::string>();
        if (!text) Fail(node, '"' + std::string(key) + "\": expected a text in quotes");
        return FromUtf8(*text);
    }
    static std::string Short(double number) { return std::to_string(static_cast<std::int64_t>(number)); }

    const toml::table& table_;
    const std::string& path_;
    std::string name_;
    std::vector<std::string_view> known_;
};

ReportPage ReadPage(Section section) {
    ReportPage page;
    const PaperSize size =
        section.Choice("size", kA4, {{"A4", kA4}, {"A3", kA3}, {"Letter", kLetter}, {"Legal", kLegal}});
    page.width = size.width * kPointsPerMillimetre;
    page.height = size.height * kPointsPerMillimetre;
    if (section.Choice("orientation", false, {{"portrait", false}, {"landscape", true}}))
        std::swap(page.width, page.height);
    page.margin =
        section.Number("margin", page.margin / kPointsPerMillimetre, 0, kMaxMargin) * kPointsPerMillimetre;
    page.text_size = section.Number("text_size", page.text_size, kMinTextSize, kMaxTextSize);
    section.Finish();
    return page;
}

ReportGroup ReadGroup(Section section) {
    ReportGroup group;
    group.line = section.line();
    group.by = section.RequiredTexts("by");
    section.RequiredText("heading");
    group.heading = section.Template("heading");
    group.note = section.Template("note");
    group.new_page = section.Flag("new_page");
    section.Finish();
    return group;
}

ReportColumn ReadColumn(Section section) {
    ReportColumn column;
    column.line = section.line();
    column.field = section.RequiredText("field");
    column.heading = section.Text("heading").value_or(column.field);
    column.width = section.Number("width", column.width, 1, kMaxColumnWidth);
    column.format = section.Choice("format", ValueFormat::kText,
                                   {{"text", ValueFormat::kText},
                                    {"number", ValueFormat::kNumber},
                                    {"date", ValueFormat::kDate},
                                    {"yes-no", ValueFormat::kYesNo}});
    const auto usual = column.format == ValueFormat::kNumber  ? ColumnAlignment::kRight
                       : column.format == ValueFormat::kYesNo ? ColumnAlignment::kCentre
                                                              : ColumnAlignment::kLeft;
    column.alignment = section.Choice("align", usual,
                                      {{"left", ColumnAlignment::kLeft},
                                       {"centre", ColumnAlignment::kCentre},
                                       {"right", ColumnAlignment::kRight}});
    column.turned = section.Flag("turned");
    column.blank_repeats = section.Flag("blank_repeats");
    section.Finish();
    return column;
}

ReportTotal ReadTotal(Section section, const std::string& path, std::size_t levels) {
    ReportTotal total;
    total.line = section.line();
    total.heading = section.RequiredText("heading");
    const bool count = section.Flag("count");
    const std::vector<std::string> sum = section.Texts("sum");
    const std::vector<std::string> distinct = section.Texts("distinct");
    if (int{count} + int{!sum.empty()} + int{!distinct.empty()} != 1 || sum.size() > 1) {
        FailDefinition(path, total.line,
                       "[[total]]: expected either count = true, or \"sum\" with the name of a field, or "
                       "\"distinct\" with names of fields");
    }
    if (!sum.empty()) total.kind = ReportTotal::Kind::kSum;
    if (!distinct.empty()) total.kind = ReportTotal::Kind::kDistinct;
    total.fields = sum.empty() ? distinct : sum;
    total.levels = section.Count("levels", levels, static_cast<std::int64_t>(levels));
    section.Finish();
    return total;
}

ReportChart ReadChart(Section section) {
    ReportChart chart;
    chart.line = section.line();
    chart.heading = section.RequiredText("heading");
    chart.by = section.RequiredTexts("by");
    section.RequiredText("label");
    chart.label = section.Template("label");
    chart.sum = section.Text("sum").value_or("");
    chart.limit = section.Count("limit", chart.limit, kMaxBars);
    section.Finish();
    return chart;
}

ReportDefinition Take(const toml::table& document, const std::string& path) {
    ReportDefinition definition;
    definition.path = path;
    Section file(document, path, "The definition");
    definition.title = file.RequiredText("title");
    definition.explanation = file.Text("explanation").value_or("");
    definition.query = file.RequiredText("query");
    definition.query_line = file.LineOf("query");
    if (std::optional<Section> page = file.Table("page")) definition.page = ReadPage(std::move(*page));
    for (Section& section : file.Sections("group"))
        definition.groups.push_back(ReadGroup(std::move(section)));
    for (Section& section : file.Sections("column"))
        definition.columns.push_back(ReadColumn(std::move(section)));
    for (Section& section : file.Sections("total"))
        definition.totals.push_back(ReadTotal(std::move(section), path, definition.groups.size()));
    for (Section& section : file.Sections("chart"))
        definition.charts.push_back(ReadChart(std::move(section)));
    file.Finish();
    if (definition.columns.empty()) FailDefinition(path, 1, "expected at least one [[column]]");
    return definition;
}

}  // namespace

void FailDefinition(const std::string& path, std::size_t line, std::string_view reason) {
    throw Error(errors::kTypeMismatch, path + ", line " + std::to_string(line) + ": " + std::string(reason));
}

ReportDefinition ParseReportDefinition(std::string_view text, const std::string& path) {
    try {
        const toml::table document = toml::parse(text);
        return Take(document, path);
    } catch (const toml::parse_error& error) {
        FailDefinition(path, error.source().begin.line, FromUtf8(error.description()));
    }
}

}  // namespace zorvel
