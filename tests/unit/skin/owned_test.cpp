// The owners: each closes what it holds, once, and keeps the last error.
#include "shell/owned.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace {

constexpr DWORD kSomeError = 4711;

int g_closings = 0;
int g_lastClosed = 0;
void CloseFake(HANDLE handle) {
    ++g_closings;
    g_lastClosed = static_cast<int>(reinterpret_cast<INT_PTR>(handle));
    SetLastError(1);
}
using OwnedFake = Owned<HANDLE, &CloseFake>;
HANDLE Fake(int number) {
    return reinterpret_cast<HANDLE>(static_cast<INT_PTR>(number));
}

class Owners : public ::testing::Test {
  protected:
    Owners() {
        g_closings = 0;
        SetLastError(kSomeError);
    }
    ~Owners() override { EXPECT_EQ(GetLastError(), kSomeError) << "closing changed the last error"; }
};

// Counts its references; lives on the stack.
struct Counted {
    ULONG AddRef() { return ++m_references; }
    ULONG Release() {
        SetLastError(1);
        return --m_references;
    }
    ULONG m_references = 1;
};

static_assert(!std::is_copy_constructible_v<OwnedFake> && !std::is_copy_assignable_v<OwnedFake>);
static_assert(!std::is_convertible_v<HANDLE, OwnedFake> && !std::is_convertible_v<OwnedFake, HANDLE>);
static_assert(!std::is_copy_constructible_v<SelectObjectGuard> && !std::is_copy_constructible_v<WindowDC>);
static_assert(!std::is_copy_constructible_v<PaintDC> && !std::is_copy_constructible_v<ComPtr<Counted>>);

bool IsGone(HGDIOBJ object) {
    const DWORD type = GetObjectType(object);
    SetLastError(kSomeError);
    return type == 0;
}

}  // namespace

TEST_F(Owners, AHandleIsClosedOnceWhenItsOwnerGoes) {
    { const OwnedFake owner(Fake(5)); }
    EXPECT_EQ(g_closings, 1);
    EXPECT_EQ(g_lastClosed, 5);
}

TEST_F(Owners, NeitherNullNorTheInvalidHandleIsClosed) {
    {
        const OwnedFake nothing;
        const OwnedFake null(nullptr);
        const OwnedFake invalid(INVALID_HANDLE_VALUE);
        EXPECT_FALSE(nothing);
        EXPECT_FALSE(null);
        EXPECT_FALSE(invalid);
    }
    EXPECT_EQ(g_closings, 0);
}

TEST_F(Owners, AMovedHandleIsClosedByItsLastOwnerAlone) {
    {
        OwnedFake first(Fake(5));
        OwnedFake second(std::move(first));
        EXPECT_EQ(second.get(), Fake(5));
        OwnedFake third(Fake(6));
        third = std::move(second);
        EXPECT_EQ(g_lastClosed, 6);
        EXPECT_EQ(third.get(), Fake(5));
        EXPECT_EQ(g_closings, 1);
    }
    EXPECT_EQ(g_closings, 2);
    EXPECT_EQ(g_lastClosed, 5);
}

TEST_F(Owners, AReleasedHandleStaysOpen) {
    {
        OwnedFake owner(Fake(5));
        EXPECT_EQ(owner.release(), Fake(5));
        EXPECT_FALSE(owner);
    }
    EXPECT_EQ(g_closings, 0);
}

TEST_F(Owners, AResetClosesTheOldHandleAndTakesTheNewOne) {
    OwnedFake owner(Fake(5));
    owner.reset(Fake(6));
    EXPECT_EQ(g_lastClosed, 5);
    EXPECT_EQ(owner.get(), Fake(6));
    *owner.put() = Fake(7);
    EXPECT_EQ(g_lastClosed, 6);
    EXPECT_EQ(owner.get(), Fake(7));
}

