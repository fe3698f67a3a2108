#include "reporting/report_rows.h"

#include <algorithm>
#include <limits>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "platform/code_page.h"
#include "platform/error.h"
#include "reporting/report_values.h"
#include "shell/formats.h"

namespace zorvel {
namespace {

constexpr std::size_t kNone = static_cast<std::size_t>(-1);

// Values joined so that different lists of values give different texts.
void AppendKey(std::string& key, std::string_view value) {
    key += std::to_string(value.size());
    key += ':';
    key += value;
}

// Groups as they are found, in the order of the query.
class GroupTree {
  public:
    struct Node {
        std::size_t parent = kNone;
        std::size_t level = 0;
        std::size_t rows = 0;  // of the group itself, not of those within
        std::size_t last_child = kNone;
        std::size_t next_sibling = kNone;
        std::size_t first_child = kNone;
        std::size_t place = 0;  // its number in the order of the report
    };

    GroupTree() : nodes_(1) {}  // all rows

    // The group of `level` within `parent` whose values are joined in `key`.
    std::size_t Find(std::size_t parent, std::size_t level, const std::string& key) {
        const auto [entry, is_new] = numbers_.try_emplace(std::to_string(parent) + '/' + key, nodes_.size());
        if (is_new) {
            nodes_.push_back({.parent = parent, .level = level});
            Node& above = nodes_[parent];
            (above.last_child == kNone ? above.first_child : nodes_[above.last_child].next_sibling) =
                entry->second;
            above.last_child = entry->second;
        }
        return entry->second;
    }
    Node& operator[](std::size_t node) { return nodes_[node]; }
    std::size_t size() const { return nodes_.size(); }

    // The groups in the order of the report, each with the rows that it and those within it have.
    std::vector<RowGroup> InOrder() {
        std::vector<RowGroup> groups;
        groups.reserve(nodes_.size() - 1);
        std::size_t row = 0;
        std::size_t node = nodes_[0].first_child;
        while (node != kNone) {
            nodes_[node].place = groups.size();
            groups.push_back({nodes_[node].level, row, row});
            row += nodes_[node].rows;
            node = Following(node, row, groups);
        }
        return groups;
    }

  private:
    // The node after `node`, depth first; closes the groups that end before it.
    std::size_t Following(std::size_t node, std::size_t row, std::vector<RowGroup>& groups) {
        if (nodes_[node].first_child != kNone) return nodes_[node].first_child;
        while (node != 0) {
            groups[nodes_[node].place].end = row;
            if (nodes_[node].next_sibling != kNone) return nodes_[node].next_sibling;
            node = nodes_[node].parent;
        }
        return kNone;
    }

