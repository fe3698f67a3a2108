// The relational store: statements, text, groups, locks, copies.
#include "platform/store.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <array>
#include <string>
#include <vector>

#include "platform/store_files.h"
#include "support/errors.h"
#include "support/temp_folder.h"

namespace zorvel {
namespace {

using test::RaisedBy;

class Store : public testing::Test {
  protected:
    test::TempFolder folder_;
    Files files_{folder_.path()};
    std::string path_ = files_.Path(R"(Databases\Data.mdb)");

    Database Open(Database::Access access = Database::Access::kReadWrite) const {
        return {files_.Resolve(path_), path_, access};
    }
    Database Create() const {
        Database database = Open(Database::Access::kCreate);
        database.Execute("CREATE TABLE T (Number INTEGER, Name TEXT)");
        return database;
    }
    static std::string Single(const Database& database, const std::string& expression) {
        Rows rows = database.Query("SELECT " + expression + " AS Result FROM T");
        return rows.Next() ? rows.Text("Result") : "(no row)";
    }
};

TEST_F(Store, KeepsCodePageTextAsUtf8) {
    Database database = Create();
    database.Execute("INSERT INTO T VALUES (1, 'caf\xE9 \x80')");
    EXPECT_EQ(Single(database, "hex(Name)"), "636166C3A920E282AC");
    EXPECT_EQ(Single(database, "Name"), "caf\xE9 \x80");
    database.Prepare("UPDATE T SET Name=?1").Execute(std::array<std::string, 1>{"\x8A"});
    EXPECT_EQ(Single(database, "hex(Name)"), "C5A0");
}

TEST_F(Store, ReadsRowsByColumnNameUntilTheirEnd) {
    Database database = Create();
    database.ExecuteScript("INSERT INTO T VALUES (1, 'a'); INSERT INTO T VALUES (2, NULL)");
    Rows rows = database.Query("SELECT * FROM T ORDER BY Number");
    ASSERT_TRUE(rows.Next());
    EXPECT_EQ(rows.Text("Name"), "a");
    EXPECT_EQ(RaisedBy([&] { rows.Text("Other"); }).number(), errors::kStore);
    ASSERT_TRUE(rows.Next());
    EXPECT_EQ(rows.Text("Number"), "2");
    EXPECT_EQ(rows.Text("Name"), "");
    EXPECT_FALSE(rows.Next());
}

TEST_F(Store, RefusesWhatIsNotExactlyOneStatement) {
    Database database = Create();
    database.Execute("INSERT INTO T VALUES (1, 'kept');\r\n ");
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"", "the text holds no statement"},
        {" ; ", "the text holds no statement"},
        {"-- nothing", "the text holds no statement"},
        {"DELETE FROM T; DROP TABLE T", "the text goes on after its first statement"},
        {"DELETE FROM T; x", "the text goes on after its first statement"},
        {std::string("DELETE FROM T\0 WHERE Number=2", 29), "the statement holds a NUL character"},
        {"DELETE FROM T WHERE Name='O'Brien'", "near \"Brien\": syntax error"},
        {"DELETE FROM Missing", "no such table: Missing"},
    };
    for (const auto& [sql, description] : cases) {
        const Error error = RaisedBy([&, &text = sql] { database.Execute(text); });
        EXPECT_EQ(error.number(), errors::kStore) << sql;
        EXPECT_EQ(error.description(), description) << sql;
        EXPECT_EQ(error.detail(), path_ + ": " + description) << sql;
        EXPECT_EQ(RaisedBy([&, &text = sql] { database.Check(text); }).description(), description) << sql;
    }
    database.Check("DELETE FROM T");
    EXPECT_EQ(Single(database, "group_concat(Name)"), "kept");
}

TEST_F(Store, NeverTakesAValueForAPartOfTheStatement) {
    Database database = Create();
    Command insert = database.Prepare("INSERT INTO T VALUES (?1, ?2)");
    const std::string hostile = "x'); DROP TABLE T; --";
    insert.Execute(std::array<std::string, 2>{"7", hostile});
    EXPECT_EQ(Single(database, "Name"), hostile);
    EXPECT_EQ(Single(database, "typeof(Number)"), "integer");
    const std::array<std::string, 2> with_nul{"8", std::string("a\0b", 3)};
    insert.Execute(with_nul);
    EXPECT_EQ(Single(database, "group_concat(Name, '|')"), hostile + "|" + with_nul[1]);
    EXPECT_EQ(database.Prepare("SELECT Name FROM T WHERE Number=?1").FirstField(std::array{with_nul[0]}),
              with_nul[1]);
    Command find = database.Prepare("SELECT Number FROM T WHERE Name=?1");
    EXPECT_EQ(find.FirstField(std::array<std::string, 1>{hostile}), "7");
    EXPECT_EQ(find.FirstField(std::array<std::string, 1>{"' OR '1'='1"}), std::nullopt);
}

