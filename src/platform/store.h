// The relational store: one database a file, opened where it lies. Text is of the code page on this side and
// UTF-8 in the file. A full disk is error 61; every other failure is error 0x80004005 with the engine's
// reason as its description. The detail names the file. Files that the store makes are their owner's alone.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/interruption.h"

namespace SQLite {
class Statement;
}

namespace zorvel {

namespace store_detail {
class Connection;
}

// The rows of a query, one after the other.
class Rows {
  public:
    Rows(Rows&&) noexcept;
    Rows& operator=(Rows&&) noexcept;
    ~Rows();

    // Moves to the next row; false when there is none left. Raises Interrupted (Database::EndWhen).
    bool Next();
    // The field of the current row in `column`; empty for a null. Raises an error when there is no such
    // column.
    std::string Text(const std::string& column) const;

    // The names of the columns.
    std::vector<std::string> Columns() const;
    // The field of the current row in column number `column` (from 0) as a whole number; 0 when it is none.
    std::int64_t Number(std::size_t column) const;
    // Puts the field of the current row in column number `column` (from 0) into `text`; empty for a null.
    void Read(std::size_t column, std::string& text) const;

  private:
    friend class Database;
    Rows(std::shared_ptr<store_detail::Connection> connection, std::unique_ptr<SQLite::Statement> statement);

    std::shared_ptr<store_detail::Connection> connection_;
    std::unique_ptr<SQLite::Statement> statement_;
};

// A statement prepared once, for any number of executions. Its parameters ?1, ?2, ... stand for texts, which
// never take part in the statement itself and are stored whole, NULs included; a column of a number type
// stores a text that is a number as that number.
class Command {
  public:
    Command(Command&&) noexcept;
    Command& operator=(Command&&) noexcept;
    ~Command();

    // Executes the statement. Raises an error when it fails.
    void Execute(std::span<const std::string> values);
    // The first field of the first row, or nothing when there is no row.
    std::optional<std::string> FirstField(std::span<const std::string> values);

  private:
    friend class Database;
    Command(std::shared_ptr<store_detail::Connection> connection,
            std::shared_ptr<SQLite::Statement> statement);

    std::shared_ptr<store_detail::Connection> connection_;
    std::shared_ptr<SQLite::Statement> statement_;
};

class Database {
  public:
    // kSelect is for statements that somebody else wrote: all but SELECTs over the tables of the file are
    // refused when they are prepared, and so are table-valued functions (those of the engine's PRAGMAs among
    // them) and functions that reach beyond the file.
    enum class Access { kSelect, kReadOnly, kReadWrite, kCreate };

    // Opens the database file `path`; `name` is what errors call it. Only kCreate makes a file that does not
    // exist. Raises an error when it is missing, is no database, or is locked by another program.
    Database(const std::filesystem::path& path, std::string name, Access access = Access::kReadWrite);
    Database(Database&&) noexcept;
    Database& operator=(Database&&) noexcept;
    // Closes the file. Statements of a group that was not completed are undone.
    ~Database();

    // Statements end, and raise Interrupted, when `ask` says so; it is asked many times a second while one
    // runs.
    void EndWhen(AskInterrupted ask);

    // Executes one statement that gives no rows. Raises an error when it fails, and, with nothing executed,
    // when the text holds no statement, more than one, or a NUL.
    void Execute(std::string_view sql);
    // Raises the error that Execute would raise for a text that is not one whole, valid statement; executes
    // nothing.
    void Check(std::string_view sql) const;
    // The rows of one SELECT. The file is in use as long as they live.
    Rows Query(std::string_view sql) const;
    // Prepares one statement.
    Command Prepare(std::string_view sql) const;
    // Executes any number of statements.
    void ExecuteScript(std::string_view sql);

    // From here on statements are gathered and written to the file in groups. A statement that fails is
    // undone alone, and those before it stay. Of a group that the disk does not take as a whole, the
    // statements up to the one that fails are written, so that the file holds what it would without groups.
    void Begin();
    // Writes what is gathered and ends the gathering. Raises an error when it cannot be written.
    void Complete();

    // Rewrites a database into the new file `to`, without the space of deleted rows. Raises an error when
    // another program uses the source, or when `to` exists; the source is never changed. Another failure can
    // leave a part of the new file.
    static void Compact(const std::filesystem::path& from, const std::string& name,
                        const std::filesystem::path& to);

  private:
    std::shared_ptr<store_detail::Connection> connection_;
};

}  // namespace zorvel
