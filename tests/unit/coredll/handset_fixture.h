// A handset of its own for a test: a device root in a temporary folder and a state key that nobody else uses.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <cstdint>
#include <functional>
#include <string>

class HandsetTest : public testing::Test {
  protected:
    HandsetTest();
    ~HandsetTest() override;

    // The host path of a device path.
    std::wstring OnHost(const wchar_t* devicePath) const { return root_ + devicePath; }
    bool HostFileExists(const wchar_t* devicePath) const;
    void MakeFile(const wchar_t* devicePath) const;
    // A value of the handset's state, for the length of the test.
    void SetState(const wchar_t* variable, const wchar_t* value);
    // A DWORD of the state as it stands in the host's registry; `missing` when there is none.
    DWORD StateDword(const wchar_t* name, DWORD missing) const;
    const std::wstring& stateKey() const { return stateKey_; }
    const std::wstring& root() const { return root_; }

  private:
    std::wstring root_;
    std::wstring stateKey_;
    std::wstring variables_;  // set by SetState, separated by blanks
};

// Polls until `condition` holds; false after ten seconds of real time.
bool Eventually(const std::function<bool()>& condition);
// Real time of the host, and a real pause, whatever the handset's clock does.
std::uint64_t RealMilliseconds();
void RealPause(DWORD milliseconds);
// The thread's messages, until none is left.
void HandleMessages();
// A function of the host's own DLL, past COREDLL.
template <typename Function>
Function* HostFunction(const char* dll, const char* name) {
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA(dll), name)));
}
