#include "platform/store.h"

#include <SQLiteCpp/SQLiteCpp.h>
#include <fcntl.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <type_traits>
#include <utility>
#include <vector>

#include "platform/code_page.h"
#include "platform/error.h"

namespace zorvel {
namespace {

// How long a statement waits for another program to finish with the file.
constexpr int kBusyMilliseconds = 200;

// A group is written when it has reached either size: large enough that the writes hardly count, small enough
// that it takes little memory and that a program killed in the middle of it loses little.
constexpr std::size_t kGroupStatements = 50'000;
constexpr std::size_t kGroupBytes = 8'000'000;

// Keeps every other program out of the file, readers included, whatever way of writing it is set to.
constexpr const char* kLockOut = "PRAGMA locking_mode=EXCLUSIVE; BEGIN EXCLUSIVE; COMMIT";

// The part of an engine's error code that is the same for all its variants.
constexpr int kPrimaryCode = 0xFF;

Error StoreError(const std::string& name, std::string_view reason) {
    const std::string text = CutForMessage(reason);
    return Error(errors::kStore, text).With(name + ": " + text);
}

// True for what a full disk raises: the engine knows it as such only where it lacks space, not where a quota
// or a limit of the file's size keeps it from growing.
bool IsFullDisk(int code, int system_error) {
    const bool lacks_room = system_error == ENOSPC || system_error == EDQUOT || system_error == EFBIG;
    return code == SQLITE_FULL || ((code == SQLITE_IOERR || code == SQLITE_CANTOPEN) && lacks_room);
}

// The store's error for what the engine raised; `system_error` is the system's reason for a failed access.
Error EngineError(const std::string& name, const SQLite::Exception& error, int system_error) {
    const std::string reason = FromUtf8(error.what());
    if (IsFullDisk(error.getErrorCode() & kPrimaryCode, system_error))
        return Error(errors::kDiskFull).With(name + ": " + reason);
    return StoreError(name, reason);
}

// Runs `open`; what the engine raises becomes the store's error.
template <typename Open>
auto GuardedOpening(const std::string& name, Open open) {
    try {
        return open();
    } catch (const SQLite::Exception& error) {
        throw EngineError(name, error, 0);
    }
}

// Makes the empty file `path`, which is an empty database, for its owner alone, whatever the umask. The
// engine gives the files that it keeps beside a database the mode of the database. One that exists stays as
// it is; a failure is the engine's to tell.
void MakeForOwnerAlone(const std::filesystem::path& path) {
    constexpr mode_t kOwnerAlone = S_IRUSR | S_IWUSR;
    const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kOwnerAlone);
    if (file < 0) return;
    ::fchmod(file, kOwnerAlone);
    ::close(file);
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

// What a group has executed so far, kept flat so that it takes the memory of its texts and little more.
class GroupLog {
  public:
    void Add(std::shared_ptr<SQLite::Statement> statement, std::span<const std::string> values) {
        entries_.push_back({std::move(statement), lengths_.size(), texts_.size()});
        for (const std::string& value : values) {
            lengths_.push_back(value.size());
            texts_ += value;
        }
    }
    void RemoveLast() {
        lengths_.resize(entries_.back().first_length);
        texts_.resize(entries_.back().first_text);
        entries_.pop_back();
    }
    void Clear() {
        entries_.clear();
        lengths_.clear();
        texts_.clear();
    }
    std::size_t size() const { return entries_.size(); }
    bool IsFull() const { return entries_.size() >= kGroupStatements || texts_.size() >= kGroupBytes; }

    SQLite::Statement& StatementAt(std::size_t index) const { return *entries_[index].statement; }
    std::vector<std::string> ValuesAt(std::size_t index) const {
        const std::size_t end =
            index + 1 < entries_.size() ? entries_[index + 1].first_length : lengths_.size();
        std::vector<std::string> values;
        std::size_t at = entries_[index].first_text;
        for (std::size_t i = entries_[index].first_length; i < end; at += lengths_[i++]) {
            values.push_back(texts_.substr(at, lengths_[i]));
        }
        return values;
    }

  private:
    struct Entry {
        std::shared_ptr<SQLite::Statement> statement;
        std::size_t first_length;  // of its values, in lengths_
        std::size_t first_text;    // of its values, in texts_
    };

    std::vector<Entry> entries_;
    std::vector<std::size_t> lengths_;
    std::string texts_;
};

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
        const GroupLog log = std::exchange(log_, {});
        RunRange(log, 0, log.size());
    }

    void RunRange(const GroupLog& log, std::size_t first, std::size_t last) {
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
    bool RunAtOnce(const GroupLog& log, std::size_t first, std::size_t last) {
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
    GroupLog log_;
    std::vector<std::string> converted_;
};

}  // namespace store_detail

using store_detail::Connection;

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

namespace {

// The files that the engine keeps beside a database while it writes, and leaves there when it is killed.
void RemoveRecoveryFiles(const Files& files, std::string_view path) {
    for (const char* suffix : {"-journal", "-wal", "-shm"}) {
        const std::string beside = std::string(path) + suffix;
        if (files.Exists(beside)) files.Remove(beside);
    }
}

}  // namespace

void CopyDatabase(const Files& files, std::string_view from, std::string_view to) {
    const std::string partial = std::string(to) + ".partial";
    try {
        if (files.Exists(partial)) files.Remove(partial);
        MakeForOwnerAlone(files.Resolve(partial));
        files.Copy(from, partial);
        RemoveRecoveryFiles(files, to);
        files.Rename(partial, to);
    } catch (...) {
        if (files.Exists(partial)) files.Remove(partial);
        throw;
    }
}

void RequireUnused(const Files& files, std::string_view path) {
    try {
        SQLite::Database db(files.Resolve(path).string(), SQLite::OPEN_READWRITE, kBusyMilliseconds);
        db.exec(kLockOut);
    } catch (const SQLite::Exception& error) {
        const int code = error.getErrorCode();
        // A file that is no database is nobody's.
        if (code == SQLITE_BUSY || code == SQLITE_LOCKED) throw EngineError(std::string(path), error, 0);
    }
}

void ReplaceDatabase(const Files& files, std::string_view from, std::string_view to) {
    RemoveRecoveryFiles(files, to);
    files.Replace(from, to);
}

void RemoveDatabase(const Files& files, std::string_view path) {
    if (files.Exists(path)) RequireUnused(files, path);
    files.Remove(path);
    RemoveRecoveryFiles(files, path);
}

void RemoveUnfinished(const Files& files, std::string_view path) {
    if (files.Exists(path)) files.Remove(path);
    RemoveRecoveryFiles(files, path);
}

}  // namespace zorvel
