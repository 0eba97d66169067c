// The owners of what the host hands out.
#include "handset/base/owned.h"

#include <gtest/gtest.h>

#include <type_traits>

#include "handset/base/com_reference.h"

namespace {

using namespace handset;

constexpr DWORD kSomeError = 4321;
int g_closed = 0;
void CloseFake(int* handle) {
    g_closed += *handle;
    SetLastError(0);
}
using OwnedFake = Owned<int*, CloseFake>;

static_assert(!std::is_copy_constructible_v<OwnedFake> && !std::is_copy_assignable_v<OwnedFake>);
static_assert(std::is_move_constructible_v<OwnedFake> && std::is_move_assignable_v<OwnedFake>);

// Counts the references that are left.
class Counted : public IUnknown {
  public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override {
        if (iid != IID_IUnknown) return E_NOINTERFACE;
        AddRef();
        *out = this;
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(++references); }
    ULONG STDMETHODCALLTYPE Release() override {
        SetLastError(0);
        return static_cast<ULONG>(--references);
    }
    int references = 1;
};

}  // namespace

TEST(Owners, GiveBackOnceWhateverWasMoved) {
    g_closed = 0;
    int handle = 1;
    {
        OwnedFake first(&handle);
        OwnedFake second = std::move(first);
        EXPECT_EQ(g_closed, 0);
    }
    EXPECT_EQ(g_closed, 1);
}

TEST(Owners, GivingBackKeepsTheLastError) {
    int handle = 1;
    SetLastError(kSomeError);
    { const OwnedFake owner(&handle); }
    EXPECT_EQ(GetLastError(), kSomeError);
}

TEST(Owners, ACallThatGivesAHandleThroughAPointerEndsWhatWasHeld) {
    g_closed = 0;
    int held = 1;
    int given = 10;
    OwnedFake owner(&held);
    const auto call = [&](int** out) { *out = &given; };
    call(Put(owner));
    EXPECT_EQ(g_closed, 1);
    EXPECT_EQ(owner.get(), &given);
    const auto failing = [](int**) {};
    failing(Put(owner));
    EXPECT_EQ(g_closed, 11);
    EXPECT_FALSE(owner);
}

TEST(Owners, AFileThatDidNotOpenIsNone) {
    const OwnedHandle file(
        Opened(CreateFileW(L"\\\\.\\no such thing", GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr)));
    EXPECT_FALSE(file);
}

TEST(Owners, ASelectedObjectGivesWayToTheOneBefore) {
    const OwnedMemoryDC dc(CreateCompatibleDC(nullptr));
    const OwnedBrush brush(CreateSolidBrush(RGB(1, 2, 3)));
    const HGDIOBJ before = GetCurrentObject(dc.get(), OBJ_BRUSH);
    {
        const CSelectedObject selected(dc.get(), brush.get());
        EXPECT_EQ(GetCurrentObject(dc.get(), OBJ_BRUSH), brush.get());
    }
    EXPECT_EQ(GetCurrentObject(dc.get(), OBJ_BRUSH), before);
}

TEST(Owners, AReferenceToAnObjectIsCountedAndGivenBackWithTheLastErrorKept) {
    Counted object;
    SetLastError(kSomeError);
    {
        const CRef<Counted> first(&object);
        EXPECT_EQ(object.references, 2);
        const CRef<IUnknown> second = Query<IUnknown>(first.Get(), IID_IUnknown);
        EXPECT_EQ(object.references, 3);
    }
    EXPECT_EQ(object.references, 1);
    EXPECT_EQ(GetLastError(), kSomeError);
}
