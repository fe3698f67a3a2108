// Reads arbitrary bytes as one of the run's data files and imports its records: each reads the same when it
// is written again, and becomes one row or none.
#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "database/application_keys.h"
#include "database/attribute_loader.h"
#include "database/import_kinds.h"
#include "fuzz_input.h"
#include "platform/code_page.h"
#include "shell/text_records.h"

namespace zorvel::fuzz {
namespace {

using Record = std::vector<std::string>;

// A dataset in memory, with an application for the records to belong to.
Database MakeDataset() {
    Database dataset(":memory:", "dataset");
    dataset.Execute("ATTACH ':memory:' AS Master");
    const std::string schema = ZORVEL_SOURCE_DIR "/src/database/schema.sql";
    dataset.ExecuteScript(FromUtf8(InputFile(schema, schema).Rest()));
    return dataset;
}

std::string TextOf(const DataFile& layout, const Record& record) {
    std::string text;
    for (const std::string& field : record) {
        if (layout.style == RecordStyle::kLines) {
            text += OneFieldLine(field) + "\r\n";
        } else {
            text += (text.empty() ? "" : ",") + QuotedDoubling(field);
        }
    }
    return layout.style == RecordStyle::kLines ? text : text + "\r\n";
}

// The table that an INSERT statement names.
std::string TableOf(const ImportKind& kind) {
    if (kind.insert.empty()) return "Zorvel_AppDetails";
    std::string_view rest = kind.insert.substr(std::string_view("INSERT INTO ").size());
    return std::string(rest.substr(0, rest.find_first_of(" (")));
}

class Importer {
  public:
    explicit Importer(const ImportKind& kind) : kind_(kind), table_(TableOf(kind)) {}

    void Import(const std::vector<Record>& records) {
        if (kind_.insert.empty()) {
            AttributeLoader loader(dataset_);
            ImportEach(records, [&](const Record& record) { loader.Add(record); });
            dataset_.Execute("DELETE FROM Zorvel_Apps");
        } else {
            ApplicationKeys keys(dataset_);
            RowInsert insert(dataset_, kind_.insert, kind_.values);
            ImportEach(records, [&](const Record& record) {
                keys.Find(record[0]);
                insert.Insert("1", record);
            });
        }
        dataset_.Execute("DELETE FROM " + table_);
    }

  private:
    template <typename Add>
    void ImportEach(const std::vector<Record>& records, Add add) {
        for (const Record& record : records) {
            const int before = Count();
            const bool stored = Readable({errors::kStore, errors::kOverflow}, [&] {
                                    add(record);
                                    return true;
                                }).has_value();
            // Some attributes are columns of the application's own row.
            Require(Count() == before + int{stored} || (kind_.insert.empty() && Count() == before));
        }
    }
    int Count() { return std::stoi(count_.FirstField({}).value()); }

    const ImportKind& kind_;
    std::string table_;
    Database dataset_ = MakeDataset();
    Command count_ = dataset_.Prepare("SELECT count(*) FROM " + table_);
};

// All data files, with what imports them.
struct Kind {
    DataFile layout;
    Importer* importer;
};

std::vector<Kind> Kinds() {
    static std::vector<Importer> importers;
    std::vector<Kind> kinds;
    importers.reserve(ImportKinds().size());
    for (const ImportKind& kind : ImportKinds()) {
        importers.emplace_back(kind);
        for (const DataFile& layout : kind.files)
            kinds.push_back({layout, &importers.back()});
    }
    return kinds;
}

}  // namespace

// The first character, from "A" on, chooses the file.
void TestOneInput(std::string_view input) {
    static const std::vector<Kind> kinds = Kinds();
    if (input.empty()) return;
    const Kind& kind = kinds[static_cast<unsigned char>(input[0] - 'A') % kinds.size()];
    std::vector<Record> records;
    Readable({errors::kInvalidCall, errors::kPastEndOfFile}, [&] {
        DataFileReader reader(AsFile(input.substr(1)), kind.layout);
        for (Record record; reader.Next(record);)
            records.push_back(record);
        return true;
    });
    for (const Record& record : records) {
        Record again;
        const std::string text = TextOf(kind.layout, record);
        Require(DataFileReader(AsFile(text), kind.layout).Next(again) && again == record);
    }
    kind.importer->Import(records);
}

}  // namespace zorvel::fuzz
