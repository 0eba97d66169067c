// SQLite's connections, statements and transactions in the form that the engine uses.
#include "handset/coredll/cedb/engine/sqlite_connection.h"

namespace cedb {
namespace {

using Clock = std::chrono::steady_clock;

// Another process holds the lock for one commit at a time; a disk that takes longer than this is broken.
constexpr std::chrono::seconds kLockPatience{20};
// SQLite's own waiting looks ever more seldom, in the end every 100 ms: beside a process that makes one
// change after the other, and leaves the lock free for a moment between two of them, it may never get its
// turn.
constexpr int kLockLook_ms = 5;
// The SQLite file format, section 1.3: the change counter, and behind it what else a commit may change.
// SQLite itself goes by these bytes when it looks whether the pages that it keeps are those of the file.
constexpr sqlite3_int64 kStampOffset = 24;

struct ErrorRow {
    int code;
    Status status;
};

// clang-format off
constexpr ErrorRow kErrors[] = {
    {SQLITE_OK,       Status::Ok},
    {SQLITE_DONE,     Status::Ok},
    {SQLITE_ROW,      Status::Ok},
    {SQLITE_NOTADB,   Status::NotAVolume},
    {SQLITE_CORRUPT,  Status::Corrupt},
    // A table or column that ought to be there is not.
    {SQLITE_ERROR,    Status::Corrupt},
    {SQLITE_FULL,     Status::Full},
    {SQLITE_BUSY,     Status::Busy},
    {SQLITE_LOCKED,   Status::Busy},
    {SQLITE_READONLY, Status::AccessDenied},
    {SQLITE_PERM,     Status::AccessDenied},
    {SQLITE_CANTOPEN, Status::AccessDenied},
    {SQLITE_NOMEM,    Status::OutOfMemory},
};
// clang-format on

// Called by SQLite while a lock is taken, `looks` counted from 0 for each wait. Not 0: look again.
int LookAgain(void* since, int looks) {
    auto& began = *static_cast<Clock::time_point*>(since);
    if (looks == 0) began = Clock::now();
    if (Clock::now() - began > kLockPatience) return 0;
    sqlite3_sleep(kLockLook_ms);
    return 1;
}

Status StatusOf(int code) {
    for (const ErrorRow& row : kErrors) {
        if (row.code == (code & 0xFF)) return row.status;
    }
    return Status::Failed;
}

}  // namespace

CQuery::~CQuery() {
    if (statement_ == nullptr) return;
    sqlite3_reset(statement_);
    sqlite3_clear_bindings(statement_);
}

CQuery& CQuery::Bind(std::int64_t number) {
    if (error_ == SQLITE_OK && statement_ != nullptr)
        error_ = sqlite3_bind_int64(statement_, next_++, number);
    return *this;
}

CQuery& CQuery::Blob(const std::string& bytes) {
    if (error_ == SQLITE_OK && statement_ != nullptr) {
        error_ = sqlite3_bind_blob64(statement_, next_++, bytes.data(), bytes.size(), SQLITE_STATIC);
    }
    return *this;
}

Status CQuery::Row() {
    if (error_ != SQLITE_OK) return StatusOf(error_);
    if (statement_ == nullptr) return StatusOf(sqlite3_errcode(database_));
    const int code = sqlite3_step(statement_);
    return code == SQLITE_DONE ? Status::NotFound : StatusOf(code);
}

Status CQuery::Run() {
    const Status status = Row();
    return status == Status::NotFound ? Status::Ok : status;
}

std::string CQuery::Bytes(int column) const {
    const void* bytes = sqlite3_column_blob(statement_, column);
    const int size = sqlite3_column_bytes(statement_, column);
    return bytes == nullptr ? std::string()
                            : std::string(static_cast<const char*>(bytes), static_cast<std::size_t>(size));
}

CSqliteConnection::~CSqliteConnection() {
    for (const auto& [sql, statement] : statements_) sqlite3_finalize(statement);
}

Status CSqliteConnection::Open(const std::string& path, bool create) {
    sqlite3* database = nullptr;
    const int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX | (create ? SQLITE_OPEN_CREATE : 0);
    const int code = sqlite3_open_v2(path.c_str(), &database, flags, nullptr);
    database_.reset(database);
    if (code != SQLITE_OK) return StatusOf(code);
    sqlite3_busy_handler(database, LookAgain, &waitsSince_);
    sqlite3_db_config(database, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    // The journal is cut to nothing and flushed at each commit (TRUNCATE, FULL): the moment at which a
    // change counts is itself on the disk, so that neither a killed process nor a lost power supply takes
    // back a change whose call has returned.
    return Execute(
        "PRAGMA journal_mode=TRUNCATE; PRAGMA synchronous=FULL; PRAGMA trusted_schema=OFF;"
        "PRAGMA cell_size_check=ON");
}

Status CSqliteConnection::Execute(const char* sql) {
    return StatusOf(sqlite3_exec(database_.get(), sql, nullptr, nullptr, nullptr));
}

Status CSqliteConnection::File(sqlite3_file** file) {
    return StatusOf(sqlite3_file_control(database_.get(), "main", SQLITE_FCNTL_FILE_POINTER, file));
}

Status CSqliteConnection::FileSize(std::int64_t* size) {
    sqlite3_file* file = nullptr;
    Status status = File(&file);
    if (status != Status::Ok) return status;
    sqlite3_int64 bytes = 0;
    status = StatusOf(file->pMethods->xFileSize(file, &bytes));
    *size = bytes;
    return status;
}

Status CSqliteConnection::ReadStamp(FileStamp* stamp) {
    sqlite3_file* file = nullptr;
    const Status status = File(&file);
    if (status != Status::Ok) return status;
    return StatusOf(
        file->pMethods->xRead(file, stamp->data(), static_cast<int>(stamp->size()), kStampOffset));
}

CQuery CSqliteConnection::Prepare(const char* sql) {
    sqlite3_stmt*& statement = statements_[sql];
    if (statement == nullptr) {
        sqlite3_prepare_v3(database_.get(), sql, -1, SQLITE_PREPARE_PERSISTENT, &statement, nullptr);
    }
    return CQuery(database_.get(), statement);
}

bool CSqliteConnection::InTransaction() const {
    return sqlite3_get_autocommit(database_.get()) == 0;
}

CTransaction::~CTransaction() {
    if (!open_) return;
    // The transaction only read, or it is to be undone; either way there is nobody to tell about a failure.
    if (!inner_) {
        (void)connection_.Prepare("ROLLBACK").Run();
        return;
    }
    (void)connection_.Prepare("ROLLBACK TO part").Run();
    (void)connection_.Prepare("RELEASE part").Run();
}

Status CTransaction::Begin(Kind kind) {
    inner_ = connection_.InTransaction();
    const char* const outer = kind == Kind::Read ? "BEGIN" : "BEGIN IMMEDIATE";
    const Status status =
        inner_ ? connection_.Prepare("SAVEPOINT part").Run() : connection_.Prepare(outer).Run();
    open_ = status == Status::Ok;
    return status;
}

Status CTransaction::Commit() {
    const Status status = connection_.Prepare(inner_ ? "RELEASE part" : "COMMIT").Run();
    // A commit that failed for want of a lock or of room leaves the transaction open, to be undone.
    if (status == Status::Ok) open_ = false;
    return status;
}

}  // namespace cedb
