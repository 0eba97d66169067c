// Memory that the programs of one handset share. Host code only.
#pragma once

#include <windows.h>

#include <cstddef>
#include <cstdint>
#include <string>

#include "handset/base/owned.h"

namespace handset {

// A program by its process identifier and its start, which tells it from a later one of that identifier. All
// zero: nobody.
struct ProgramMark {
    std::uint64_t id;
    std::uint64_t started;  // 100 ns
    bool operator==(const ProgramMark& other) const { return id == other.id && started == other.started; }
};
ProgramMark ThisProgram();
bool Runs(const ProgramMark& program);

// A piece of memory by name (see StateObjectName); it lasts for as long as any program has it open, and is
// all zero at first.
class CSharedMemory {
  public:
    // `size` 0 opens what is there and fails when nothing is; else it is made when it is missing, and the
    // size counts only then.
    CSharedMemory(const std::wstring& what, std::size_t size);
    CSharedMemory(const CSharedMemory&) = delete;
    CSharedMemory& operator=(const CSharedMemory&) = delete;

    explicit operator bool() const { return view_ != nullptr; }
    bool existed() const { return existed_; }
    void* data() const { return view_.get(); }

  private:
    OwnedHandle section_;
    Owned<void*, UnmapViewOfFile> view_;
    bool existed_ = false;
};

}  // namespace handset
