// A handset for the DLLs that a test uses in its own process: an empty device root in a temporary folder and
// a state key, both its own; and files of the host as bytes.
#pragma once

#include <windows.h>

#include <string>

namespace test {

// The whole file; empty when it cannot be read.
std::string Bytes(const std::wstring& hostPath);
void WriteBytes(const std::wstring& hostPath, const std::string& bytes);

class HandsetHere {
  public:
    // `family` begins the names of the folder and the key. Silent, unless KORA_HOSTSOUND says otherwise.
    explicit HandsetHere(const std::wstring& family);
    // Everything is removed again.
    ~HandsetHere();
    HandsetHere(const HandsetHere&) = delete;
    HandsetHere& operator=(const HandsetHere&) = delete;

    // No other handset of this machine has it.
    const std::wstring& Name() const { return m_name; }
    const std::wstring& Root() const { return m_root; }

    // Of the first handset of that family in a process, also in another one.
    static std::wstring FirstNameIn(const std::wstring& family, DWORD processId);
    // Removes what a handset has left behind.
    static void Forget(const std::wstring& name);

  private:
    const std::wstring m_name;
    const std::wstring m_root;
};

}  // namespace test
