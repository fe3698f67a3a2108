#include "database/dataset_check.h"

#include <algorithm>
#include <array>
#include <optional>
#include <set>
#include <string_view>
#include <utility>

#include "database/import_record.h"
#include "database/set_aside.h"
#include "platform/code_page.h"
#include "platform/error.h"
#include "platform/new_file.h"
#include "platform/store.h"
#include "platform/store_files.h"
#include "shell/formats.h"

namespace zorvel {
namespace {

constexpr std::string_view kDatasetBegin = "Zorvel_";
constexpr std::string_view kDatasetEnd = ".MDB";

// What an operation leaves when it is killed, by the end of its name.
struct Leftover {
    std::string_view end;
    const char* what;
};
constexpr const char* kJournal = "journal";
constexpr const char* kTemporaryFile = "temporary file";
constexpr std::array<Leftover, 7> kLeftovers = {{{".partial", "unfinished copy"},
                                                 {"_New.mdb", "unfinished compaction"},
                                                 {"-journal", kJournal},
                                                 {"-wal", kJournal},
                                                 {"-shm", kJournal},
                                                 {kNewFileEnd, kTemporaryFile},
                                                 {".tmp", kTemporaryFile}}};

// The path text of a file of Databases, or of one elsewhere in the program folder, whose name has a folder.
std::string PathOf(const Files& files, std::string_view name) {
    const bool elsewhere = name.find('\\') != std::string_view::npos;
    return files.Path(elsewhere ? name : "Databases\\" + std::string(name));
}

Database OpenForReading(const Files& files, const std::string& path) {
    return {files.Resolve(path), path, Database::Access::kReadOnly};
}

bool EndsIgnoringCase(std::string_view text, std::string_view end) {
    return text.size() >= end.size() && EqualIgnoringCase(text.substr(text.size() - end.size()), end);
}

// "Zorvel_261116172805.MDB" was captured "16/11/2026 17:28:05". Raises error 13 for another name.
std::string CapturedOf(std::string_view name) {
    const std::string digits(
        name.substr(kDatasetBegin.size(), name.size() - kDatasetBegin.size() - kDatasetEnd.size()));
    if (digits.size() != 12) throw Error(errors::kTypeMismatch).At(std::string(name));
    const auto pair = [&digits](std::size_t number) { return digits.substr(2 * number, 2); };
    return pair(2) + '/' + pair(1) + "/20" + pair(0) + ' ' + pair(3) + ':' + pair(4) + ':' + pair(5);
}

// The catalogue row of a dataset of an older version, as far as its tables tell.
CatalogueRow RowFromTables(const Database& dataset, std::string_view name) {
    const auto rows = [&dataset](std::string_view table) {
        return static_cast<std::int32_t>(RowsOf(dataset, table));
    };
    CatalogueRow row;
    row.Captured = CapturedOf(name);
    row.OU = dataset
                 .Prepare(
                     "SELECT CASE WHEN min(AppOU)=max(AppOU) THEN min(AppOU) WHEN count(*)>0 THEN "
                     "'[Multiple OUs]' END FROM Zorvel_Apps")
                 .FirstField({})
                 .value_or("");
    row.AppCount = rows("Apps");
    row.Counts = {rows("CopyFiles"), rows("INISettings"),      0,
                  rows("Macros"),    rows("RegistrySettings"), rows("Issues")};
    return row;
}

CatalogueRow RowFromDataset(const Files& files, std::string_view name) {
    const Database dataset = OpenForReading(files, PathOf(files, name));
    std::optional<ImportRecord> record = ReadImportRecord(dataset);
    CatalogueRow row = record ? std::move(record->details) : RowFromTables(dataset, name);
    row.DBName = name;
    return row;
}

// Goes through the folder and the catalogue, one dataset after the other.
class DatasetChecker {
  public:
    DatasetChecker(const Files& files, const Catalogue& catalogue) : files_(files) {
        for (const CatalogueRow& row : catalogue.List()) {
            listed_.insert(UpperCase(row.DBName));
            datasets_.emplace(row.DBName);
        }
        const std::string folder = files.Path("Databases");
        for (std::string& name : files.List(folder, kDatasetBegin, kDatasetEnd)) {
            if (!EndsIgnoringCase(name, "_New.mdb")) datasets_.insert(std::move(name));
        }
        for (const std::string& name : files.List(folder, kDatasetBegin, kSetAsideEnd))
            datasets_.insert(name.substr(0, name.size() - kSetAsideEnd.size()));
    }

    std::vector<DatasetFault> Find() {
        for (const std::string& name : datasets_) {
            try {
                CheckDataset(name);
            } catch (const Error& error) {
                Add("unreadable dataset", name, error.description(), DatasetRepair::kNone);
            }
        }
        // After the datasets: a journal that belonged to one of them is gone when it was opened.
        for (const std::string& name : files_.List(files_.Path("Databases"), "", "")) {
            for (const Leftover& leftover : kLeftovers) {
                if (EndsIgnoringCase(name, leftover.end))
                    Add(leftover.what, name, "", DatasetRepair::kRemoveFile);
            }
        }
        for (const char* folder : {".\\", "TempData\\"}) {
            for (const std::string& name : files_.List(files_.Path(folder), "", kNewFileEnd))
                Add(kTemporaryFile, folder + name, "", DatasetRepair::kRemoveFile);
        }
        return std::move(faults_);
    }

  private:
    void Add(const char* what, const std::string& file, std::string details, DatasetRepair repair) {
        faults_.push_back({what, file, std::move(details), repair});
    }

