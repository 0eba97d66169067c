// A handset of a test's own: its own state key, its own device root with the installed programs, its own
// logs. What a test does to it touches no other handset.
#pragma once

#include <windows.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace test {

class HandsetUnderTest {
  public:
    // Sets the handset up with `handset install`, a band of three stations (see ResetBand) and its tuner at
    // the bottom of that, beside them. The environment of this process is changed so that every program
    // started from it belongs to this handset.
    HandsetUnderTest();
    ~HandsetUnderTest();
    HandsetUnderTest(const HandsetUnderTest&) = delete;
    HandsetUnderTest& operator=(const HandsetUnderTest&) = delete;

    // Files, as host paths.
    std::wstring Root() const { return m_root; }
    std::wstring DevicePath(const std::wstring& devicePath) const { return m_root + devicePath; }
    void WriteBand(const std::string& text) const;
    void ResetBand() const;

    // State of the stand-in, such as L"ScreenWidth"; kept in the state key.
    void SetState(const wchar_t* name, std::uint32_t value) const;
    void SetState(const wchar_t* name, const std::wstring& value) const;
    void DeleteState(const wchar_t* name) const;

    // The device's registry. `key` begins with HKLM\, HKCU\ or HKCR\.
    void SetRegistry(const std::wstring& key, const wchar_t* value, std::uint32_t data) const;
    void SetRegistry(const std::wstring& key, const wchar_t* value, const std::wstring& data) const;
    void DeleteRegistry(const std::wstring& key, const wchar_t* value) const;
    // A key with all that is below it.
    void DeleteRegistryKey(const std::wstring& key) const;
    // A text of the device's registry; empty when it is missing.
    std::wstring RegistryText(const std::wstring& key, const wchar_t* value) const;
    // A number of it; nothing when it is missing.
    std::optional<std::uint32_t> RegistryNumber(const std::wstring& key, const wchar_t* value) const;
    // The keys right below one of it.
    std::vector<std::wstring> RegistrySubkeys(const std::wstring& key) const;
    void PlugHeadset(bool in) const;

    // Lines of the tuner log so far, and what was written to the debug output and to the console.
    std::vector<std::string> TunerCalls() const;
    std::string Trace() const;
    std::string Console() const;
    void ClearTunerLog() const;

    std::wstring TunerLogFile() const { return DevicePath(L"\\tuner.log"); }
    std::wstring TraceFile() const { return m_home + L"\\trace.log"; }
    std::wstring ConsoleFile() const { return m_home + L"\\console.log"; }

  private:
    std::wstring m_home;      // temporary folder of this handset
    std::wstring m_root;      // device root
    std::wstring m_stateKey;  // below HKEY_CURRENT_USER
};

std::string ReadWholeFile(const std::wstring& path);
void WriteWholeFile(const std::wstring& path, const std::string& bytes);
std::vector<std::string> Lines(const std::string& text);
// Runs a program of the build folder to its end; its exit code, and its output when asked for. One that has
// not ended when the patience is over fails the test, and is ended; its code is STILL_ACTIVE then.
DWORD RunProgram(const std::wstring& name, const std::wstring& arguments, std::string* output = nullptr,
                 DWORD patience_ms = 180000);
std::wstring BuildFolder();

}  // namespace test
