// The display's size, which is kept between two questions: a change that a program of the handset has made
// and counted is seen at the next one, another's a moment later.
#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <stdexcept>

#include "handset_fixture.h"

namespace {

constexpr wchar_t kValue[] = L"ScreenWidth";

class DisplaySize : public HandsetTest {
  protected:
    // Straight into the host's registry, past every call of the handset.
    void WritePast(DWORD width) const {
        static const auto write = HostFunction<LSTATUS WINAPI(HKEY, LPCWSTR, LPCWSTR, DWORD, LPCVOID, DWORD)>(
            "advapi32.dll", "RegSetKeyValueW");
        ASSERT_EQ(write(HKEY_CURRENT_USER, stateKey().c_str(), kValue, REG_DWORD, &width, sizeof width),
                  ERROR_SUCCESS);
    }
    void DeletePast() const {
        static const auto remove =
            HostFunction<LSTATUS WINAPI(HKEY, LPCWSTR)>("advapi32.dll", "RegDeleteTreeW");
        remove(HKEY_CURRENT_USER, stateKey().c_str());
    }
    // As another program of the handset does.
    void Write(DWORD width) {
        WritePast(width);
        ++Changes();
    }
    void DeleteState() {
        DeletePast();
        ++Changes();
    }

  private:
    // The count of changes that the programs of a handset share.
    volatile std::uint64_t& Changes() {
        if (changes_ == nullptr) {
            // The handset has counted something by then.
            (void)GetSystemMetrics(SM_CXSCREEN);
            static const auto open =
                HostFunction<HANDLE WINAPI(DWORD, BOOL, LPCWSTR)>("kernel32.dll", "OpenFileMappingW");
            static const auto map = HostFunction<LPVOID WINAPI(HANDLE, DWORD, DWORD, DWORD, SIZE_T)>(
                "kernel32.dll", "MapViewOfFile");
            std::wstring name = stateKey();
            std::replace(name.begin(), name.end(), L'\\', L'/');
            // The view keeps the memory; it lasts as long as this program.
            constexpr DWORD kReadAndWrite = 6;
            const HANDLE section = open(kReadAndWrite, FALSE, (L"Local\\" + name + L"/Changes").c_str());
            changes_ = static_cast<volatile std::uint64_t*>(map(section, kReadAndWrite, 0, 0, 0));
            CloseHandle(section);
        }
        if (changes_ == nullptr) throw std::runtime_error("the handset counts no changes");
        return *changes_;
    }

    volatile std::uint64_t* changes_ = nullptr;
};

// Nobody counts it; who asks again and again looks all the same.
TEST_F(DisplaySize, FollowsWhatAnotherProgramWritesAMomentLater) {
    for (DWORD width = 300; width < 320; ++width) {
        WritePast(width);
        const std::uint64_t written_ms = RealMilliseconds();
        while (GetSystemMetrics(SM_CXSCREEN) != static_cast<int>(width))
            ASSERT_LT(RealMilliseconds(), written_ms + 2000) << width;
    }
    DeletePast();
    EXPECT_TRUE(Eventually([] { return GetSystemMetrics(SM_CXSCREEN) == 240; }));
}

TEST_F(DisplaySize, FollowsEveryChangeOfTheState) {
    for (DWORD width = 300; width < 400; ++width) {
        Write(width);
        ASSERT_EQ(GetSystemMetrics(SM_CXSCREEN), static_cast<int>(width));
        ASSERT_EQ(GetSystemMetrics(SM_CXSCREEN), static_cast<int>(width));
    }
}

TEST_F(DisplaySize, IsTheFirstOneAgainWhenTheStateIsGone) {
    Write(320);
    EXPECT_EQ(GetSystemMetrics(SM_CXSCREEN), 320);
    DeleteState();
    EXPECT_EQ(GetSystemMetrics(SM_CXSCREEN), 240);
}

TEST_F(DisplaySize, FollowsAStateThatWasMadeAnew) {
    for (DWORD width = 300; width < 310; ++width) {
        Write(width);
        ASSERT_EQ(GetSystemMetrics(SM_CXSCREEN), static_cast<int>(width));
        DeleteState();
        Write(width + 100);
        ASSERT_EQ(GetSystemMetrics(SM_CXSCREEN), static_cast<int>(width) + 100);
        Write(width + 200);
        ASSERT_EQ(GetSystemMetrics(SM_CXSCREEN), static_cast<int>(width) + 200);
    }
}

TEST_F(DisplaySize, FollowsAnotherHandset) {
    Write(320);
    EXPECT_EQ(GetSystemMetrics(SM_CXSCREEN), 320);
    const std::wstring other = stateKey() + L" other";
    SetState(L"KORA_STATEKEY", other.c_str());
    EXPECT_EQ(GetSystemMetrics(SM_CXSCREEN), 240);
    SetState(L"KORA_STATEKEY", stateKey().c_str());
    EXPECT_EQ(GetSystemMetrics(SM_CXSCREEN), 320);
}

}  // namespace
