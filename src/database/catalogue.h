// The master catalogue: one row for each imported dataset.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/store.h"

namespace zorvel {

// The template that datasets are made from, in the program folder, and the master catalogue, in Databases.
inline constexpr std::string_view kTemplateFile = "Empty_Zorvel.mdb";
inline constexpr std::string_view kMasterCatalogueFile = "ZorvelMaster.mdb";

// The columns of a row's counts; the last of them is the one that reports and dialogs know by name.
inline constexpr std::array<const char*, 6> kCountColumns = {"CountFiles",  "CountINI",      "CountText",
                                                             "CountMacros", "CountRegistry", "CountIssues"};

// A row of Zorvel_CaptureDetails.
struct CatalogueRow {
    std::string
        Captured;  // "dd/mm/yyyy hh:mm:ss"; the table holds "yyyy-mm-dd hh:mm:ss", which sorts by time
    std::string Tree;
    std::string OU;
    std::string Description;
    std::int32_t AppCount = 0;
    std::string DBName;  // file name of the dataset in Databases
    std::array<std::int32_t, 6>
        Counts{};  // file copies, INI entries, text files, macros, registry entries, issues

    std::int32_t CountIssues() const { return Counts.back(); }
};

class Catalogue {
  public:
    // `master` is the open master catalogue and must outlive the object. Every operation raises 0x80004005
    // when the store fails (61 on a full disk); List and Fetch raise error 6, whose detail names the row, for
    // a count outside 32 bits.
    explicit Catalogue(Database& master);

    // All rows, newest run first.
    std::vector<CatalogueRow> List() const;
    // The row of a dataset, or nothing: of several, which is what importing a run again leaves, the last one
    // that was added, which tells what the dataset holds.
    std::optional<CatalogueRow> Fetch(std::string_view name) const;
    // Adds a row. Raises error 13 when Captured is no date and time; an apostrophe in Tree or OU makes the
    // statement fail.
    void Add(const CatalogueRow& row);
    // Removes every row of a dataset.
    void Remove(std::string_view name);

  private:
    std::vector<CatalogueRow> Read(std::string_view sql) const;

    Database& master_;
};

}  // namespace zorvel
