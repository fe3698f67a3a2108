#include "reporting/reports.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "database/import_record.h"
#include "findings/finding_filter.h"
#include "findings/finding_list.h"
#include "platform/store.h"
#include "reporting/data_source.h"
#include "reporting/report_definition.h"
#include "reporting/report_query.h"
#include "shell/formats.h"
#include "shell/report_error.h"

namespace zorvel {
namespace {

// The time in which a report is made: the status line says so, and the user can interrupt it.
class Making {
  public:
    Making(Services& services, const std::string& caption)
        : busy_(services.activity), status_(services.status) {
        status_.SetStatus(StatusPicture::kYellowBall, "Creating '" + caption + "'...");
    }
    ~Making() { status_.SetIdle(); }
    Making(const Making&) = delete;
    Making& operator=(const Making&) = delete;

  private:
    const BusyPeriod busy_;
    StatusLine& status_;
};

// Whether the store takes `query` as a statement over `database`; what it then reads is not asked.
bool Accepts(const Database& database, std::string_view query) {
    try {
        database.Check(query);
        return true;
    } catch (const Error&) {
        return false;
    }
}

}  // namespace

Reports::Reports(Services& services, const Catalogue& catalogue, ReportChoice& choice, ReportDisplay& display)
    : services_(services), catalogue_(catalogue), choice_(choice), display_(display) {}

ReportOutcome Reports::Generate(std::string_view caption) {
    const CatalogueReport* const report = FindReport(caption);
    return Generate(caption, report == nullptr ? std::string_view() : report->definition);
}

ReportOutcome Reports::Generate(std::string_view caption, std::string_view definition_file) {
    std::string sort;
    std::string filter;
    try {
        const CatalogueReport* const report = FindReport(caption);
        if (report == nullptr) throw Error(errors::kSubscript);
        choice_.caption = caption;
        if (caption == kCaptureDetailsReport) {
            choice_.dataset = kMasterCatalogueFile;
        } else {
            display_.ShowReportOptions(choice_);
            if (choice_.cancelled) return ReportOutcome::kCancelled;
        }
        RegisterDsn();
        services_.log.WriteLog("Reporting: Source DB set to '" + DatasetPath() + "'");
        sort = report->SortText(choice_.sort, choice_.descending);
        filter = report->FilterText(choice_.excluded_codes);
    } catch (...) {
        Fail("Reporting module", "Reporting");
        return ReportOutcome::kFailed;
    }
    return ReportLaunch(definition_file, sort, filter);
}

std::string Reports::DatasetPath() const {
    return services_.files.Path("Databases\\" + choice_.dataset);
}

void Reports::RegisterDsn() {
    services_.log.WriteLog("Creating Zorvel System DSN if neccessary...");
    try {
        RegisterDataSource(services_.files);
    } catch (...) {
        services_.log.WriteLog("ERROR: DSN creation procedure failed..");
        LogDetail(services_.log, CurrentError());
    }
}

ReportOutcome Reports::ReportLaunch(std::string_view definition_file, std::string_view sort,
                                    std::string_view filter) {
    try {
        const std::string path = services_.files.Path("Reports\\" + std::string(definition_file));
        services_.log.WriteLog("Reporting: Launching '" + path + "'");
        const Making making(services_, choice_.caption);
        display_.ShowReport(MakeReport(path, sort, filter));
        return ReportOutcome::kShown;
    } catch (const Interrupted&) {
        services_.log.WriteLog("Reporting: Interrupted at user request");
        return ReportOutcome::kInterrupted;
    } catch (...) {
        Fail("Report Launch", "Report Launch");
        return ReportOutcome::kFailed;
    }
}

std::shared_ptr<const Report> Reports::MakeReport(const std::string& definition_path, std::string_view sort,
                                                  std::string_view filter) const {
    ReportDefinition definition =
        ParseReportDefinition(services_.files.Read(definition_path), definition_path);
    const std::string sorted = ImposeSort(definition.query, sort);
    const std::string query = ImposeFilter(sorted, filter);
    const AskInterrupted ask = [this] { return display_.Interrupted(); };
    ReportFacts facts = Facts(ask);
    if (sorted != definition.query) facts.order = choice_.sort + (choice_.descending ? ", descending" : "");
    if (query != sorted) facts.excluded = choice_.excluded_codes;
    Database database(services_.files.Resolve(DatasetPath()), DatasetPath(), Database::Access::kSelect);
    database.EndWhen(ask);
    facts.incomplete = Incomplete(database);  // ahead of the rows: an import may be at work
    const std::string own_query = definition.query;
    const std::string where = definition_path + ", line " + std::to_string(definition.query_line);
    try {
        return std::make_shared<const Report>(std::move(definition), std::move(facts), database, query, ask);
    } catch (const Error& error) {
        // What the store takes and then fails to read is no fault of the definition.
        const bool faulty_query = error.number() == errors::kStore && !Accepts(database, query) &&
                                  Accepts(database, "SELECT * FROM sqlite_schema");
        if (!faulty_query) throw;
        const std::string expected = Accepts(database, own_query)
                                         ? "one ORDER BY, at the query's end, no WHERE, and tables without "
                                           "an alias, `Zorvel_Apps` among them"
                                         : "a SELECT over the tables of " + choice_.dataset;
        throw Error(errors::kStore,
                    where + ": the query failed: " + error.description() + "; expected " + expected)
            .With(error.detail());
    }
}

ReportFacts Reports::Facts(const AskInterrupted& ask) const {
    ReportFacts facts;
    facts.caption = choice_.caption;
    facts.dataset = choice_.dataset;
    facts.generated = DateAndTime(services_.clock.Now());
    if (choice_.caption == kCaptureDetailsReport) return facts;
    const std::optional<CatalogueRow> row = catalogue_.Fetch(choice_.dataset);
    if (!row) return facts;
    facts.tree = row->Tree;
    facts.container = row->OU;
    facts.captured = row->Captured;
    facts.comment = row->Description;
    const CatalogueReport* const report = FindReport(choice_.caption);
    if (report != nullptr && report->issue_filter) facts.findings = FindingsFact(*row, ask);
    return facts;
}

// How severe the findings of an issue report are, how many of them are accepted, and what there is to say of
// the list of accepted ones. Nothing for a dataset that cannot be read so far: the report's own reading tells
// why.
std::string Reports::FindingsFact(const CatalogueRow& dataset, const AskInterrupted& ask) const {
    try {
        const Findings findings(services_.files, dataset, Today(services_.clock), ask);
        FindingQuery query;
        for (const FindingRule& rule : findings.table().rules())
            if (choice_.excluded_codes.find('\'' + rule.code + '\'') == std::string::npos)
                query.codes.push_back(rule.code);
        if (query.codes.empty()) return {};
        const std::vector<std::uint32_t> rows = SelectRows(findings.table(), findings.states(), query);
        std::string fact = CountsText(CountsOf(findings, rows));
        for (const std::string& note : findings.Notes())
            fact += '\n' + note;
        return fact;
    } catch (const Error&) {
        return {};
    }
}

// The datasets that the report is about and whose import was not completed.
std::vector<std::string> Reports::Incomplete(const Database& database) const {
    std::vector<std::string> names;
    if (choice_.caption != kCaptureDetailsReport) {
        if (!IsImportCompleted(database)) names.push_back(choice_.dataset);
        return names;
    }
    for (const CatalogueRow& row : catalogue_.List()) {
        const bool known = std::find(names.begin(), names.end(), row.DBName) != names.end();
        if (!known && LacksCompletion(services_.files, row.DBName)) names.push_back(row.DBName);
    }
    return names;
}

void Reports::Fail(const std::string& module, const std::string& title) {
    const Error error = CurrentError();
    const std::string text = NumberAndDescription(error);
    services_.sounds.PlayEventSound(services_.options.session.WarningSound);
    services_.log.WriteLog("WARNING: Unexpected error #" + text + " occurred in " + module +
                           " - continuing...");
    LogDetail(services_.log, error);
    services_.ui.Tell("Error No." + text + " has occurred in '" + title + "'", MessageIcon::kExclamation,
                      error.detail());
}

}  // namespace zorvel
