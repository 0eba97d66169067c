#include "tests/unit/schedule/schedule_test.h"

#include <regext.h>

#include "shell/owned.h"

namespace test {
namespace {

constexpr wchar_t kBookings[] = L"System\\Notifications";

std::vector<std::wstring> Subkeys(HKEY root, const wchar_t* path) {
    std::vector<std::wstring> names;
    OwnedKey key;
    if (RegOpenKeyExW(root, path, 0, KEY_READ, key.put()) != ERROR_SUCCESS) return names;
    wchar_t name[256] = L"";
    DWORD length = 256;
    while (RegEnumKeyExW(key.get(), static_cast<DWORD>(names.size()), name, &length, nullptr, nullptr,
                         nullptr, nullptr) == ERROR_SUCCESS) {
        names.emplace_back(name, length);
        length = 256;
    }
    return names;
}

std::wstring Value(HKEY root, const std::wstring& path, const wchar_t* value) {
    wchar_t text[128] = L"";
    return SUCCEEDED(RegistryGetString(root, path.c_str(), value, text, 128)) ? text : L"(none)";
}

std::wstring EntryKey(const std::wstring& name) {
    return kSettingsKey + (L"\\" + name);
}

std::string Narrow(const std::wstring& text) {
    std::string narrow;
    for (const wchar_t c : text) narrow += static_cast<char>(c);
    return narrow;
}

}  // namespace

std::ostream& operator<<(std::ostream& out, const Texts& texts) {
    return out << Narrow(texts.channel) << " | " << Narrow(texts.week) << " | " << Narrow(texts.start)
               << " | " << Narrow(texts.end);
}

ScheduleTest::ScheduleTest() {
    g_app = {};
    g_app.hInstance = GetModuleHandleW(nullptr);
    g_app.pFMDevice = &device;
    SetClock(25, 12, 0);  // a Wednesday
}

ScheduleTest::~ScheduleTest() {
    g_app = {};
}

std::vector<std::wstring> ScheduleTest::EntryNames() {
    return Subkeys(HKEY_CLASSES_ROOT, kSettingsKey);
}

Texts ScheduleTest::EntryTexts(const std::wstring& name) {
    const auto text = [&name](const wchar_t* value) {
        return Value(HKEY_CLASSES_ROOT, EntryKey(name), value);
    };
    return {text(L"Channel"), text(L"Week"), text(L"StartTime"), text(L"EndTime")};
}

void ScheduleTest::WriteEntry(const std::wstring& name, const Texts& texts) {
    const auto write = [&name](const wchar_t* value, const std::wstring& text) {
        RegistrySetString(HKEY_CLASSES_ROOT, EntryKey(name).c_str(), value, text.c_str());
    };
    write(L"Channel", texts.channel);
    write(L"Week", texts.week);
    write(L"StartTime", texts.start);
    write(L"EndTime", texts.end);
}

std::vector<std::wstring> ScheduleTest::Booked() {
    return Subkeys(HKEY_LOCAL_MACHINE, kBookings);
}

std::wstring ScheduleTest::BookedValue(const std::wstring& name, const wchar_t* value) {
    return Value(HKEY_LOCAL_MACHINE, kBookings + (L"\\" + name), value);
}

void ScheduleTest::SetClock(WORD day, WORD hour, WORD minute) {
    SYSTEMTIME time = {};
    time.wYear = 2026;
    time.wMonth = 11;
    time.wDay = day;
    time.wHour = hour;
    time.wMinute = minute;
    EXPECT_TRUE(SetLocalTime(&time));
}

}  // namespace test