    std::vector<Node> nodes_;
    std::unordered_map<std::string, std::size_t> numbers_;
};

std::int64_t NumberOf(std::string_view value) {
    return WholeNumber(value).value_or(0);
}

// The sum, or the number next to it that fits.
std::int64_t Plus(std::int64_t left, std::int64_t right) {
    std::int64_t sum = 0;
    if (!__builtin_add_overflow(left, right, &sum)) return sum;
    return right < 0 ? std::numeric_limits<std::int64_t>::min() : std::numeric_limits<std::int64_t>::max();
}

}  // namespace

ReportRows::ReportRows(const Database& database, const ReportDefinition& definition, const std::string& query,
                       const AskInterrupted& ask)
    : definition_(definition), total_count_(definition.totals.size()) {
    InterruptionPoint point(ask);
    Read(database, query, point);
    for (const ReportColumn& column : definition_.columns)
        column_fields_.push_back(FieldNumber(column.field, column.line));
    CheckTemplates();
    Gather(point);
    AddUpTotals(point);
    for (const ReportChart& chart : definition_.charts)
        charts_.push_back(AddUpChart(chart, point));
}

void ReportRows::Read(const Database& database, const std::string& query, InterruptionPoint& point) {
    Rows rows = database.Query(query);
    fields_ = rows.Columns();
    const std::size_t count = fields_.size();
    std::string text;
    while (rows.Next()) {
        point.Pass();
        for (std::size_t field = 0; field < count; ++field) {
            rows.Read(field, text);
            // Rows of a group repeat the values of its fields, so most texts are those of the row before.
            const bool repeats = cells_.size() >= count && cells_[cells_.size() - count] == text;
            cells_.push_back(repeats ? cells_[cells_.size() - count] : texts_.Keep(text));
        }
    }
}

std::size_t ReportRows::FieldNumber(const std::string& name, std::size_t line) const {
    const auto found = std::find_if(fields_.begin(), fields_.end(), [&name](const std::string& field) {
        return EqualIgnoringCase(field, name);
    });
    if (found != fields_.end()) return static_cast<std::size_t>(found - fields_.begin());
    std::string known;
    for (const std::string& field : fields_)
        known += (known.empty() ? "" : ", ") + field;
    FailDefinition(definition_.path, line,
                   "the query gives no field \"" + name + "\"; expected one of: " + known);
}

std::vector<std::size_t> ReportRows::FieldNumbers(const std::vector<std::string>& names,
                                                  std::size_t line) const {
    std::vector<std::size_t> numbers;
    numbers.reserve(names.size());
    for (const std::string& name : names)
        numbers.push_back(FieldNumber(name, line));
    return numbers;
}

void ReportRows::CheckTemplates() const {
    const auto check = [this](const TextTemplate& text) {
        for (const TextTemplate::Piece& piece : text.pieces) {
            if (piece.is_field) FieldNumber(piece.text, text.line);
        }
    };
    for (const ReportGroup& group : definition_.groups) {
        check(group.heading);
        check(group.note);
    }
    for (const ReportChart& chart : definition_.charts)
        check(chart.label);
}

void ReportRows::Gather(InterruptionPoint& point) {
    const std::size_t levels = definition_.groups.size();
    const std::size_t row_count = cells_.empty() ? 0 : cells_.size() / fields_.size();
    std::vector<std::vector<std::size_t>> by;
    for (const ReportGroup& group : definition_.groups)
        by.push_back(FieldNumbers(group.by, group.line));

    GroupTree tree;
    std::vector<std::size_t> group_of(row_count);
    std::vector<std::size_t> open(levels + 1, 0);  // the groups of the row before; the first is all rows
    std::string key;
    for (std::size_t row = 0; row < row_count; ++row) {
        point.Pass();
        const std::string_view* const cells = &cells_[row * fields_.size()];
        bool same = row > 0;
        for (std::size_t level = 0; level < levels; ++level) {
            same = same && std::all_of(by[level].begin(), by[level].end(), [&](std::size_t field) {
                       return cells[field] == (cells - fields_.size())[field];
                   });
            if (same) continue;
            key.clear();
            for (const std::size_t field : by[level])
                AppendKey(key, cells[field]);
            open[level + 1] = tree.Find(open[level], level, key);
        }
        group_of[row] = open[levels];
        ++tree[open[levels]].rows;
    }

    groups_ = tree.InOrder();
    level_groups_.resize(levels);
    for (std::size_t group = 0; group < groups_.size(); ++group)
        level_groups_[groups_[group].level].push_back(group);

    std::vector<std::size_t> next(tree.size(), 0);  // place of the next row of each innermost group
    for (std::size_t node = 1; node < tree.size(); ++node)
        next[node] = groups_[tree[node].place].begin;
    order_.resize(row_count);
    for (std::size_t row = 0; row < row_count; ++row)
        order_[next[group_of[row]]++] = row;
}

std::size_t ReportRows::GroupOf(std::size_t row, std::size_t level) const {
    const std::vector<std::size_t>& groups = level_groups_[level];
    const auto behind = std::upper_bound(
        groups.begin(), groups.end(), row,
        [this](std::size_t wanted, std::size_t group) { return wanted < groups_[group].begin; });
    return *(behind - 1);
}

bool ReportRows::BeginsPage(std::size_t group) const {
    const std::size_t row = groups_[group].begin;
    if (row == 0 || groups_[group - 1].begin == row) return false;
    for (; group < groups_.size() && groups_[group].begin == row; ++group)
        if (definition_.groups[groups_[group].level].new_page) return true;
    return false;
}

bool ReportRows::Repeats(std::size_t row, std::size_t column) const {
    if (row == 0 || !definition_.columns[column].blank_repeats ||
        ColumnValue(row, column) != ColumnValue(row - 1, column))
        return false;
    return level_groups_.empty() || groups_[GroupOf(row, level_groups_.size() - 1)].begin != row;
}

std::string ReportRows::Expand(const TextTemplate& text, std::size_t row) const {
    std::string expanded;
    for (const TextTemplate::Piece& piece : text.pieces) {
        if (piece.is_field) {
            expanded += Value(row, FieldNumber(piece.text, text.line));
        } else {
            expanded += piece.text;
        }
    }
    return expanded;
}

void ReportRows::AddUpTotals(InterruptionPoint& point) {
    totals_.assign(total_count_ * (groups_.size() + 1), 0);
    for (std::size_t number = 0; number < total_count_; ++number)
        AddUpTotal(number, definition_.totals[number], point);
}

void ReportRows::AddUpTotal(std::size_t number, const ReportTotal& total, InterruptionPoint& point) {
    const std::vector<std::size_t> fields = FieldNumbers(total.fields, total.line);
    std::string key;
    const auto add_up = [&](std::size_t begin, std::size_t end) -> std::int64_t {
        if (total.kind == ReportTotal::Kind::kCount) return static_cast<std::int64_t>(end - begin);
        std::int64_t sum = 0;
        // A set of its own: clearing one takes time for as many values as it ever held.
        std::unordered_set<std::string> met;
        for (std::size_t row = begin; row < end; ++row) {
            point.Pass();
            if (total.kind == ReportTotal::Kind::kSum) {
                sum = Plus(sum, NumberOf(Value(row, fields.front())));
                continue;
            }
            const bool same =
                row > begin && std::all_of(fields.begin(), fields.end(), [&](std::size_t field) {
                    return Value(row, field) == Value(row - 1, field);
                });
            if (same) continue;
            key.clear();
            for (const std::size_t field : fields)
                AppendKey(key, Value(row, field));
            met.insert(key);
        }
        return total.kind == ReportTotal::Kind::kSum ? sum : static_cast<std::int64_t>(met.size());
    };
    totals_[number] = add_up(0, size());
    for (std::size_t group = 0; group < groups_.size(); ++group) {
        point.Pass();
        if (groups_[group].level < total.levels)
            totals_[(group + 1) * total_count_ + number] = add_up(groups_[group].begin, groups_[group].end);
    }
}

std::vector<ChartBar> ReportRows::AddUpChart(const ReportChart& chart, InterruptionPoint& point) const {
    const std::vector<std::size_t> fields = FieldNumbers(chart.by, chart.line);
    const bool counts = chart.sum.empty();
    const std::size_t sum = counts ? 0 : FieldNumber(chart.sum, chart.line);
    std::unordered_map<std::string, std::size_t> numbers;
    std::vector<ChartBar> bars;
    std::string key;
    for (std::size_t row = 0; row < size(); ++row) {
        point.Pass();
        key.clear();
        for (const std::size_t field : fields)
            AppendKey(key, Value(row, field));
        const auto [entry, is_new] = numbers.try_emplace(key, bars.size());
        if (is_new) bars.push_back({Expand(chart.label, row)});
        std::int64_t& value = bars[entry->second].value;
        value = Plus(value, counts ? 1 : NumberOf(Value(row, sum)));
    }
    std::stable_sort(bars.begin(), bars.end(),
                     [](const ChartBar& left, const ChartBar& right) { return left.value > right.value; });
    if (bars.size() > chart.limit + 1) {
        ChartBar other{"Other (" + GroupedCount(bars.size() - chart.limit) + ')', 0, true};
        for (std::size_t bar = chart.limit; bar < bars.size(); ++bar)
            other.value = Plus(other.value, bars[bar].value);
        bars.resize(chart.limit);
        bars.push_back(std::move(other));
    }
    return bars;
}

}  // namespace zorvel