// By its name, not by the handle's number, which another thread of the process may have been given meanwhile.
TEST_F(Owners, AnEventsHandleIsClosed) {
    constexpr WCHAR kName[] = L"KoraOwnedEvent";
    {
        const OwnedHandle owner(CreateEventW(nullptr, FALSE, FALSE, kName));
        const OwnedHandle second(CreateEventW(nullptr, FALSE, FALSE, kName));
        ASSERT_EQ(GetLastError(), static_cast<DWORD>(ERROR_ALREADY_EXISTS));
        SetLastError(kSomeError);
    }
    EXPECT_EQ(GetLastError(), kSomeError);
    const OwnedHandle again(CreateEventW(nullptr, FALSE, FALSE, kName));
    EXPECT_EQ(GetLastError(), 0u);
    SetLastError(kSomeError);
}

TEST_F(Owners, GraphicsObjectsAreDeleted) {
    HGDIOBJ objects[5] = {};
    {
        const OwnedBitmap bitmap(CreateBitmap(4, 4, 1, 1, nullptr));
        const LOGFONTW description = {};
        const OwnedFont font(CreateFontIndirectW(&description));
        const OwnedPen pen(CreatePen(PS_SOLID, 1, 0));
        const OwnedBrush brush(CreateSolidBrush(0));
        const OwnedMemoryDC dc(CreateCompatibleDC(nullptr));
        HGDIOBJ* next = objects;
        for (const HGDIOBJ object : {HGDIOBJ(bitmap.get()), HGDIOBJ(font.get()), HGDIOBJ(pen.get()),
                                     HGDIOBJ(brush.get()), HGDIOBJ(dc.get())}) {
            EXPECT_FALSE(IsGone(object));
            *next++ = object;
        }
        SetLastError(kSomeError);
    }
    for (const HGDIOBJ object : objects) EXPECT_TRUE(IsGone(object));
}

TEST_F(Owners, AMenuIsDestroyed) {
    HMENU menu = nullptr;
    {
        const OwnedMenu owner(CreatePopupMenu());
        menu = owner.get();
        ASSERT_TRUE(IsMenu(menu));
        SetLastError(kSomeError);
    }
    EXPECT_FALSE(IsMenu(menu));
    SetLastError(kSomeError);
}

