// What a listing of the bookings asks of the registry.
#include <windows.h>

#include <commctrl.h>
#include <regext.h>

#include "schedule/booking_list.h"
#include "tests/unit/schedule/schedule_test.h"

namespace {
// Keys that were found by their path.
int g_keysFound = 0;
}  // namespace

extern "C" {
extern decltype(&RegOpenKeyExW) g_realOpenKey __asm__("__real___imp_RegOpenKeyExW");
static LONG WINAPI CountedOpenKey(HKEY root, const wchar_t* path, DWORD options, REGSAM access, HKEY* key) {
    ++g_keysFound;
    return g_realOpenKey(root, path, options, access, key);
}
decltype(&RegOpenKeyExW) g_countedOpenKey __asm__("__wrap___imp_RegOpenKeyExW") = CountedOpenKey;

HRESULT WINAPI RealGetString(HKEY root, LPCWSTR key, LPCWSTR value, LPWSTR data,
                             UINT count) __asm__("__real_RegistryGetString");
HRESULT WINAPI CountedGetString(HKEY root, LPCWSTR key, LPCWSTR value, LPWSTR data,
                                UINT count) __asm__("__wrap_RegistryGetString");
HRESULT WINAPI CountedGetString(HKEY root, LPCWSTR key, LPCWSTR value, LPWSTR data, UINT count) {
    g_keysFound += key != nullptr ? 1 : 0;
    return RealGetString(root, key, value, data, count);
}
}

namespace {

class Listing : public test::ScheduleTest {
  protected:
    Listing() {
        const HINSTANCE module = GetModuleHandleW(nullptr);
        m_dialog =
            CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 240, 320, nullptr, nullptr, module, nullptr);
        CreateWindowExW(0, WC_LISTVIEWW, L"", WS_CHILD | LVS_REPORT, 0, 0, 230, 100, m_dialog,
                        reinterpret_cast<HMENU>(static_cast<UINT_PTR>(IDC_SCHEDULE_LIST)), module, nullptr);
        SetUpBookingList(m_dialog);
    }
    ~Listing() override { DestroyWindow(m_dialog); }

    // How many keys a listing of so many bookings finds by their path.
    int KeysFoundListing(int bookings) {
        for (; m_stored < bookings; ++m_stored) {
            WriteEntry(L"RunAppAtTime-" + std::to_wstring(1000000000 + m_stored),
                       {L"87.5", L"Mon", L"10 : 00", L"11 : 00"});
        }
        SendDlgItemMessageW(m_dialog, IDC_SCHEDULE_LIST, LVM_DELETEALLITEMS, 0, 0);
        g_keysFound = 0;
        EXPECT_TRUE(FillBookingList(m_dialog));
        const int found = g_keysFound;
        EXPECT_EQ(BookingCount(m_dialog), bookings);
        return found;
    }

  private:
    HWND m_dialog = nullptr;
    int m_stored = 0;
};

TEST_F(Listing, FindsTheKeyOfEachBookingOnceAndTheirParentOnce) {
    EXPECT_EQ(KeysFoundListing(10), 11);
    EXPECT_EQ(KeysFoundListing(100), 101);
}

}  // namespace
