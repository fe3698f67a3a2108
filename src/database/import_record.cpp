#include "database/import_record.h"

#include <vector>

#include "platform/error.h"
#include "shell/formats.h"

namespace zorvel {
namespace {

// The columns that say what the catalogue says, but for the name of the file.
constexpr std::string_view kDetailColumns =
    "Tree,OU,Description,AppCount,CountFiles,CountINI,CountText,CountMacros,CountRegistry,CountIssues,Run";

bool Holds(const Database& dataset, std::string_view query) {
    return dataset.Prepare(query).FirstField({}).has_value();
}

bool HasTable(const Database& dataset, const std::string& table) {
    return Holds(dataset, "SELECT 1 FROM sqlite_master WHERE name='" + table + '\'');
}

}  // namespace

void BeginImportRecord(Database& dataset, const CatalogueRow& details, const DateTime& now) {
    std::vector<std::string> values = {details.Tree, details.OU, details.Description,
                                       std::to_string(details.AppCount)};
    for (const std::int32_t count : details.Counts)
        values.push_back(std::to_string(count));
    values.push_back(SortableDateAndTime(ParseDateAndTime(details.Captured)));
    values.push_back(SortableDateAndTime(now));
    dataset
        .Prepare("INSERT INTO Zorvel_Import (" + std::string(kDetailColumns) +
                 ",Begun) VALUES (?1,?2,?3,?4,?5,?6,?7,?8,?9,?10,?11,?12)")
        .Execute(values);
}

void CompleteImportRecord(Database& dataset, const DateTime& now) {
    std::string counts;
    for (const std::string_view table : kImportedTables) {
        const std::string name(table);
        counts += ',' + name + "=(SELECT count(*) FROM Zorvel_" + name + ')';
    }
    dataset.Prepare("UPDATE Zorvel_Import SET Completed=?1" + counts)
        .Execute(std::array{SortableDateAndTime(now)});
}

void RequireDataset(const Database& database) {
    if (HasTable(database, "Zorvel_Apps")) return;
    throw Error(errors::kStore, "the file is no dataset: it has no table Zorvel_Apps");
}

bool IsImportCompleted(const Database& dataset) {
    return !HasTable(dataset, "Zorvel_Import") ||
           Holds(dataset, "SELECT 1 FROM Zorvel_Import WHERE Completed IS NOT NULL");
}

std::optional<ImportRecord> ReadImportRecord(const Database& dataset) {
    if (!HasTable(dataset, "Zorvel_Import")) return std::nullopt;
    Rows rows = dataset.Query("SELECT * FROM Zorvel_Import WHERE Completed IS NOT NULL");
    if (!rows.Next()) return std::nullopt;
    ImportRecord record;
    CatalogueRow& details = record.details;
    const std::string run = rows.Text("Run");
    details.Captured = ShownDateAndTime(run).value_or(run);
    details.Tree = rows.Text("Tree");
    details.OU = rows.Text("OU");
    details.Description = rows.Text("Description");
    details.AppCount = WholeValue(rows.Text("AppCount"));
    for (std::size_t i = 0; i < kCountColumns.size(); ++i)
        details.Counts[i] = WholeValue(rows.Text(kCountColumns[i]));
    for (std::size_t i = 0; i < kImportedTables.size(); ++i)
        record.rows[i] = static_cast<std::int64_t>(NumericValue(rows.Text(std::string(kImportedTables[i]))));
    return record;
}

std::int64_t RowsOf(const Database& dataset, std::string_view table) {
    const auto count = dataset.Prepare("SELECT count(*) FROM Zorvel_" + std::string(table)).FirstField({});
    return static_cast<std::int64_t>(NumericValue(count.value_or("")));
}

ImportState ImportStateOf(const Files& files, std::string_view path) {
    if (!files.Exists(path)) return ImportState::kNoDataset;
    try {
        const Database dataset(files.Resolve(path), std::string(path), Database::Access::kReadOnly);
        RequireDataset(dataset);
        return IsImportCompleted(dataset) ? ImportState::kCompleted : ImportState::kNotCompleted;
    } catch (const Error&) {
        return ImportState::kUnreadable;
    }
}

bool LacksCompletion(const Files& files, std::string_view name) {
    return ImportStateOf(files, files.Path("Databases\\" + std::string(name))) == ImportState::kNotCompleted;
}

}  // namespace zorvel