TEST_F(Store, TellsWhyAFileCannotBeOpened) {
    EXPECT_EQ(RaisedBy([&] { Open(); }).description(), "unable to open database file");
    folder_.Write("Databases/Data.mdb", std::string(5000, 'x'));
    const Error error = RaisedBy([&] { Open(); });
    EXPECT_EQ(error.number(), errors::kStore);
    EXPECT_EQ(error.description(), "file is not a database");
}

// Somebody who has begun to write lets others read; a copy made meanwhile would lack what he writes.
TEST_F(Store, DoesNotCompactWhatAnotherProgramWrites) {
    Create();
    Database other = Open();
    other.ExecuteScript("BEGIN IMMEDIATE");
    const std::string copy = path_ + "_New.mdb";
    const auto compact = [&] { Database::Compact(files_.Resolve(path_), path_, files_.Resolve(copy)); };
    EXPECT_EQ(RaisedBy(compact).description(), "database is locked");
    EXPECT_FALSE(files_.Exists(copy));
}

TEST_F(Store, RefusesToWriteAFileOpenedForReading) {
    Create();
    Database database = Open(Database::Access::kReadOnly);
    EXPECT_EQ(RaisedBy([&] { database.Execute("INSERT INTO T VALUES (1, '')"); }).description(),
              "attempt to write a readonly database");
}

TEST_F(Store, TakesNothingButSelectsOverItsTablesWhenOpenedForThem) {
    Create().ExecuteScript("INSERT INTO T VALUES (1, 'a'), (2, 'b'); CREATE VIEW V AS SELECT Number FROM T");
    const Database database = Open(Database::Access::kSelect);
    for (const char* sql :
         {"SELECT upper(Name) FROM T ORDER BY Number DESC", "SELECT count(*) FROM V JOIN T USING (Number)",
          "WITH N(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM N WHERE i < 3) SELECT count(*) FROM N",
          "SELECT name FROM sqlite_schema", "VALUES (1)"})
        EXPECT_TRUE(database.Query(sql).Next()) << sql;

    const std::string outside = (folder_.path() / "outside").string();
    const std::pair<std::string, std::string> cases[] = {
        {"VACUUM INTO '" + outside + "'", "the statement is no SELECT"},
        {"VACUUM", "the statement is no SELECT"},
        {"EXPLAIN SELECT 1", "the statement is no SELECT"},
        {"ATTACH '" + outside + "' AS a", "not authorized"},
        {"PRAGMA writable_schema=1", "not authorized"},
        {"PRAGMA table_info(T)", "not authorized"},
        {"INSERT INTO T VALUES (3, '') RETURNING Number", "not authorized"},
        {"DELETE FROM T", "not authorized"},
        {"CREATE TEMP TABLE N (x)", "not authorized"},
        {"CREATE VIRTUAL TABLE temp.N USING fts5(x)", "not authorized"},
        {"BEGIN", "not authorized"},
        {"SAVEPOINT s", "not authorized"},
        {"ANALYZE", "not authorized"},
        {"REINDEX", "the statement is no SELECT"},
        {"DETACH main", "not authorized"},
        {"SELECT load_extension('" + outside + "')", "not authorized to use function: load_extension"},
        {"SELECT fts3_tokenizer('simple')", "not authorized to use function: fts3_tokenizer"},
        {"SELECT * FROM pragma_database_list", "not authorized"},
        {"SELECT count(*) FROM PRAGMA_Table_Info('T')", "not authorized"},
        {"SELECT * FROM json_each('[1]')", "vtable constructor failed: json_each"},
        {"SELECT 1 FROM T WHERE 1 IN (SELECT pageno FROM dbstat)", "vtable constructor failed: dbstat"},
    };
    for (const auto& [sql, description] : cases) {
        EXPECT_EQ(RaisedBy([&, &text = sql] { database.Check(text); }).description(), description) << sql;
        EXPECT_EQ(RaisedBy([&, &text = sql] { database.Query(text).Next(); }).description(), description);
    }
    EXPECT_FALSE(folder_.Has("outside"));
}

