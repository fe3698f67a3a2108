#include "findings/findings.h"

#include "database/import_record.h"
#include "findings/accepted_file.h"
#include "platform/error.h"
#include "shell/formats.h"

namespace zorvel {
namespace {

Database Open(const Files& files, const std::string& dataset) {
    const std::string path = files.Path("Databases\\" + dataset);
    return {files.Resolve(path), path, Database::Access::kReadOnly};
}

// Ahead of the rows: an import may be at work.
FindingFacts FactsOf(const Files& files, const CatalogueRow& dataset) {
    RequireDataset(Open(files, dataset.DBName));
    return {dataset.DBName, dataset.Tree, dataset.Captured, LacksCompletion(files, dataset.DBName)};
}

FindingTable ReadTable(const Files& files, const std::string& dataset, const AskInterrupted& ask) {
    Database database = Open(files, dataset);
    database.EndWhen(ask);
    return FindingTable(database);
}

}  // namespace

std::string CountedFindings(std::size_t count) {
    return GroupedCount(count) + (count == 1 ? " finding" : " findings");
}

Findings::Findings(const Files& files, const CatalogueRow& dataset, const Date& today,
                   const AskInterrupted& ask)
    : files_(files),
      today_(today),
      facts_(FactsOf(files, dataset)),
      table_(ReadTable(files, dataset.DBName, ask)) {
    ReadAcceptedAnew();
}

void Findings::ReadAcceptedAnew() {
    accepted_.clear();
    fault_.clear();
    try {
        accepted_ = ReadAccepted(files_);
    } catch (const Error& error) {
        fault_ = error.Reason();
    }
    states_.emplace(table_, accepted_, today_);
}

std::string Findings::UseOf(std::size_t entry) const {
    const bool unused = states_->covered()[entry] == 0;
    if (!accepted_[entry].IsExpired(today_)) return unused ? "unused" : "used";
    return unused ? "expired, unused" : "expired";
}

std::vector<std::string> Findings::Notes() const {
    if (!fault_.empty()) return {fault_ + "; nothing counts as accepted"};
    std::vector<std::string> notes;
    for (std::size_t entry = 0; entry < accepted_.size(); ++entry) {
        const AcceptedFinding& accepted = accepted_[entry];
        std::string what;
        if (states_->covered()[entry] == 0) {
            what = "matches nothing any more";
        } else if (accepted.IsExpired(today_)) {
            what = "expired on " + DateText(*accepted.until) + "; " +
                   CountedFindings(states_->covered()[entry]) + " open again";
        } else {
            continue;
        }
        notes.push_back(std::string(kAcceptedFile) + ", line " + std::to_string(accepted.line) + ": " +
                        accepted.code + " of " + accepted.application + ' ' + what);
    }
    return notes;
}

Database Findings::OpenDataset() const {
    return Open(files_, facts_.dataset);
}

}  // namespace zorvel
