#include "platform/store.h"

#include <SQLiteCpp/SQLiteCpp.h>
#include <fcntl.h>
#include <sqlite3.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <type_traits>
#include <utility>
#include <vector>

#include "platform/code_page.h"
#include "platform/error.h"
#include "platform/statement_group.h"
#include "platform/store_engine.h"

namespace zorvel {
namespace {

using store_detail::EngineError;
using store_detail::kBusyMilliseconds;
using store_detail::StoreError;

// Runs `open`; what the engine raises becomes the store's error.
template <typename Open>
auto GuardedOpening(const std::string& name, Open open) {
    try {
        return open();
    } catch (const SQLite::Exception& error) {
        throw EngineError(name, error, 0);
    }
}

// Undoes what a killed program left unfinished in a database, which one that is opened for reading cannot. A
// failure is told by the reading.
void UndoUnfinished(const std::filesystem::path& path) {
    std::error_code ignored;
    if (!std::filesystem::exists(path.string() + "-journal", ignored)) return;
    try {
        SQLite::Database(path.string(), SQLite::OPEN_READWRITE, kBusyMilliseconds)
            .execAndGet("SELECT count(*) FROM sqlite_master");
    } catch (const SQLite::Exception&) {
        return;
    }
}

// How many steps the engine takes between two questions whether to end. A step is short unless it works on a
// value of megabytes.
constexpr int kStepsBetweenQuestions = 100;

int Ask(void* ask) {
    return (*static_cast<const AskInterrupted*>(ask))() ? 1 : 0;
}

// Raises an error for a pipe or a device in the place of a database, which the engine would wait for.
void RequireFile(const std::filesystem::path& path, const std::string& name) {
    std::error_code ignored;
    const std::filesystem::file_status status = std::filesystem::status(path, ignored);
    if (std::filesystem::is_other(status)) throw StoreError(name, "not an ordinary file");
}

int FlagsOf(Database::Access access) {
    switch (access) {
        case Database::Access::kSelect:
        case Database::Access::kReadOnly:
            return SQLite::OPEN_READONLY;
        case Database::Access::kReadWrite:
            return SQLite::OPEN_READWRITE;
        default:
            return SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE;
    }
}

// Functions that reach beyond the file.
constexpr std::array<std::string_view, 2> kDangerous = {"load_extension", "fts3_tokenizer"};

// Allows a connection what a SELECT over the tables of its file needs. The tables that the engine makes
// itself, as "pragma_table_info" is, would need more.
int AllowSelects(void* /*unused*/, int action, const char* /*first*/, const char* second,
                 const char* /*database*/, const char* /*cause*/) {
    switch (action) {
        case SQLITE_SELECT:
        case SQLITE_READ:
        case SQLITE_RECURSIVE:
            return SQLITE_OK;
        case SQLITE_FUNCTION:
            return std::find(kDangerous.begin(), kDangerous.end(), second) == kDangerous.end() ? SQLITE_OK
                                                                                               : SQLITE_DENY;
        default:
            return SQLITE_DENY;
    }
}

// The engine does not ask about VACUUM until it runs, nor about EXPLAIN at all.
bool IsSelect(sqlite3_stmt* statement) {
    return sqlite3_column_count(statement) > 0 && sqlite3_stmt_isexplain(statement) == 0;
}

// True for a text that is the same in UTF-8.
bool IsPlain(std::string_view text) {
    bool plain = true;
    for (const char character : text)
        plain &= static_cast<unsigned char>(character) < 0x80;
    return plain;
}

}  // namespace

namespace store_detail {

// An open file, with the group that is being gathered for it.
class Connection {
  public:
    Connection(const std::filesystem::path& path, std::string name, Database::Access access)
        : name_(std::move(name)),
          selects_only_(access == Database::Access::kSelect),
          db_(GuardedOpening(name_, [&] {
              RequireFile(path, name_);
              if (access == Database::Access::kCreate) MakeForOwnerAlone(path);
              if (access == Database::Access::kReadOnly || access == Database::Access::kSelect)
                  UndoUnfinished(path);
              return SQLite::Database(path.string(), FlagsOf(access), kBusyMilliseconds);
          })) {
        // The first access reads the file's header and undoes what a killed program left unfinished.
        Guarded([&] { db_.execAndGet("SELECT count(*) FROM sqlite_master"); });
        if (selects_only_) sqlite3_set_authorizer(db_.getHandle(), AllowSelects, nullptr);
    }

    const std::string& name() const { return name_; }
    SQLite::Database& db() { return db_; }

    void EndWhen(AskInterrupted ask) {
        ask_ = std::move(ask);
        sqlite3_progress_handler(db_.getHandle(), ask_ ? kStepsBetweenQuestions : 0, Ask, &ask_);
    }

