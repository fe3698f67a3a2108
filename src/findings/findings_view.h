// The Findings page: the dataset that it shows, the filter, the order, and what can be done with findings.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "database/catalogue.h"
#include "findings/accept_draft.h"
#include "findings/finding_details.h"
#include "findings/finding_filter.h"
#include "findings/finding_list.h"
#include "findings/findings.h"
#include "shell/services.h"

namespace zorvel {

class FindingsView {
  public:
    // `version` is this program's.
    FindingsView(Services& services, std::string version);

    // Lists the datasets of the catalogue, the newest first. When there are more than before, or the one that
    // was shown is gone, the newest is shown; else all stays. Raises what the catalogue and Findings
    // raise.
    void ListDatasets(const Catalogue& catalogue);
    const std::vector<CatalogueRow>& datasets() const { return datasets_; }
    // The number of the dataset that is shown; nothing when there is none.
    std::optional<std::size_t> chosen() const { return chosen_; }
    // Shows another dataset. When it cannot be read nothing is shown, and the error raised.
    void ChooseDataset(std::size_t number);

    // The findings of the dataset; null when there is none.
    const Findings* findings() const { return findings_.get(); }
    // The rows to show, in their order.
    const std::vector<std::uint32_t>& rows() const { return rows_; }
    // The values of a facet, once there are findings.
    const std::vector<FacetValue>& FacetValues(Facet facet) const { return filter_->Values(facet); }
    const std::string& filter_text() const { return text_; }

    void SetFilter(std::string_view text);
    void ChooseFacet(Facet facet, std::size_t value, bool chosen);
    // Everything else is taken back: all findings of the row's rule, or of its application.
    void ShowAllOfRule(std::uint32_t row);
    void ShowAllOfApplication(std::uint32_t row);
    void ClearFilter();

    // Sorts by a column from now on.
    void Sort(FindingColumn column, bool descending);
    FindingColumn column() const { return column_; }
    bool descending() const { return descending_; }

    // The counts of what is shown, and what there is to say of the list of accepted findings.
    std::string Counts() const;
    std::vector<std::string> Notes() const;
    // What to do where there is nothing to show; empty where there is something.
    std::string EmptyText() const;

    FindingDetails Details(std::uint32_t row) const { return DetailsOf(*findings_, row); }
    // The rows' fields as lines, TAB between two, with a heading.
    std::string CopyText(const std::vector<std::uint32_t>& rows) const;

    // Writes the entries, or takes out those that the rows are accepted or expired by, and shows the outcome.
    // Nothing is changed when another program writes to the program folder: the user was told. Raise what
    // AddAccepted and WithdrawAccepted raise.
    void Accept(const AcceptDraft& draft);
    void Withdraw(const std::vector<std::uint32_t>& rows);
    // The entries that the rows are accepted or expired by, by their numbers.
    std::vector<std::size_t> EntriesOf(const std::vector<std::uint32_t>& rows) const;

    // What to ask before the rows are withdrawn.
    std::string WithdrawQuestion(const std::vector<std::uint32_t>& rows) const;

    // Writes what is shown to a file (a real path). Raises an OutputError.
    void Export(const std::filesystem::path& path, const FindingFormat& format) const;

  private:
    void Close();
    void ReadAcceptedAnew();
    void Apply();
    void SetText(std::string_view text);

    Services& services_;
    std::string version_;
    bool listed_ = false;
    std::vector<CatalogueRow> datasets_;
    std::optional<std::size_t> chosen_;
    std::unique_ptr<Findings> findings_;
    std::optional<FindingFilter> filter_;
    std::optional<FindingOrder> order_;
    std::string text_;
    FindingColumn column_ = FindingColumn::kSeverity;
    bool descending_ = false;
    std::vector<std::uint32_t> rows_;
};

}  // namespace zorvel
