// The rows of a report in the order in which it shows them, gathered into groups, with their totals.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/interruption.h"
#include "platform/store.h"
#include "platform/text_pool.h"
#include "reporting/report_definition.h"

namespace zorvel {

// A group of the rows [begin, end).
struct RowGroup {
    std::size_t level = 0;  // from 0, the outermost
    std::size_t begin = 0;
    std::size_t end = 0;
};

struct ChartBar {
    std::string label;
    std::int64_t value = 0;
    bool is_rest = false;  // stands for all that are beyond the chart's limit, and is shown as a number alone
};

class ReportRows {
  public:
    // Reads all rows of `query` and gathers them by the definition's groups: groups stand in the order in
    // which the query first names them, the rows of a group in the order of the query. Raises the store's
    // errors, error 13 when the definition names a field that the query does not give, and Interrupted when
    // `ask` says so. The definition must outlive the object.
    ReportRows(const Database& database, const ReportDefinition& definition, const std::string& query,
               const AskInterrupted& ask = {});

    std::size_t size() const { return order_.size(); }
    // The names of the query's fields.
    const std::vector<std::string>& fields() const { return fields_; }

    // The value of a field, as the dataset holds it; empty for a null.
    std::string_view Value(std::size_t row, std::size_t field) const {
        return cells_[order_[row] * fields_.size() + field];
    }
    // The value of the definition's column `column`, as the dataset holds it.
    std::string_view ColumnValue(std::size_t row, std::size_t column) const {
        return Value(row, column_fields_[column]);
    }
    // A template with the values of a row in it.
    std::string Expand(const TextTemplate& text, std::size_t row) const;

    // All groups in the order of the report, each ahead of those within it.
    const std::vector<RowGroup>& groups() const { return groups_; }
    // The group of `level` that a row belongs to, as its number in groups().
    std::size_t GroupOf(std::size_t row, std::size_t level) const;
    // True when a group begins on a page of its own: it wants one, or one that begins with it does. Of groups
    // that begin with the same row that is the outermost.
    bool BeginsPage(std::size_t group) const;

    // True for a value that is left out because it repeats that of the row above in the same group.
    bool Repeats(std::size_t row, std::size_t column) const;

    // The definition's total number `total`, of all rows or of one group.
    std::int64_t Total(std::size_t total) const { return totals_[total]; }
    std::int64_t GroupTotal(std::size_t group, std::size_t total) const {
        return totals_[(group + 1) * total_count_ + total];
    }

    // The bars of each of the definition's charts.
    const std::vector<std::vector<ChartBar>>& charts() const { return charts_; }

  private:
    void Read(const Database& database, const std::string& query, InterruptionPoint& point);
    std::size_t FieldNumber(const std::string& name, std::size_t line) const;
    std::vector<std::size_t> FieldNumbers(const std::vector<std::string>& names, std::size_t line) const;
    void CheckTemplates() const;
    void Gather(InterruptionPoint& point);
    void AddUpTotals(InterruptionPoint& point);
    void AddUpTotal(std::size_t number, const ReportTotal& total, InterruptionPoint& point);
    std::vector<ChartBar> AddUpChart(const ReportChart& chart, InterruptionPoint& point) const;

    const ReportDefinition& definition_;
    std::vector<std::string> fields_;
    std::vector<std::size_t> column_fields_;  // the field of each column
    TextPool texts_;
    std::vector<std::string_view> cells_;  // in the order of the query, row by row
    std::vector<std::size_t> order_;       // the number that each row has in the query
    std::vector<RowGroup> groups_;
    std::vector<std::vector<std::size_t>> level_groups_;  // of each level, the numbers of its groups in order
    std::size_t total_count_ = 0;
    std::vector<std::int64_t> totals_;  // of all rows, then of each group
    std::vector<std::vector<ChartBar>> charts_;
};

}  // namespace zorvel
