// How an operation of the database engine ended.
#pragma once

namespace cedb {

enum class Status {
    Ok,
    NotFound,       // no such database or record
    EndOfData,      // the cursor stands behind the last record
    RecordDeleted,  // the record under the cursor is gone
    DuplicateName,  // a database of that name exists
    DuplicateKey,   // a sort order that is unique would get the same key twice
    InvalidArgument,
    TooLong,     // a property or a record beyond what a volume keeps
    NotAVolume,  // the file is something else
    Corrupt,     // a volume whose contents contradict themselves
    Full,        // no room on the disk, or no identifier left
    Busy,        // another process kept the volume locked for too long
    AccessDenied,
    OutOfMemory,
    Failed,  // the file could not be read or written
};

}  // namespace cedb
