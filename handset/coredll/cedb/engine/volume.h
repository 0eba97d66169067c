// A volume: one file that holds any number of databases, their records and the records' sort keys.
//
// Every call is one transaction of its own: when it returns Ok, what it did is on the disk; when it does not,
// nothing has changed. Any number of processes may have the same file open; within one process a Volume is
// used by one thread at a time.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "handset/coredll/cedb/engine/property.h"
#include "handset/coredll/cedb/engine/sort_order.h"
#include "handset/coredll/cedb/engine/sqlite_connection.h"

namespace cedb {

constexpr std::size_t kVolumeHeader_bytes = 100;
constexpr std::size_t kMaximumDatabaseName = 127;  // UTF-16 units

struct DatabaseInfo {
    Oid oid = 0;
    std::u16string name;
    std::uint32_t type = 0;
    std::uint32_t flags = 0;
    std::vector<SortOrder> orders;
};

using VolumeId = std::array<std::uint8_t, 16>;

// Whether a file that begins with these bytes is a volume as far as they can tell; says nothing of the rest.
[[nodiscard]] bool LooksLikeVolume(const std::string& header);

class CVolume {
  public:
    // `collator` must outlive the volume.
    explicit CVolume(const CCollator& collator) : collator_(collator) {}

    // Makes the file, which must not exist, and closes it again. A process that is killed meanwhile leaves a
    // file that is no volume: make it under another name and rename it. `path` in UTF-8.
    [[nodiscard]] static Status Create(const std::string& path, std::uint32_t lcid,
                                       const CCollator& collator);
    // The file must be one that LooksLikeVolume.
    [[nodiscard]] Status Open(const std::string& path);
    // Takes away the journal file, unless another process is using it.
    void Settle();

    const VolumeId& Id() const { return id_; }

    // The language that texts are sorted in. A change sorts every database anew.
    [[nodiscard]] Status Locale(std::uint32_t* lcid);
    [[nodiscard]] Status ChangeLocale(std::uint32_t lcid);

    // `info.oid` is ignored. DuplicateName when the name exists in any letter case (A to Z).
    [[nodiscard]] Status CreateDatabase(const DatabaseInfo& info, Oid* oid);
    [[nodiscard]] Status FindDatabase(const std::u16string& name, DatabaseInfo* info);
    [[nodiscard]] Status FindDatabase(Oid oid, DatabaseInfo* info);
    [[nodiscard]] Status ListDatabases(std::vector<DatabaseInfo>* databases);
    [[nodiscard]] Status DeleteDatabase(Oid oid);
    [[nodiscard]] Status CountRecords(Oid database, std::uint32_t* count);

    // Records. InvalidArgument also for a record that a sort order refuses (kSortNonNull).
    [[nodiscard]] Status InsertRecord(const DatabaseInfo& database,
                                      const std::vector<PropertyChange>& changes, Oid* oid);
    [[nodiscard]] Status UpdateRecord(const DatabaseInfo& database, Oid oid,
                                      const std::vector<PropertyChange>& changes);
    [[nodiscard]] Status DeleteRecord(const DatabaseInfo& database, Oid oid);

    // For cursors.
    CSqliteConnection& Connection() { return connection_; }
    const CCollator& Sorting() const { return collator_; }
    // Inside a transaction.
    [[nodiscard]] Status ReadLocale(std::uint32_t* lcid);
    [[nodiscard]] Status ReadRecord(Oid database, Oid oid, Record* record);
    // The record as it lies in the file; DecodeRecord makes it one.
    [[nodiscard]] Status ReadEncoded(Oid database, Oid oid, std::string* bytes);

  private:
    [[nodiscard]] Status CheckContents();
    [[nodiscard]] Status CheckSchema();
    [[nodiscard]] Status CheckSize();
    [[nodiscard]] Status ReadIdentity();
    [[nodiscard]] Status TakeOid(Oid* oid);
    [[nodiscard]] Status WriteKeys(const DatabaseInfo& database, Oid oid, const Record& record,
                                   std::uint32_t lcid);
    [[nodiscard]] Status RemoveKeys(const DatabaseInfo& database, Oid oid, const Record& record,
                                    std::uint32_t lcid);
    [[nodiscard]] Status SortAnew(std::uint32_t lcid);
    [[nodiscard]] Status SortDatabaseAnew(const DatabaseInfo& database, std::uint32_t lcid);
    [[nodiscard]] Status ReadDatabases(std::vector<DatabaseInfo>* databases);

    const CCollator& collator_;
    CSqliteConnection connection_;
    VolumeId id_{};
};

}  // namespace cedb