    // Runs `action`; what the engine raises becomes the store's error, or Interrupted.
    template <typename Action>
    std::invoke_result_t<Action> Guarded(Action action) {
        try {
            return action();
        } catch (const SQLite::Exception& error) {
            if (error.getErrorCode() == SQLITE_INTERRUPT) throw Interrupted{};
            throw EngineError(name_, error, sqlite3_system_errno(db_.getHandle()));
        }
    }

    std::unique_ptr<SQLite::Statement> Prepare(std::string_view sql) {
        if (sql.find('\0') != std::string_view::npos)
            throw StoreError(name_, "the statement holds a NUL character");
        const std::string text = ToUtf8(sql);
        RequireOneStatement(text);
        return Guarded([&] { return std::make_unique<SQLite::Statement>(db_, text); });
    }

    void Run(const std::shared_ptr<SQLite::Statement>& statement, std::span<const std::string> values) {
        if (!grouping_) {
            RunAlone(*statement, values);
            return;
        }
        if (!in_transaction_) {
            Guarded([&] { db_.exec("BEGIN EXCLUSIVE"); });
            in_transaction_ = true;
        }
        log_.Add(statement, values);
        try {
            RunAlone(*statement, values);
        } catch (const Error&) {
            if (!IsRolledBack()) {
                log_.RemoveLast();
                throw;
            }
            RunAgain();
        }
        if (log_.IsFull()) WriteGroup();
    }

    std::optional<std::string> FirstField(SQLite::Statement& statement, std::span<const std::string> values) {
        Bind(statement, values);
        const Reset reset(statement);
        return Guarded([&]() -> std::optional<std::string> {
            if (!statement.executeStep()) return std::nullopt;
            return FromUtf8(statement.getColumn(0).getString());
        });
    }

    void Begin() { grouping_ = true; }

    void Complete() {
        grouping_ = false;
        WriteGroup();
    }

  private:
    // Makes a statement ready for its next execution, however this one ends.
    class Reset {
      public:
        explicit Reset(SQLite::Statement& statement) : statement_(statement) {}
        ~Reset() { statement_.tryReset(); }
        Reset(const Reset&) = delete;
        Reset& operator=(const Reset&) = delete;

      private:
        SQLite::Statement& statement_;
    };

    void RequireOneStatement(const std::string& text) {
        sqlite3_stmt* first = nullptr;
        const char* tail = nullptr;
        const int code = sqlite3_prepare_v2(db_.getHandle(), text.c_str(), static_cast<int>(text.size()) + 1,
                                            &first, &tail);
        const std::unique_ptr<sqlite3_stmt, decltype(&sqlite3_finalize)> owner(first, sqlite3_finalize);
        if (code != SQLITE_OK) throw StoreError(name_, FromUtf8(sqlite3_errmsg(db_.getHandle())));
        if (first == nullptr) throw StoreError(name_, "the text holds no statement");
        if (std::string_view(tail).find_first_not_of("; \t\r\n") != std::string_view::npos) {
            throw StoreError(name_, "the text goes on after its first statement");
        }
        if (selects_only_ && !IsSelect(first)) throw StoreError(name_, "the statement is no SELECT");
    }

    void Bind(SQLite::Statement& statement, std::span<const std::string> values) {
        converted_.resize(std::max(converted_.size(), values.size()));
        for (std::size_t i = 0; i < values.size(); ++i) {
            const bool plain = IsPlain(values[i]);
            if (!plain) converted_[i] = ToUtf8(values[i]);
            const std::string& text = plain ? values[i] : converted_[i];
            Guarded([&] { statement.bindNoCopy(static_cast<int>(i) + 1, text); });
        }
    }

    void RunAlone(SQLite::Statement& statement, std::span<const std::string> values) {
        Bind(statement, values);
        const Reset reset(statement);
        Guarded([&] { statement.exec(); });
    }

    // True when the engine has given up the whole group with the statement that failed, as it does on a full
    // disk.
    bool IsRolledBack() { return sqlite3_get_autocommit(db_.getHandle()) != 0; }

    // Executes a group that was rolled back again, with the outcome of its statements one by one: by halves,
    // since a write for every statement would take minutes.
    void RunAgain() {
        in_transaction_ = false;
        const StatementGroup log = std::exchange(log_, {});
        RunRange(log, 0, log.size());
    }

    void RunRange(const StatementGroup& log, std::size_t first, std::size_t last) {
        if (last - first <= 1) {
            if (first < last) RunAlone(log.StatementAt(first), log.ValuesAt(first));
            return;
        }
        const std::size_t middle = first + (last - first) / 2;
        for (const auto& [from, to] : {std::pair{first, middle}, std::pair{middle, last}}) {
            if (!RunAtOnce(log, from, to)) RunRange(log, from, to);
        }
    }

    // False when the statements cannot be written as one group; none of them is then.
    bool RunAtOnce(const StatementGroup& log, std::size_t first, std::size_t last) {
        Guarded([&] { db_.exec("BEGIN EXCLUSIVE"); });
        try {
            for (std::size_t i = first; i < last; ++i)
                RunAlone(log.StatementAt(i), log.ValuesAt(i));
            Guarded([&] { db_.exec("COMMIT"); });
            return true;
        } catch (const Error&) {
            if (!IsRolledBack()) Guarded([&] { db_.exec("ROLLBACK"); });
            return false;
        }
    }

