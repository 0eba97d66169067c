// The monitor allocates no memory of the process's heap: it may be suspended while it holds the heap's lock,
// and everybody else would wait for that lock.
#include <cstdlib>
#include <new>

#include "shell/monitor_thread.h"
#include "tests/support/device_settings.h"
#include "tests/unit/shell/shell_test.h"

namespace {

thread_local bool t_counts = false;
thread_local int t_allocations = 0;

void* Allocate(std::size_t size) {
    if (t_counts) ++t_allocations;
    void* memory = std::malloc(size);
    if (memory == nullptr) throw std::bad_alloc();
    return memory;
}

}  // namespace

void* operator new(std::size_t size) {
    return Allocate(size);
}
void* operator new[](std::size_t size) {
    return Allocate(size);
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete[](void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}
void operator delete[](void* memory, std::size_t) noexcept {
    std::free(memory);
}

namespace {

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"  // COM interfaces have none, by their binary form

// Answers without writing anything down.
class QuietDevice : public test::FakeFMDevice {
  public:
    std::int32_t level = 10;
    std::int32_t kind = kRdsServiceName;
    const WCHAR* text = L"";

    HRESULT STDMETHODCALLTYPE GetSignal(std::int32_t* out) override {
        *out = level;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetStereo() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE GetVolume(std::uint32_t* out) override {
        *out = 50;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE SetVolume(std::uint32_t) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE SetMute(BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE SetSpeaker(BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE SetChannel(std::uint32_t) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE GetRDSData(WCHAR* out, std::int32_t* outKind) override {
        std::wcscpy(out, text);
        *outKind = kind;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetPTYText(WCHAR* out) override {
        std::wcscpy(out, text);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetAFCount(std::int32_t* count) override {
        *count = 3;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetAFItem(std::int32_t index, WCHAR* out) override {
        constexpr const WCHAR* kItems[] = {L"98.5", L"101.1", L"103.4"};
        std::wcscpy(out, kItems[index]);
        return S_OK;
    }
};

#pragma GCC diagnostic pop

class MonitorMemory : public test::ShellTest {
  protected:
    MonitorMemory() {
        static_cast<SkinTables&>(state->m_skin) = MainScreenTables();
        state->m_skin.hWnd = window;
        g_app.pFMDevice = &quiet;
        for (const WCHAR* setting : {kEnableMute, kEnableRDSPSPTY, kEnableAFAutoSwitch, kSaveFileType})
            settings.Set(setting, 1);
    }
    int AllocationsOfARound() {
        t_allocations = 0;
        t_counts = true;
        RunMonitorRound(*state, window);
        t_counts = false;
        return t_allocations;
    }

    test::DeviceSettings settings;
    QuietDevice quiet;
};

TEST_F(MonitorMemory, ARoundAllocatesNoneWhateverItHasToShow) {
    const std::wstring longest(kRdsTextCapacity - 1, L'M');
    const std::wstring other(kRdsTextCapacity - 1, L'N');
    g_app.bRecordingActive = TRUE;
    for (const std::int32_t kind : {kRdsServiceName, kRdsRadioText, kRdsProgramText, kRdsServiceNameWithAF}) {
        for (const std::int32_t level : {5, 45}) {
            for (const WCHAR* text : {L"", longest.c_str(), L"A text of the usual length", other.c_str()}) {
                quiet.kind = kind;
                quiet.level = level;
                quiet.text = text;
                ASSERT_EQ(AllocationsOfARound(), 0) << "kind " << kind << ", level " << level;
            }
        }
    }
}

TEST_F(MonitorMemory, TheLongestTextOfTheReceiverIsKeptWhole) {
    const std::wstring longest(kRdsTextCapacity - 1, L'M');
    quiet.text = longest.c_str();
    quiet.kind = kRdsRadioText;
    RunMonitorRound(*state, window);
    int kept = 0;
    for (const SkinShownText& shown : state->m_skin.shownTexts) kept += shown.szText == longest;
    EXPECT_EQ(kept, 2);  // the radio text and the programme's type
}

}  // namespace