// By what is in it: the handle's number, too, may be another key's of the process by now.
TEST_F(Owners, ARegistryKeyIsClosed) {
    constexpr WCHAR kPath[] = L"Software\\KoraOwnedKey";
    constexpr WCHAR kMark[] = L"Mark";
    const auto isOpen = [&](HKEY key) {
        return RegQueryValueExW(key, kMark, nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS;
    };
    HKEY key = nullptr;
    {
        OwnedKey owner;
        ASSERT_EQ(RegCreateKeyExW(HKEY_CURRENT_USER, kPath, 0, nullptr, REG_OPTION_VOLATILE, KEY_ALL_ACCESS,
                                  nullptr, owner.put(), nullptr),
                  ERROR_SUCCESS);
        ASSERT_EQ(RegSetValueExW(owner.get(), kMark, 0, REG_BINARY, nullptr, 0), ERROR_SUCCESS);
        key = owner.get();
        EXPECT_TRUE(isOpen(key));
        SetLastError(kSomeError);
    }
    EXPECT_EQ(GetLastError(), kSomeError);
    EXPECT_FALSE(isOpen(key));
    RegDeleteKeyW(HKEY_CURRENT_USER, kPath);
    SetLastError(kSomeError);
}

TEST_F(Owners, ASelectedObjectGivesWayToThePreviousOne) {
    const OwnedMemoryDC dc(CreateCompatibleDC(nullptr));
    const OwnedPen pen(CreatePen(PS_SOLID, 3, 0));
    const HGDIOBJ before = GetCurrentObject(dc.get(), OBJ_PEN);
    {
        const SelectObjectGuard guard(dc.get(), pen.get());
        EXPECT_TRUE(guard);
        EXPECT_EQ(GetCurrentObject(dc.get(), OBJ_PEN), pen.get());
        SetLastError(kSomeError);
    }
    EXPECT_EQ(GetCurrentObject(dc.get(), OBJ_PEN), before);
    SetLastError(kSomeError);
}

TEST_F(Owners, ARefusedSelectionIsFalse) {
    const OwnedBitmap bitmap(CreateBitmap(4, 4, 1, 1, nullptr));
    const OwnedMemoryDC first(CreateCompatibleDC(nullptr)), second(CreateCompatibleDC(nullptr));
    const SelectObjectGuard taken(first.get(), bitmap.get());
    const SelectObjectGuard refused(second.get(), bitmap.get());
    EXPECT_TRUE(taken);
    EXPECT_FALSE(refused);
    SetLastError(kSomeError);
}

class OwnersOfAWindow : public Owners {
  protected:
    OwnersOfAWindow() {
        // A class of the test's own: a STATIC window waits two seconds for a window manager.
        WNDCLASSW plain = {};
        plain.lpfnWndProc = DefWindowProcW;
        plain.hInstance = GetModuleHandleW(nullptr);
        plain.lpszClassName = L"OwnersOfAWindow";
        RegisterClassW(&plain);
        m_window = CreateWindowExW(WS_EX_TOPMOST | WS_EX_NOACTIVATE, plain.lpszClassName, L"", WS_POPUP, 0, 0,
                                   40, 40, nullptr, nullptr, plain.hInstance, nullptr);
        ShowWindow(m_window, SW_SHOWNOACTIVATE);
        UpdateWindow(m_window);
        SetLastError(kSomeError);
    }
    ~OwnersOfAWindow() override {
        DestroyWindow(m_window);
        SetLastError(kSomeError);
    }
    HWND m_window;
};

TEST_F(OwnersOfAWindow, AWindowsDeviceContextIsGivenBack) {
    HDC dc = nullptr;
    {
        const WindowDC owner(m_window);
        ASSERT_TRUE(owner);
        dc = owner.get();
        EXPECT_EQ(WindowFromDC(dc), m_window);
        SetLastError(kSomeError);
    }
    EXPECT_NE(WindowFromDC(dc), m_window);
    SetLastError(kSomeError);
}

TEST_F(OwnersOfAWindow, APaintIsEnded) {
    InvalidateRect(m_window, nullptr, FALSE);
    {
        const PaintDC paint(m_window);
        ASSERT_NE(paint.get(), nullptr);
        EXPECT_EQ(paint.paint().rcPaint.right, 40);
        EXPECT_EQ(WindowFromDC(paint.get()), m_window);
        SetLastError(kSomeError);
    }
    EXPECT_FALSE(GetUpdateRect(m_window, nullptr, FALSE));
    SetLastError(kSomeError);
}

TEST_F(Owners, AComReferenceIsReleasedOnce) {
    Counted object;
    {
        ComPtr<Counted> first(&object);
        ComPtr<Counted> second(std::move(first));
        EXPECT_FALSE(first);
        EXPECT_EQ(second.get(), &object);
        EXPECT_EQ(second->m_references, 1u);
    }
    EXPECT_EQ(object.m_references, 0u);
}

TEST_F(Owners, AComReferenceThatWasGivenAwayIsNotReleased) {
    Counted object;
    {
        ComPtr<Counted> owner(&object);
        EXPECT_EQ(owner.release(), &object);
    }
    EXPECT_EQ(object.m_references, 1u);
}

TEST_F(Owners, AComPointerTakesWhatACallGivesAndReleasesWhatItHeld) {
    Counted old, given;
    {
        ComPtr<Counted> owner(&old);
        *owner.putVoid() = &given;
        EXPECT_EQ(old.m_references, 0u);
        EXPECT_EQ(owner.get(), &given);
    }
    EXPECT_EQ(given.m_references, 0u);
}