    void CheckDataset(const std::string& name) {
        const std::string path = PathOf(files_, name);
        const ImportState state = ImportStateOf(files_, path);
        const ImportState aside = ImportStateOf(files_, SetAsidePath(path));
        if (aside != ImportState::kNoDataset && CheckSetAside(name, state, aside)) return;
        const bool listed = listed_.count(UpperCase(name)) != 0;
        switch (state) {
            case ImportState::kNoDataset:
                if (listed) Add("row without a file", name, "", DatasetRepair::kRemoveRows);
                break;
            case ImportState::kUnreadable:
                RequireDataset(OpenForReading(files_, path));  // raises the reason
                break;
            case ImportState::kNotCompleted:
                if (listed) {
                    Add("import not completed", name, "to be imported again, or deleted",
                        DatasetRepair::kNone);
                } else {
                    Add("dataset without a row", name, std::string(kImportNotCompleted),
                        DatasetRepair::kRemoveFile);
                }
                break;
            case ImportState::kCompleted:
                if (!listed) Add("dataset without a row", name, "", DatasetRepair::kAddRow);
                CheckRows(name, path);
                break;
        }
    }

    // True when the dataset that was set aside is to take its place again, so that what is there does not
    // count.
    bool CheckSetAside(const std::string& name, ImportState state, ImportState aside) {
        const auto add = [&](const char* details, DatasetRepair repair) {
            Add("set-aside dataset", name + std::string(kSetAsideEnd), details, repair);
            return repair == DatasetRepair::kPutBack;
        };
        if (state == ImportState::kCompleted)
            return add("another took its place", DatasetRepair::kRemoveFile);
        if (aside == ImportState::kCompleted)
            return add("nothing whole took its place", DatasetRepair::kPutBack);
        if (aside == ImportState::kUnreadable) return add("it cannot be read", DatasetRepair::kNone);
        if (state == ImportState::kNoDataset) return add("nothing took its place", DatasetRepair::kPutBack);
        if (state == ImportState::kUnreadable) return add("import not completed", DatasetRepair::kNone);
        return add("another took its place, neither import was completed", DatasetRepair::kRemoveFile);
    }

    void CheckRows(const std::string& name, const std::string& path) {
        const Database dataset = OpenForReading(files_, path);
        const std::optional<ImportRecord> record = ReadImportRecord(dataset);
        if (!record) return;
        for (std::size_t i = 0; i < kImportedTables.size(); ++i) {
            const std::int64_t rows = RowsOf(dataset, kImportedTables[i]);
            if (rows == record->rows[i]) continue;
            Add("rows do not agree", name,
                "Zorvel_" + std::string(kImportedTables[i]) + " has " + std::to_string(rows) +
                    ", imported were " + std::to_string(record->rows[i]),
                DatasetRepair::kNone);
        }
    }

    struct LessIgnoringCase {
        bool operator()(const std::string& left, const std::string& right) const {
            return UpperCase(left) < UpperCase(right);
        }
    };

    const Files& files_;
    std::set<std::string> listed_;                      // the names in the catalogue, in upper case
    std::set<std::string, LessIgnoringCase> datasets_;  // the names of the catalogue and of the folder
    std::vector<DatasetFault> faults_;
};

// Deletes a file that nobody uses, and what belongs to it; a journal is used by whoever uses its database.
void RemoveFile(const Files& files, const DatasetFault& fault) {
    const std::string owner =
        fault.file.substr(0, fault.what == kJournal ? fault.file.rfind('-') : std::string::npos);
    if (files.Exists(PathOf(files, owner))) RequireUnused(files, PathOf(files, owner));
    RemoveUnfinished(files, PathOf(files, fault.file));
}

// Puts the dataset that was set aside back, and lets the catalogue say what it says of itself: the rows may
// be of the import that failed. An older dataset tells less than its row.
void PutSetAsideBack(const Files& files, Catalogue& catalogue, const std::string& name) {
    PutBack(files, PathOf(files, name));
    const CatalogueRow row = RowFromDataset(files, name);
    if (row.Tree.empty() && catalogue.Fetch(name)) return;
    catalogue.Remove(name);
    catalogue.Add(row);
}

std::string NameWithoutEnd(const DatasetFault& fault) {
    return fault.file.substr(0, fault.file.size() - kSetAsideEnd.size());
}

}  // namespace

std::vector<DatasetFault> FindDatasetFaults(const Files& files, const Catalogue& catalogue) {
    return DatasetChecker(files, catalogue).Find();
}

std::string RepairText(const DatasetFault& fault) {
    switch (fault.repair) {
        case DatasetRepair::kAddRow:
            return "enter '" + fault.file + "' in the catalogue";
        case DatasetRepair::kRemoveRows:
            return "remove '" + fault.file + "' from the catalogue";
        case DatasetRepair::kPutBack:
            return "rename '" + fault.file + "' to '" + NameWithoutEnd(fault) + "'";
        case DatasetRepair::kRemoveFile:
            return "delete '" + fault.file + "'";
        case DatasetRepair::kNone:
            break;
    }
    return {};
}

void RepairDataset(const Files& files, Catalogue& catalogue, const DatasetFault& fault) {
    switch (fault.repair) {
        case DatasetRepair::kAddRow:
            catalogue.Add(RowFromDataset(files, fault.file));
            break;
        case DatasetRepair::kRemoveRows:
            catalogue.Remove(fault.file);
            break;
        case DatasetRepair::kPutBack:
            PutSetAsideBack(files, catalogue, NameWithoutEnd(fault));
            break;
        case DatasetRepair::kRemoveFile:
            RemoveFile(files, fault);
            break;
        case DatasetRepair::kNone:
            break;
    }
}

}  // namespace zorvel
