// The findings of one dataset as programs work with them: with the list of accepted ones of the day.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "database/catalogue.h"
#include "findings/accepted_findings.h"
#include "findings/finding_order.h"
#include "findings/finding_states.h"
#include "findings/finding_table.h"
#include "platform/files.h"

namespace zorvel {

// What is said of the dataset.
struct FindingFacts {
    std::string dataset;      // file name in Databases
    std::string tree;         // of the run
    std::string captured;     // when the run began, "dd/mm/yyyy hh:mm:ss"
    bool incomplete = false;  // the import was not completed
};

// "1 finding", "1,204 findings"
std::string CountedFindings(std::size_t count);

class Findings {
  public:
    // Reads the dataset of a row of the catalogue, and the list of accepted findings. Raises what
    // FindingTable raises.
    Findings(const Files& files, const CatalogueRow& dataset, const Date& today,
             const AskInterrupted& ask = {});

    // Reads the list of accepted findings anew. A mistake in it is kept in fault(); then nothing counts as
    // accepted.
    void ReadAcceptedAnew();

    const FindingFacts& facts() const { return facts_; }
    const FindingTable& table() const { return table_; }
    const FindingStates& states() const { return *states_; }
    const AcceptedFindings& accepted() const { return accepted_; }
    const Date& today() const { return today_; }
    // File, line and what was expected; empty for a list without a mistake.
    const std::string& fault() const { return fault_; }

    // "used", "unused", "expired" or "expired, unused".
    std::string UseOf(std::size_t entry) const;
    // What there is to say of the list: its mistake, each entry that expired while it covers something, and
    // each that covers nothing any more.
    std::vector<std::string> Notes() const;

    // The dataset, for what the table does not hold. Raises 0x80004005.
    Database OpenDataset() const;

  private:
    const Files& files_;
    Date today_;
    FindingFacts facts_;
    FindingTable table_;
    AcceptedFindings accepted_;
    std::string fault_;
    std::optional<FindingStates> states_;
};

}  // namespace zorvel
