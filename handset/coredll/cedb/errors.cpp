// The engine's answers as the device's error codes.
#include "handset/coredll/cedb/errors.h"

#include "handset/base/rows.h"

namespace cedb {
namespace {

struct ErrorRow {
    Status status;
    DWORD error;
};

// clang-format off
constexpr ErrorRow kErrors[] = {
    {Status::Ok,              ERROR_SUCCESS},
    {Status::EndOfData,       ERROR_NO_MORE_ITEMS},
    {Status::RecordDeleted,   ERROR_KEY_DELETED},
    {Status::DuplicateName,   ERROR_DUP_NAME},
    {Status::DuplicateKey,    ERROR_ALREADY_EXISTS},
    {Status::InvalidArgument, ERROR_INVALID_PARAMETER},
    {Status::TooLong,         ERROR_BAD_LENGTH},
    {Status::NotAVolume,      ERROR_BAD_FORMAT},
    {Status::Corrupt,         ERROR_FILE_CORRUPT},
    {Status::Full,            ERROR_DISK_FULL},
    {Status::Busy,            ERROR_SHARING_VIOLATION},
    {Status::AccessDenied,    ERROR_ACCESS_DENIED},
    {Status::OutOfMemory,     ERROR_NOT_ENOUGH_MEMORY},
    {Status::Failed,          ERROR_GEN_FAILURE},
};
// clang-format on

}  // namespace

DWORD ErrorOf(Status status, DWORD notFound) {
    const ErrorRow* const row = handset::RowWith(kErrors, &ErrorRow::status, status);
    return row == nullptr ? notFound : row->error;
}

}  // namespace cedb
