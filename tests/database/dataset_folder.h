// A program folder with the delivered databases, and what tests of the datasets need of it.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/data_files.h"
#include "database/catalogue.h"
#include "database/import.h"
#include "platform/store.h"
#include "support/databases.h"
#include "support/fakes.h"

namespace zorvel::test {

using Records = std::vector<std::vector<std::string>>;

// Notes what an import shows: "application|section|activity|count", or "bar N of M".
class NotingDisplay final : public ImportDisplay {
  public:
    std::vector<std::string> shown;

    void ShowStatusFrame() override { shown.emplace_back("frame"); }
    void Status(std::string_view application, std::string_view section, std::string_view activity,
                std::string_view count) override {
        std::string text;
        for (const std::string_view part : {application, section, activity})
            text += std::string(part) + '|';
        shown.push_back(text + std::string(count));
    }
    void Progress(int value, int maximum) override {
        shown.push_back("bar " + std::to_string(value) + " of " + std::to_string(maximum));
    }
};

// The dataset of a run on the `day`th November.
inline CatalogueRow DatasetOfDay(int day, const std::string& comment) {
    CatalogueRow row;
    row.Captured = std::to_string(day) + "/11/2026 08:00:00";
    row.Tree = "TREE_" + std::to_string(day);
    row.OU = "APPS & all.SITE";
    row.Description = comment;
    row.AppCount = 1234;
    row.DBName = DatasetName(row.Captured);
    return row;
}

struct DatasetFolder : TestShell {
    DatasetFolder() {
        AddDatabases(folder);
        master.emplace(Open("ZorvelMaster.mdb"));
        catalogue.emplace(*master);
        for (const DataFile& file : AllFiles())
            Write(file, {});
    }

    static std::vector<DataFile> AllFiles() {
        std::vector<DataFile> all;
        for (const ImportKind& kind : ImportKinds())
            all.insert(all.end(), kind.files.begin(), kind.files.end());
        return all;
    }
    // Replaces a data file by one with these records.
    void Write(const DataFile& layout, const Records& records) {
        OutputFile file = files.Create(files.Path(layout.name));
        for (const auto& record : records) {
            for (std::size_t i = 0; i < record.size(); ++i) {
                if (layout.style == RecordStyle::kLines) {
                    WriteFieldLine(file, record[i]);
                } else {
                    file.Write((i == 0 ? "" : ",") + QuotedDoubling(record[i]));
                }
            }
            if (layout.style == RecordStyle::kCommaRow) file.Write("\r\n");
        }
        file.Close();
    }
    Database Open(const std::string& name) const {
        const std::string path = files.Path("Databases\\" + name);
        return {files.Resolve(path), path};
    }
    // The rows of a table of the dataset, fields joined by "|", nulls as "NULL".
    std::vector<std::string> Table(const std::string& name, const std::string& columns) const {
        return Select(Open(dataset), columns, name);
    }
    static std::vector<std::string> Select(const Database& database, const std::string& columns,
                                           const std::string& table) {
        std::string joined = "ifnull(" + columns + ",'NULL')";
        while (true) {
            const std::size_t comma = joined.find(", ");
            if (comma == std::string::npos) break;
            joined.replace(comma, 2, ",'NULL')||'|'||ifnull(");
        }
        std::vector<std::string> list;
        Rows rows = database.Query("SELECT " + joined + " AS Row FROM " + table + " ORDER BY rowid");
        while (rows.Next())
            list.push_back(rows.Text("Row"));
        return list;
    }
    ImportResult RunImport() {
        CatalogueRow details;
        details.Captured = "16/11/2026 17:28:05";
        details.Tree = tree;
        details.OU = "APPS.SITE";
        details.Description = comment;
        details.AppCount = 1234;
        details.Counts = {1, 2, 3, 4, 5, 6};
        return Import(services, *catalogue, display).Run(details);
    }

    std::string dataset = "Zorvel_261116172805.MDB";
    std::string tree = "CORP_TREE";
    std::string comment = "O'Brien's run";
    std::optional<Database> master;
    std::optional<Catalogue> catalogue;
    NotingDisplay display;
};

}  // namespace zorvel::test