    void WriteGroup() {
        if (!in_transaction_) return;
        try {
            db_.exec("COMMIT");
        } catch (const SQLite::Exception&) {
            if (!IsRolledBack()) Guarded([&] { db_.exec("ROLLBACK"); });
            RunAgain();
        }
        in_transaction_ = false;
        log_.Clear();
    }

    std::string name_;
    bool selects_only_;
    AskInterrupted ask_;
    SQLite::Database db_;
    bool grouping_ = false;
    bool in_transaction_ = false;
    StatementGroup log_;
    std::vector<std::string> converted_;
};

}  // namespace store_detail

using store_detail::Connection;
using store_detail::kLockOut;
using store_detail::MakeForOwnerAlone;

Rows::Rows(std::shared_ptr<Connection> connection, std::unique_ptr<SQLite::Statement> statement)
    : connection_(std::move(connection)), statement_(std::move(statement)) {}
Rows::Rows(Rows&&) noexcept = default;
Rows& Rows::operator=(Rows&&) noexcept = default;
Rows::~Rows() = default;

bool Rows::Next() {
    return connection_->Guarded([&] { return statement_->executeStep(); });
}

std::string Rows::Text(const std::string& column) const {
    return connection_->Guarded([&] { return FromUtf8(statement_->getColumn(column.c_str()).getString()); });
}

std::vector<std::string> Rows::Columns() const {
    return connection_->Guarded([&] {
        const int count = statement_->getColumnCount();
        std::vector<std::string> names;
        names.reserve(static_cast<std::size_t>(count));
        for (int i = 0; i < count; ++i)
            names.push_back(FromUtf8(statement_->getColumnName(i)));
        return names;
    });
}

std::int64_t Rows::Number(std::size_t column) const {
    return connection_->Guarded(
        [&]() -> std::int64_t { return statement_->getColumn(static_cast<int>(column)).getInt64(); });
}

void Rows::Read(std::size_t column, std::string& text) const {
    const SQLite::Column field =
        connection_->Guarded([&] { return statement_->getColumn(static_cast<int>(column)); });
    const std::string_view bytes(field.getText(), static_cast<std::size_t>(field.getBytes()));
    if (IsPlain(bytes)) {
        text.assign(bytes);
    } else {
        text = FromUtf8(bytes);
    }
}

Command::Command(std::shared_ptr<Connection> connection, std::shared_ptr<SQLite::Statement> statement)
    : connection_(std::move(connection)), statement_(std::move(statement)) {}
Command::Command(Command&&) noexcept = default;
Command& Command::operator=(Command&&) noexcept = default;
Command::~Command() = default;

void Command::Execute(std::span<const std::string> values) {
    connection_->Run(statement_, values);
}

std::optional<std::string> Command::FirstField(std::span<const std::string> values) {
    return connection_->FirstField(*statement_, values);
}

Database::Database(const std::filesystem::path& path, std::string name, Access access)
    : connection_(std::make_shared<Connection>(path, std::move(name), access)) {}
Database::Database(Database&&) noexcept = default;
Database& Database::operator=(Database&&) noexcept = default;
Database::~Database() = default;

void Database::EndWhen(AskInterrupted ask) {
    connection_->EndWhen(std::move(ask));
}

void Database::Execute(std::string_view sql) {
    connection_->Run(connection_->Prepare(sql), {});
}

void Database::Check(std::string_view sql) const {
    connection_->Prepare(sql);
}

Rows Database::Query(std::string_view sql) const {
    return {connection_, connection_->Prepare(sql)};
}

Command Database::Prepare(std::string_view sql) const {
    return {connection_, connection_->Prepare(sql)};
}

void Database::ExecuteScript(std::string_view sql) {
    connection_->Guarded([&] { connection_->db().exec(ToUtf8(sql)); });
}

void Database::Begin() {
    connection_->Begin();
}

void Database::Complete() {
    connection_->Complete();
}

void Database::Compact(const std::filesystem::path& from, const std::string& name,
                       const std::filesystem::path& to) {
    Connection source(from, name, Access::kReadWrite);
    source.Guarded([&] {
        // Until the copy is whole: what others wrote meanwhile would not be in it.
        source.db().exec(kLockOut);
        MakeForOwnerAlone(to);
        SQLite::Statement vacuum(source.db(), "VACUUM INTO ?1");
        vacuum.bind(1, to.string());
        vacuum.exec();
    });
    const int copy = ::open(to.c_str(), O_RDONLY | O_CLOEXEC);
    if (copy < 0) throw FileError(errno, name);
    const int result = ::fsync(copy);
    const int error = errno;
    ::close(copy);
    if (result != 0) throw FileError(error, name);
}

}  // namespace zorvel