TEST_F(Store, EndsAQueryThatGivesNoRowAsSoonAsTheUserWants) {
    Create().Execute("INSERT INTO T VALUES (1, 'a')");
    Database database = Open(Database::Access::kSelect);
    int asked = 0;
    database.EndWhen([&asked] { return ++asked >= 3; });
    for (const char* sql : {"WITH N(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM N) SELECT max(i) FROM N",
                            "WITH N(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM N) SELECT a.i FROM N a, N b "
                            "WHERE a.i + b.i < 0 ORDER BY 1"}) {
        asked = 0;
        EXPECT_THROW(database.Query(sql).Next(), Interrupted) << sql;
        EXPECT_EQ(asked, 3);
    }
    database.EndWhen({});
    EXPECT_EQ(Single(database, "Name"), "a") << "what is asked later is answered";
}

TEST_F(Store, UndoesTheFailingStatementOfAGroupAlone) {
    {
        Database database = Create();
        database.Execute("CREATE UNIQUE INDEX OneName ON T (Name)");
        Command insert = database.Prepare("INSERT INTO T VALUES (?1, ?2)");
        database.Begin();
        for (const char* number : {"1", "2"})
            insert.Execute(std::array<std::string, 2>{number, number});
        EXPECT_EQ(RaisedBy([&] {
                      insert.Execute(std::array<std::string, 2>{"3", "2"});
                  }).description(),
                  "UNIQUE constraint failed: T.Name");
        insert.Execute(std::array<std::string, 2>{"4", "4"});
        EXPECT_EQ(RaisedBy([&] { Open().Query("SELECT * FROM T").Next(); }).description(),
                  "database is locked");
        database.Complete();
        EXPECT_EQ(Single(Open(), "group_concat(Number)"), "1,2,4");
        database.Begin();
        insert.Execute(std::array<std::string, 2>{"5", "5"});
    }
    EXPECT_EQ(Single(Open(), "group_concat(Number)"), "1,2,4");
}

// Inserts rows, grouped or not, into a file that may not grow beyond some pages; the number of rows that it
// ends with.
std::string RowsOnAFullDisk(const std::filesystem::path& path, bool grouped) {
    Database database(path, "full", Database::Access::kCreate);
    database.ExecuteScript("CREATE TABLE T (Number INTEGER, Name TEXT); PRAGMA max_page_count=20");
    Command insert = database.Prepare("INSERT INTO T VALUES (?1, ?2)");
    if (grouped) database.Begin();
    bool failed = false;
    for (int i = 0; i < 1000 && !failed; ++i) {
        try {
            insert.Execute(std::array<std::string, 2>{std::to_string(i), std::string(2000, 'x')});
        } catch (const Error& error) {
            EXPECT_EQ(error.number(), errors::kDiskFull);
            EXPECT_EQ(error.description(), "Disk full");
            EXPECT_EQ(error.detail(), "full: database or disk is full");
            failed = true;
        }
    }
    EXPECT_TRUE(failed);
    database.Complete();
    Rows rows = Database(path, "full").Query("SELECT count(*) || ' to ' || max(Number) AS Result FROM T");
    rows.Next();
    return rows.Text("Result");
}

TEST_F(Store, LeavesOnAFullDiskWhatStatementsOneByOneLeave) {
    const std::string singly = RowsOnAFullDisk(folder_.path() / "singly", false);
    EXPECT_EQ(RowsOnAFullDisk(folder_.path() / "grouped", true), singly);
    EXPECT_TRUE(singly.ends_with(std::to_string(std::stoi(singly) - 1))) << singly;
}

TEST_F(Store, CompactsIntoANewFile) {
    {
        Database database = Create();
        database.Begin();
        for (int i = 0; i < 200; ++i) {
            database.Execute("INSERT INTO T VALUES (" + std::to_string(i) + ", hex(zeroblob(1000)))");
        }
        database.Execute("DELETE FROM T WHERE Number > 9");
        database.Complete();
    }
    const std::string before = folder_.Read("Databases/Data.mdb");
    const std::string copy = path_ + "_New.mdb";
    Database::Compact(files_.Resolve(path_), path_, files_.Resolve(copy));
    EXPECT_LT(files_.Size(copy), files_.Size(path_) / 5);
    EXPECT_EQ(folder_.Read("Databases/Data.mdb"), before);
    EXPECT_EQ(Single(Database(files_.Resolve(copy), copy), "count(*) || sum(length(Name))"), "1020000");
    EXPECT_EQ(RaisedBy([&] {
                  Database::Compact(files_.Resolve(path_), path_, files_.Resolve(copy));
              }).description(),
              "output file already exists");
}

