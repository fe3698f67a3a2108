#include "database/import.h"

#include <utility>
#include <vector>

#include "database/application_keys.h"
#include "database/attribute_loader.h"
#include "database/import_record.h"
#include "database/set_aside.h"
#include "platform/store_files.h"
#include "shell/formats.h"
#include "shell/report_error.h"

namespace zorvel {
namespace {

constexpr int kBarMaximum = 8;
constexpr std::int64_t kStatusInterval = 100;

using Record = std::vector<std::string>;

// Loads the records of every kind but the attributes.
class RowLoader {
  public:
    RowLoader(const Database& dataset, const ImportKind& kind)
        : kind_(kind), keys_(dataset), insert_(dataset, kind.insert, kind.values) {}

    // False when the record was left out, because its application has no row and it needs none. Raises
    // 0x80004005 for another record without a row, and what RowInsert raises.
    bool Add(const Record& record) {
        const std::string* const key = keys_.Find(record[0]);
        if (key != nullptr) {
            insert_.Insert(*key, record);
        } else if (kind_.needs_no_application == nullptr || !kind_.needs_no_application(record)) {
            throw Error(errors::kStore, "the application has no row in Zorvel_Apps");
        }
        return key != nullptr;
    }

  private:
    const ImportKind& kind_;
    ApplicationKeys keys_;
    RowInsert insert_;
};

}  // namespace

Import::Import(Services& services, Catalogue& catalogue, ImportDisplay& display)
    : services_(services), catalogue_(catalogue), display_(display) {}

ImportResult Import::Run(CatalogueRow details) {
    Log& log = services_.log;
    const Files& files = services_.files;
    const auto hold = services_.writers.Acquire();
    if (!hold) return ImportResult::kFailed;
    try {
        step_ = 1;
        display_.ShowStatusFrame();
        progress_ = 0;
        display_.Progress(progress_, kBarMaximum);

        step_ = 2;
        Status({}, "Initialization:", "Creating fresh Zorvel database to receive import data ...");

        step_ = 3;
        details.DBName = DatasetName(details.Captured);
        log.WriteLog("Data Import: Creating fresh database ('" + details.DBName + "') to import data into");

        step_ = 4;
        const std::string path = files.Path("Databases\\" + details.DBName);
        if (!MakeRoom(path)) return ImportResult::kAbandoned;

        step_ = 5;
        const std::string empty = files.Path(kTemplateFile);
        log.WriteLog("Physically copying empty DB ('" + empty + "') to import DB ('" + path + "')");
        CopyDatabase(files, empty, path);

        step_ = 6;
        log.WriteLog("Opening newly created DB...");
        dataset_.emplace(files.Resolve(path), path);
        BeginImportRecord(*dataset_, details, services_.clock.Now());
        const double start = services_.clock.Timer();
        Advance();

        step_ = 7;
        Status({}, "Setup:", "Adding capture details..");
        log.WriteLog("Inserting Capture Details into DB...");
        catalogue_.Add(details);
        Advance();

        step_ = 8;
        for (const ImportKind& kind : ImportKinds()) {
            Load(kind);
            if (kind.moves_bar) Advance();
        }
        Complete(path);

        step_ = 9;
        log.WriteLog("Successfully finished import into DB - took " + Seconds(start));
        services_.sounds.PlayEventSound(services_.options.session.FinishedSound);
        services_.ui.Tell(
            "Captured data from the last Zorvelrun has been successfully imported into the Zorvel database - "
            "you can now generate reports against the Zorvelrun!",
            MessageIcon::kInformation);
        dataset_.reset();
        return ImportResult::kDone;
    } catch (...) {
        ReportFailure(CurrentError());
        return ImportResult::kFailed;
    }
}

// Sets a dataset of this run aside that is there already, if the user wants it; false when it is to stay.
bool Import::MakeRoom(const std::string& path) {
    if (!services_.files.Exists(path)) return true;
    const bool overwrite = services_.ui.Ask(
        "The last Zorvelrun data already appears to have been imported into a database. Do you really want "
        "to overwrite the existing database?",
        MessageIcon::kQuestion, Answer::kNo);
    if (!overwrite) {
        services_.log.WriteLog("Data already appears to have been imported, user choose to abandon import");
        services_.ui.Tell("Last Zorvelrun data will not be imported ...", MessageIcon::kInformation);
        return false;
    }
    services_.log.WriteLog("Data already appears to have been imported, user chooses to over-write database");
    RequireInputs();
    SetAside(services_.files, path);
    return true;
}

// Opens the template and every data file: what is missing shall be found while there is nothing to lose.
void Import::RequireInputs() const {
    const Files& files = services_.files;
    files.Open(files.Path(kTemplateFile));
    for (const ImportKind& kind : ImportKinds()) {
        for (const DataFile& file : kind.files)
            files.Open(files.Path(file.name));
    }
}

// From here on the dataset is whole, and the one that was set aside for it no longer needed.
void Import::Complete(const std::string& path) {
    CompleteImportRecord(*dataset_, services_.clock.Now());
    try {
        RemoveSetAside(services_.files, path);
    } catch (const Error& error) {
        services_.log.WriteWarning("The older dataset stays set aside: " + error.detail());
    }
}

void Import::Load(const ImportKind& kind) {
    const auto load_files = [&](const auto& add) {
        file_start_ = services_.clock.Timer();
        records_ = 0;
        for (const DataFile& file : kind.files)
            LoadFile(kind, file, add);
    };
    if (kind.insert.empty()) {
        AttributeLoader loader(*dataset_);
        load_files([&](const Record& record, const DataFileReader&) { loader.Add(record); });
    } else {
        RowLoader loader(*dataset_, kind);
        load_files([&](const Record& record, const DataFileReader& reader) {
            if (loader.Add(record)) return;
            services_.log.WriteWarning(reader.Place() + ": a record of '" + record[0] +
                                       "' was left out: the application was not found in the directory");
        });
    }
}

template <typename Adder>
void Import::LoadFile(const ImportKind& kind, const DataFile& file, const Adder& add) {
    Status({}, kind.section, kind.opening);
    services_.log.WriteLog("Importing " + services_.files.Path(file.name) + "...");
    DataFileReader reader(services_.files, file);
    Record record;
    dataset_->Begin();
    while (reader.Next(record)) {
        ++records_;
        try {
            add(record, reader);
        } catch (const Error& error) {
            throw error.With(reader.Place() + ": " +
                             (error.detail().empty() ? error.description() : error.detail()));
        }
        if (records_ % kStatusInterval == 0) {
            Status(record[0], kind.section, "Adding:" + record[kind.progress_field] + " ...",
                   kind.shows_count ? Grouped(records_) + " entries" : std::string());
        }
    }
    dataset_->Complete();
    services_.log.WriteLog(std::string(kind.timing) + Seconds(file_start_));
}

void Import::Advance() {
    display_.Progress(++progress_, kBarMaximum);
}

void Import::Status(std::string_view application, std::string_view section, std::string_view activity,
                    std::string_view count) {
    display_.Status(application, section, activity, count);
    services_.ui.ProcessEvents();
}

std::string Import::Seconds(double start) const {
    return TwoDecimals(SecondsSince(services_.clock, start)) + " second(s)";
}

void Import::ReportFailure(const Error& error) {
    std::optional<Error> unwritten;
    try {
        // What was loaded before the error stays.
        if (dataset_) dataset_->Complete();
    } catch (const Error& second) {
        unwritten = second;
    }
    services_.sounds.PlayEventSound(services_.options.session.WarningSound);
    const std::string text =
        ' ' + std::to_string(error.number()) + " (" + error.description() + ") occurred during ";
    const std::string place = " at Line " + std::to_string(step_);
    services_.ui.Tell("Error no." + text + "Import" + place, MessageIcon::kNone, error.detail());
    services_.log.WriteLog("ERROR: Unexpected error #" + text + "data Import routine" + place);
    LogDetail(services_.log, error);
    if (unwritten) LogDetail(services_.log, *unwritten);
    dataset_.reset();
}

}  // namespace zorvel
