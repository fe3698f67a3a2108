#include "database/catalogue.h"

#include <utility>

#include "database/sql_text.h"
#include "platform/error.h"
#include "shell/formats.h"
#include "streams/text_helpers.h"

namespace zorvel {
namespace {

std::int32_t CountOf(const Rows& rows, const char* column, const std::string& dataset) {
    try {
        return WholeValue(rows.Text(column));
    } catch (const Error& error) {
        throw error.With("the catalogue's row of '" + CutForMessage(dataset) + "', " + column + ": " +
                         error.description());
    }
}

std::string StatementText(const CatalogueRow& row, const std::string& captured) {
    std::string sql = "INSERT INTO Zorvel_CaptureDetails VALUES ('" + captured + "','" + row.Tree + "','" +
                      row.OU + "','" + EscapeQuotes(row.Description) + "'," + std::to_string(row.AppCount) +
                      ",'" + row.DBName + '\'';
    for (const std::int32_t count : row.Counts)
        sql += ',' + std::to_string(count);
    return sql + ')';
}

std::string WhereName(std::string_view name) {
    return " WHERE DBName='" + EscapeQuotes(name) + '\'';
}

}  // namespace

Catalogue::Catalogue(Database& master) : master_(master) {}

std::vector<CatalogueRow> Catalogue::Read(std::string_view sql) const {
    std::vector<CatalogueRow> list;
    Rows rows = master_.Query(sql);
    while (rows.Next()) {
        CatalogueRow& row = list.emplace_back();
        const std::string captured = rows.Text("Captured");
        row.Captured = ShownDateAndTime(captured).value_or(captured);
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
    std::vector<CatalogueRow> rows = Read("SELECT * from Zorvel_CaptureDetails" + WhereName(name));
    if (rows.empty()) return std::nullopt;
    return rows.back();
}

void Catalogue::Add(const CatalogueRow& row) {
    const std::string captured = SortableDateAndTime(ParseDateAndTime(row.Captured));
    const auto literal = [&](const std::string& text, std::string_view field) {
        std::optional<std::string> value = LiteralValue(text);
        if (!value) RejectStatement(master_, StatementText(row, captured), field, text);
        return std::move(*value);
    };
    std::vector<std::string> values = {captured,
                                       literal(row.Tree, "the capture record's tree"),
                                       literal(row.OU, "the capture record's container"),
                                       row.Description,
                                       std::to_string(row.AppCount),
                                       row.DBName};
    for (const std::int32_t count : row.Counts)
        values.push_back(std::to_string(count));
    master_.Prepare("INSERT INTO Zorvel_CaptureDetails VALUES (?1,?2,?3,?4,?5,?6,?7,?8,?9,?10,?11,?12)")
        .Execute(values);
}

void Catalogue::Remove(std::string_view name) {
    master_.Execute("DELETE FROM Zorvel_CaptureDetails" + WhereName(name));
}

}  // namespace zorvel
