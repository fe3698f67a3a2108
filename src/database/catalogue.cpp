#include "database/catalogue.h"

#include "database/sql_text.h"
#include "platform/error.h"
#include "shell/formats.h"
#include "streams/text_helpers.h"

namespace zorvel {
namespace {

// The last of these is the column that reports and dialogs know by name.
constexpr std::array<const char*, 6> kCountColumns = {"CountFiles",  "CountINI",      "CountText",
                                                      "CountMacros", "CountRegistry", "CountIssues"};

// The table's form of a date and time, ISO 8601 with a blank as SQLite's own date functions write it.
std::string SortableTime(const DateTime& time) {
    const std::string date = ShortDate(time);
    return date.substr(6, 4) + '-' + date.substr(3, 2) + '-' + date.substr(0, 2) + ' ' + LongTime(time);
}

// The shown form of what the table holds; a text of another form stays as it is.
std::string ShownTime(const std::string& stored) {
    if (stored.size() != 19 || stored[4] != '-' || stored[7] != '-') return stored;
    return stored.substr(8, 2) + '/' + stored.substr(5, 2) + '/' + stored.substr(0, 4) + ' ' +
           stored.substr(11);
}

std::int32_t CountOf(const Rows& rows, const char* column, const std::string& dataset) {
    try {
        return WholeValue(rows.Text(column));
    } catch (const Error& error) {
        throw error.With("the catalogue's row of '" + CutForMessage(dataset) + "', " + column + ": " +
                         error.description());
    }
}

std::string WhereName(std::string_view name) {
    return " WHERE DBName='" + std::string(name) + '\'';
}

}  // namespace

Catalogue::Catalogue(Database& master) : master_(master) {}

std::vector<CatalogueRow> Catalogue::Read(std::string_view sql) const {
    std::vector<CatalogueRow> list;
    Rows rows = master_.Query(sql);
    while (rows.Next()) {
        CatalogueRow& row = list.emplace_back();
        row.Captured = ShownTime(rows.Text("Captured"));
        row.Tree = rows.Text("Tree");
        row.OU = rows.Text("OU");
        row.Description = rows.Text("Description");
        row.DBName = rows.Text("DBName");
        row.AppCount = CountOf(rows, "AppCount", row.DBName);
        for (std::size_t i = 0; i < kCountColumns.size(); ++i)
            row.Counts[i] = CountOf(rows, kCountColumns[i], row.DBName);
    }
    return list;
}

std::vector<CatalogueRow> Catalogue::List() const {
    return Read("SELECT * from Zorvel_CaptureDetails ORDER BY `Captured` DESC");
}

std::optional<CatalogueRow> Catalogue::Fetch(std::string_view name) const {
    const std::string sql = "SELECT * from Zorvel_CaptureDetails" + WhereName(name);
    if (!LiteralValue(name)) RejectStatement(master_, sql);
    std::vector<CatalogueRow> rows = Read(sql);
    if (rows.empty()) return std::nullopt;
    return rows.front();
}

void Catalogue::Add(const CatalogueRow& row) {
    std::string sql = "INSERT INTO Zorvel_CaptureDetails VALUES ('" +
                      SortableTime(ParseDateAndTime(row.Captured)) + "','" + row.Tree + "','" + row.OU +
                      "','" + EscapeQuotes(row.Description) + "'," + std::to_string(row.AppCount) + ",'" +
                      row.DBName + '\'';
    for (const std::int32_t count : row.Counts)
        sql += ',' + std::to_string(count);
    sql += ')';
    if (!LiteralValue(row.Tree) || !LiteralValue(row.OU) || !LiteralValue(row.DBName))
        RejectStatement(master_, sql);
    master_.Execute(sql);
}

void Catalogue::Remove(std::string_view name) {
    const std::string sql = "DELETE FROM Zorvel_CaptureDetails" + WhereName(name);
    if (!LiteralValue(name)) RejectStatement(master_, sql);
    master_.Execute(sql);
}

}  // namespace zorvel
