// Named memory of one handset.
#include "handset/state/shared_memory.h"

#include "handset/base/file_time.h"
#include "handset/state/handset_state.h"

namespace handset {
namespace {

std::uint64_t StartOf(HANDLE process) {
    FILETIME created{};
    FILETIME ignored{};
    GetProcessTimes(process, &created, &ignored, &ignored, &ignored);
    return Ticks(created);
}

}  // namespace

ProgramMark ThisProgram() {
    static const ProgramMark mark{GetCurrentProcessId(), StartOf(GetCurrentProcess())};
    return mark;
}

bool Runs(const ProgramMark& program) {
    if (program.id == 0) return false;
    if (program == ThisProgram()) return true;
    const OwnedHandle process(
        OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, static_cast<DWORD>(program.id)));
    DWORD code = 0;
    // An ended process is still to be seen for as long as somebody holds a handle of it.
    return process && GetExitCodeProcess(process.get(), &code) && code == STILL_ACTIVE &&
           StartOf(process.get()) == program.started;
}

CSharedMemory::CSharedMemory(const std::wstring& what, std::size_t size) {
    const std::wstring name = StateObjectName(what);
    if (size == 0) {
        section_.reset(OpenFileMappingW(FILE_MAP_ALL_ACCESS, FALSE, name.c_str()));
        existed_ = section_ != nullptr;
    } else {
        section_.reset(CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE,
                                          static_cast<DWORD>(std::uint64_t{size} >> 32),
                                          static_cast<DWORD>(size), name.c_str()));
        existed_ = section_ != nullptr && GetLastError() == ERROR_ALREADY_EXISTS;
    }
    if (section_) view_.reset(MapViewOfFile(section_.get(), FILE_MAP_ALL_ACCESS, 0, 0, 0));
}

}  // namespace handset
