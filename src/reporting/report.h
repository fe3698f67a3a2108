// A prepared report: definition, rows, and what is said about them. Windows, pages and files are made from
// it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "reporting/report_definition.h"
#include "reporting/report_rows.h"

namespace zorvel {

// What a report says about itself. Texts may be empty.
struct ReportFacts {
    std::string caption;    // of the menu entry
    std::string dataset;    // file name in Databases
    std::string tree;       // of the run
    std::string container;  // of the run
    std::string captured;   // when the run began, "dd/mm/yyyy hh:mm:ss"
    std::string comment;    // of the dataset
    std::string order;      // the sort choice, when it was used
    std::string excluded;   // the issue codes that are left out, in apostrophes, joined by commas
    std::string generated;  // when the report was made, "dd/mm/yyyy hh:mm:ss"
    // The datasets, of those that the report is about, whose import was not completed.
    std::vector<std::string> incomplete{};
    std::string findings{};  // of an issue report: how severe they are, and what of them is accepted

    // "import not completed", with the datasets' names in a report about several; empty when all were
    // completed.
    std::string ImportNote() const;
};

// One line of facts: a name and its value.
struct FactLine {
    std::string name;
    std::string value;
};

// What a report without rows says.
inline constexpr std::string_view kNothingToReport = "There is nothing to report.";

class Report {
  public:
    // Reads the rows of `query`. Raises what ReportRows raises.
    Report(ReportDefinition definition, ReportFacts facts, const Database& database, const std::string& query,
           const AskInterrupted& ask = {});

    Report(const Report&) = delete;
    Report& operator=(const Report&) = delete;
    Report(Report&&) = delete;
    Report& operator=(Report&&) = delete;
    ~Report() = default;

    const ReportDefinition& definition() const { return definition_; }
    const ReportFacts& facts() const { return facts_; }
    const ReportRows& rows() const { return rows_; }

    // The facts that there are, named, in the order in which they are shown: dataset, import, tree,
    // container, run, comment, findings, order, excluded issues.
    std::vector<FactLine> FactLines() const;

    // True when the row is of a dataset whose import was not completed.
    bool IsOfIncomplete(std::size_t row) const;

    // The heading and the note of a group (a number in rows().groups()), as they are displayed.
    std::string Heading(std::size_t group) const;
    std::string Note(std::size_t group) const;
    // The totals of the report, and those that a group shows, as "Settings 1,234" each, in the definition's
    // order.
    std::vector<std::string> Totals() const;
    std::vector<std::string> GroupTotals(std::size_t group) const;

  private:
    std::string TotalText(std::size_t total, std::int64_t number) const;

    ReportDefinition definition_;
    ReportFacts facts_;
    ReportRows rows_;
};

}  // namespace zorvel
