// CeReadRecordPropsEx: one record in one block of memory.
#include <algorithm>
#include <cstring>

#include "handset/base/module_edge.h"
#include "handset/coredll/cedb/errors.h"
#include "handset/coredll/cedb/mounts.h"
#include "handset/coredll/cedb/property_values.h"
#include "handset/coredll/kernel/call_guard.h"
#include "handset/coredll/kernel/coredll_exports.h"

namespace {

using namespace cedb;

// The heap that the caller's block belongs to. LocalAlloc's is the process's own.
class CBlockHeap {
  public:
    explicit CBlockHeap(HANDLE heap) : heap_(heap == GetProcessHeap() ? nullptr : heap) {}
    std::size_t Size(const BYTE* block) const {
        return heap_ == nullptr ? LocalSize(const_cast<BYTE*>(block)) : HeapSize(heap_, 0, block);
    }
    BYTE* Allocate(std::size_t size) const {
        return static_cast<BYTE*>(heap_ == nullptr ? LocalAlloc(LMEM_FIXED, size)
                                                   : HeapAlloc(heap_, 0, size));
    }
    void Free(BYTE* block) const {
        if (block == nullptr) return;
        if (heap_ == nullptr) {
            LocalFree(block);
        } else {
            HeapFree(heap_, 0, block);
        }
    }

  private:
    HANDLE heap_;
};

struct ReadRequest {
    DWORD flags;
    LPWORD count;
    const CEPROPID* ids;
    LPBYTE* buffer;
    LPDWORD size;
    CBlockHeap heap;
};

bool IsValid(const ReadRequest& request) {
    if ((request.flags & ~CEDB_ALLOWREALLOC) != 0 || request.count == nullptr) return false;
    if (request.buffer == nullptr || request.size == nullptr) return false;
    if (request.ids != nullptr && *request.count == 0) return false;
    return (request.flags & CEDB_ALLOWREALLOC) != 0 || *request.buffer != nullptr || *request.size == 0;
}

// The properties asked for, in that order; what is missing has type and number only.
std::vector<CEPROPVAL> Select(const ReadRequest& request, const cedb::Record& record, std::string* block) {
    std::vector<CEPROPVAL> values;
    const std::size_t count = request.ids == nullptr ? record.size() : *request.count;
    block->resize(count * sizeof(CEPROPVAL));
    for (std::size_t i = 0; i < count; ++i) {
        const cedb::Property* property =
            request.ids == nullptr ? &record[i] : cedb::FindProperty(record, request.ids[i]);
        CEPROPVAL missing{};
        missing.wFlags = CEDB_PROPNOTFOUND;
        if (property == nullptr) missing.propid = request.ids[i];
        values.push_back(property == nullptr ? missing : ToValue(*property, block));
    }
    return values;
}

// Gives the caller's block enough room. The block may be another one afterwards, even after a failure.
DWORD MakeRoom(const ReadRequest& request, std::size_t needed) {
    BYTE*& buffer = *request.buffer;
    if ((request.flags & CEDB_ALLOWREALLOC) == 0) {
        const bool fits = *request.size >= needed;
        if (!fits) *request.size = static_cast<DWORD>(needed);
        return fits ? ERROR_SUCCESS : ERROR_INSUFFICIENT_BUFFER;
    }
    // *size is what the last record took, not what the block holds.
    if (buffer != nullptr && request.heap.Size(buffer) >= needed) return ERROR_SUCCESS;
    BYTE* larger = request.heap.Allocate(std::max(needed, std::size_t{1}));
    if (larger == nullptr) return ERROR_NOT_ENOUGH_MEMORY;
    request.heap.Free(buffer);
    buffer = larger;
    return ERROR_SUCCESS;
}

DWORD Deliver(const ReadRequest& request, const cedb::Record& record) {
    std::string block;
    std::vector<CEPROPVAL> values = Select(request, record, &block);
    const DWORD error = MakeRoom(request, block.size());
    if (error != ERROR_SUCCESS) return error;
    BYTE* base = *request.buffer;
    for (CEPROPVAL& value : values) Relocate(&value, base);
    if (!values.empty()) std::memcpy(block.data(), values.data(), values.size() * sizeof(CEPROPVAL));
    if (!block.empty()) std::memcpy(base, block.data(), block.size());
    *request.size = static_cast<DWORD>(block.size());
    *request.count = static_cast<WORD>(values.size());
    const bool found = std::any_of(values.begin(), values.end(), [](const CEPROPVAL& value) {
        return (value.wFlags & CEDB_PROPNOTFOUND) == 0;
    });
    return found ? ERROR_SUCCESS : ERROR_NO_DATA;
}

DWORD Read(HANDLE database, const ReadRequest& request, cedb::Oid* oid) {
    const auto open = FindOpenDatabase(database);
    if (open == nullptr || !IsValid(request)) return ERROR_INVALID_PARAMETER;
    const std::lock_guard<std::mutex> inUse(open->mounted->lock);
    cedb::Record record;
    const cedb::Status status = open->cursor.Look(oid, &record);
    if (status != cedb::Status::Ok) return ErrorOf(status, ERROR_FILE_CORRUPT);
    const DWORD error = Deliver(request, record);
    if (error == ERROR_SUCCESS || error == ERROR_NO_DATA) open->cursor.HasBeenRead();
    return error;
}

}  // namespace

COREDLL_EXPORT CEOID WINAPI CeReadRecordPropsEx(HANDLE database, DWORD flags, LPWORD count, CEPROPID* ids,
                                                LPBYTE* buffer, LPDWORD size, HANDLE heap) try {
    const coredll::CCallGuard guard;
    cedb::Oid oid = 0;
    const DWORD error = Read(database, {flags, count, ids, buffer, size, CBlockHeap(heap)}, &oid);
    if (error == ERROR_SUCCESS) return oid;
    SetLastError(error);
    return 0;
} catch (...) {
    return handset::EdgeAnswer<CEOID>();
}