TEST_F(Store, CopiesOverTheLeftoversOfAKilledProgram) {
    Create();
    for (const char* end : {"-journal", "-wal", "-shm"})
        folder_.Write(std::string("Databases/Copy.mdb") + end, "left behind");
    const std::string copy = files_.Path(R"(Databases\Copy.mdb)");
    CopyDatabase(files_, path_, copy);
    EXPECT_EQ(folder_.Read("Databases/Copy.mdb"), folder_.Read("Databases/Data.mdb"));
    EXPECT_EQ(files_.List(files_.Path("Databases"), "Copy.mdb", ""), std::vector<std::string>{"Copy.mdb"});
    EXPECT_EQ(RaisedBy([&] { CopyDatabase(files_, path_ + "x", copy); }).number(), errors::kFileNotFound);
}

TEST_F(Store, PutsADatabaseInThePlaceOfAnotherOnlyWhenNobodyUsesIt) {
    Create().ExecuteScript("PRAGMA journal_mode=WAL; INSERT INTO T VALUES (1, 'old')");
    const std::string copy = files_.Path(R"(Databases\Copy.mdb)");
    Database::Compact(files_.Resolve(path_), path_, files_.Resolve(copy));
    Database(files_.Resolve(copy), copy).Execute("UPDATE T SET Name='new'");
    {
        Database reader = Open();
        Rows rows = reader.Query("SELECT * FROM T");
        ASSERT_TRUE(rows.Next());
        EXPECT_EQ(RaisedBy([&] { RequireUnused(files_, path_); }).description(), "database is locked");
    }
    RequireUnused(files_, path_);
    ReplaceDatabase(files_, copy, path_);
    EXPECT_EQ(Single(Open(), "Name"), "new");
    EXPECT_FALSE(files_.Exists(copy));
}

TEST_F(Store, MakesFilesForTheirOwnerAlone) {
    const mode_t before = umask(0277);
    Database database = Create();
    const std::string copy = files_.Path(R"(Databases\Copy.mdb)");
    folder_.Write("Databases/Copy.mdb.partial", "of another mode, left behind");
    CopyDatabase(files_, path_, copy);
    Database::Compact(files_.Resolve(path_), path_, files_.Resolve(path_ + "_New.mdb"));
    database.ExecuteScript("BEGIN; INSERT INTO T VALUES (1, '')");
    umask(before);
    for (const std::string& path : {path_, path_ + "-journal", path_ + "_New.mdb", copy}) {
        EXPECT_EQ(std::filesystem::status(files_.Resolve(path)).permissions(), std::filesystem::perms{0600})
            << path;
    }
}

TEST_F(Store, APipeInThePlaceOfADatabaseIsRefusedAtOnce) {
    ASSERT_EQ(mkfifo(files_.Resolve(path_).c_str(), 0600), 0);
    for (const auto access : {Database::Access::kSelect, Database::Access::kReadWrite}) {
        const Error error = RaisedBy([&] { Database(files_.Resolve(path_), path_, access); });
        EXPECT_EQ(error.detail(), path_ + ": not an ordinary file");
    }
}

TEST_F(Store, CutsLongReasonsShort) {
    Database database = Create();
    const Error error = RaisedBy([&] { database.Execute("DELETE FROM " + std::string(100'000, 'x')); });
    EXPECT_EQ(error.description(), "no such table: " + std::string(182, 'x') + "...");
    EXPECT_EQ(error.detail(), path_ + ": " + error.description());
}

TEST_F(Store, RemovesADatabaseWithItsLeftoversEvenWhenItIsDamaged) {
    folder_.Write("Databases/Data.mdb", "damaged");
    folder_.Write("Databases/Data.mdb-journal", "left behind");
    RemoveDatabase(files_, path_);
    EXPECT_TRUE(files_.List(files_.Path("Databases"), "Data.mdb", "").empty());
    EXPECT_EQ(RaisedBy([&] { RemoveDatabase(files_, path_); }).number(), errors::kFileNotFound);
}

}  // namespace
}  // namespace zorvel
