// One SQLite database file: its connection, its prepared statements and its transactions.
#pragma once

#include <sqlite3.h>

#include <array>
#include <chrono>
#include <cstdint>
#include <map>
#include <memory>
#include <string>

#include "handset/coredll/cedb/engine/status.h"

namespace cedb {

// A statement in use: bound, stepped, and reset when it goes out of scope, so that no lock outlives it.
class CQuery {
  public:
    CQuery(sqlite3* database, sqlite3_stmt* statement) : database_(database), statement_(statement) {}
    ~CQuery();
    CQuery(const CQuery&) = delete;
    CQuery& operator=(const CQuery&) = delete;

    CQuery& Bind(std::int64_t number);
    CQuery& Blob(const std::string& bytes);  // `bytes` must live as long as the query

    // Steps once: Ok = a row, NotFound = no (further) row.
    [[nodiscard]] Status Row();
    // Runs a statement whose rows do not matter.
    [[nodiscard]] Status Run();

    std::int64_t Number(int column) const { return sqlite3_column_int64(statement_, column); }
    std::string Bytes(int column) const;

  private:
    sqlite3* database_;
    sqlite3_stmt* statement_;
    int next_ = 1;
    int error_ = SQLITE_OK;
};

// What every commit changes in the file, whichever process makes it.
using FileStamp = std::array<std::uint8_t, 16>;

// Used by one thread at a time.
class CSqliteConnection {
  public:
    CSqliteConnection() = default;
    ~CSqliteConnection();
    CSqliteConnection(const CSqliteConnection&) = delete;
    CSqliteConnection& operator=(const CSqliteConnection&) = delete;

    // `path` in UTF-8. With `create` the file must not exist yet.
    [[nodiscard]] Status Open(const std::string& path, bool create);
    // Statements without parameters or results.
    [[nodiscard]] Status Execute(const char* sql);
    // In bytes; within a transaction, so that nobody is changing it.
    [[nodiscard]] Status FileSize(std::int64_t* size);
    // Takes no lock. A stamp that is the same as one taken within a transaction says that the file still
    // holds what it held then: a commit changes it before it counts.
    [[nodiscard]] Status ReadStamp(FileStamp* stamp);
    // `sql` is a literal: the prepared statement is kept under its address.
    CQuery Prepare(const char* sql);
    bool InTransaction() const;

  private:
    struct Closer {
        void operator()(sqlite3* database) const { sqlite3_close_v2(database); }
    };
    [[nodiscard]] Status File(sqlite3_file** file);

    std::chrono::steady_clock::time_point waitsSince_;  // for a lock that somebody else has
    std::unique_ptr<sqlite3, Closer> database_;
    std::map<const char*, sqlite3_stmt*> statements_;
};

// Undone unless committed. One inside another is a part of it: it can be undone by itself, and is on the disk
// only with the whole.
class CTransaction {
  public:
    enum class Kind { Read, Write };
    explicit CTransaction(CSqliteConnection& connection) : connection_(connection) {}
    ~CTransaction();
    CTransaction(const CTransaction&) = delete;
    CTransaction& operator=(const CTransaction&) = delete;

    [[nodiscard]] Status Begin(Kind kind);
    // What was written is on the disk when this returns Ok, or in the transaction around it.
    [[nodiscard]] Status Commit();

  private:
    CSqliteConnection& connection_;
    bool open_ = false;
    bool inner_ = false;
};

}  // namespace cedb
