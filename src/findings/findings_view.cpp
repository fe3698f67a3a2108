#include "findings/findings_view.h"

#include <algorithm>
#include <set>
#include <utility>

#include "findings/accepted_file.h"
#include "platform/write_in_place.h"
#include "shell/formats.h"

namespace zorvel {

FindingsView::FindingsView(Services& services, std::string version)
    : services_(services), version_(std::move(version)) {}

void FindingsView::ListDatasets(const Catalogue& catalogue) {
    // An import adds a row, also when it is of the same dataset.
    const std::size_t before = datasets_.size();
    const std::string shown = chosen_ ? datasets_[*chosen_].DBName : std::string();
    datasets_ = catalogue.List();
    listed_ = true;
    chosen_.reset();
    if (datasets_.empty()) return Close();
    const auto found = std::find_if(datasets_.begin(), datasets_.end(),
                                    [&](const CatalogueRow& row) { return row.DBName == shown; });
    if (findings_ == nullptr || found == datasets_.end() || datasets_.size() > before) {
        ChooseDataset(0);
    } else {
        chosen_ = static_cast<std::size_t>(found - datasets_.begin());
    }
}

void FindingsView::Close() {
    rows_.clear();
    order_.reset();
    filter_.reset();
    findings_.reset();
}

void FindingsView::ChooseDataset(std::size_t number) {
    Close();
    chosen_ = number;
    text_.clear();
    findings_ = std::make_unique<Findings>(services_.files, datasets_.at(number), Today(services_.clock));
    filter_.emplace(findings_->table(), findings_->states());
    order_.emplace(findings_->table(), findings_->states());
    Apply();
}

void FindingsView::Apply() {
    rows_ = filter_->Apply();
    order_->Sort(rows_, column_, descending_);
}

void FindingsView::SetText(std::string_view text) {
    text_ = text;
    filter_->SetText(text);
}

void FindingsView::SetFilter(std::string_view text) {
    if (findings_ == nullptr) return;
    SetText(text);
    Apply();
}

void FindingsView::ChooseFacet(Facet facet, std::size_t value, bool chosen) {
    filter_->Choose(facet, value, chosen);
    Apply();
}

void FindingsView::ShowAllOfRule(std::uint32_t row) {
    filter_->Clear();
    SetText("code:" + findings_->table().RuleOf(row).code);
    Apply();
}

void FindingsView::ShowAllOfApplication(std::uint32_t row) {
    filter_->Clear();
    SetText("app:\"" + findings_->table().ApplicationOf(row).full_name + '"');
    Apply();
}

void FindingsView::ClearFilter() {
    if (findings_ == nullptr) return;
    filter_->Clear();
    SetText({});
    Apply();
}

void FindingsView::Sort(FindingColumn column, bool descending) {
    column_ = column;
    descending_ = descending;
    if (findings_ != nullptr) order_->Sort(rows_, column_, descending_);
}

std::string FindingsView::Counts() const {
    return findings_ == nullptr ? std::string() : CountsText(CountsOf(*findings_, rows_));
}

std::vector<std::string> FindingsView::Notes() const {
    return findings_ == nullptr ? std::vector<std::string>() : findings_->Notes();
}

std::string FindingsView::EmptyText() const {
    if (!listed_) return "The datasets will be listed when what is under way has ended.";
    if (datasets_.empty()) {
        return "There is no dataset yet. Select applications on the Applications tab, press \"Zorvel!\", and "
               "import "
               "the result.";
    }
    if (findings_ == nullptr) return "This dataset could not be read. Choose another one.";
    if (findings_->table().size() == 0) return "This dataset has no findings.";
    if (rows_.empty()) return "No finding is as the filter asks. Clear the filter to see all.";
    return {};
}

std::string FindingsView::CopyText(const std::vector<std::uint32_t>& rows) const {
    std::string text;
    const auto add = [&text](std::size_t column, std::string field) {
        for (char& character : field)
            if (character == '\t' || character == '\r' || character == '\n') character = ' ';
        text += field + (column + 1 == kFindingColumns.size() ? '\n' : '\t');
    };
    for (std::size_t column = 0; column < kFindingColumns.size(); ++column)
        add(column, std::string(kFindingColumns[column]));
    for (const std::uint32_t row : rows) {
        for (std::size_t column = 0; column < kFindingColumns.size(); ++column) {
            add(column, FindingField(findings_->table(), findings_->states(), row,
                                     static_cast<FindingColumn>(column)));
        }
    }
    return text;
}

void FindingsView::ReadAcceptedAnew() {
    findings_->ReadAcceptedAnew();
    Apply();
}

void FindingsView::Accept(const AcceptDraft& draft) {
    const auto hold = services_.writers.Acquire();
    if (!hold) return;
    for (const AcceptedFinding& entry : draft.Entries()) {
        AddAccepted(services_.files, entry, findings_->today());
        services_.log.WriteLog("Accepted: " + entry.code + " of " + entry.application + ": " + entry.reason);
    }
    ReadAcceptedAnew();
}

std::vector<std::size_t> FindingsView::EntriesOf(const std::vector<std::uint32_t>& rows) const {
    std::set<std::size_t> entries;
    for (const std::uint32_t row : rows)
        if (const auto entry = findings_->states().EntryOf(row)) entries.insert(*entry);
    return {entries.begin(), entries.end()};
}

std::string FindingsView::WithdrawQuestion(const std::vector<std::uint32_t>& rows) const {
    std::string question = "Do you want to withdraw this?";
    for (const std::size_t entry : EntriesOf(rows)) {
        const AcceptedFinding& accepted = findings_->accepted()[entry];
        question += '\n' + accepted.code + " of " + accepted.application + ": " + accepted.reason + " (" +
                    CountedFindings(findings_->states().covered()[entry]) + ')';
    }
    return question;
}

void FindingsView::Withdraw(const std::vector<std::uint32_t>& rows) {
    const auto hold = services_.writers.Acquire();
    if (!hold) return;
    for (const std::size_t entry : EntriesOf(rows)) {
        const AcceptedFinding& accepted = findings_->accepted()[entry];
        WithdrawAccepted(services_.files, accepted);
        services_.log.WriteLog("Withdrawn: " + accepted.code + " of " + accepted.application);
    }
    ReadAcceptedAnew();
}

void FindingsView::Export(const std::filesystem::path& path, const FindingFormat& format) const {
    WriteInPlace(path, [&](OutputFile& file) {
        format.write({*findings_, rows_, DateAndTime(services_.clock.Now()), version_}, file, {});
    });
}

}  // namespace zorvel
