// The device as a program sees it that knows its identifiers and the order of its operations, and not how
// this project declares them.
#include <objbase.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <sstream>
#include <string>

#include "handset/state/handset_state.h"
#include "tests/support/handset_here.h"
#include "tests/support/tuner_contract.h"

namespace {

union Argument {
    std::uint32_t number;
    void* pointer;
    std::uintptr_t raw;
};

class TunerSlots : public testing::Test {
  protected:
    void SetUp() override {
        using Proc = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);
        const auto classObject = reinterpret_cast<Proc>(
            reinterpret_cast<void*>(GetProcAddress(LoadLibraryW(L"fmdevice.dll"), "DllGetClassObject")));
        test::WriteBytes(handset::HostPath(L"\\Windows\\band.ini"),
                         "[9850]\nlevel=45\nps=KORA ONE\naf=101.1\n");
        handset::SetStateString(L"TunerLog", L"\\tuner.log");
        CLSID clsid;
        IID iid;
        ASSERT_EQ(CLSIDFromString(test::kTunerClassText, &clsid), S_OK);
        ASSERT_EQ(IIDFromString(test::kTunerInterfaceText, &iid), S_OK);
        void* factory = nullptr;
        ASSERT_EQ(classObject(clsid, IID_IClassFactory, &factory), S_OK);
        ASSERT_EQ(static_cast<IClassFactory*>(factory)->CreateInstance(nullptr, iid, &device_), S_OK);
    }
    void TearDown() override {
        if (device_ != nullptr) static_cast<IUnknown*>(device_)->Release();
    }
    // Calls the operation in that slot, and gives the tuner's own word for it.
    std::string Call(int slot, Argument first = {}, Argument second = {}) const {
        const std::string before = Log();
        using Operation = HRESULT(STDMETHODCALLTYPE*)(void* self, std::uintptr_t, std::uintptr_t);
        (*static_cast<Operation**>(device_))[slot](device_, first.raw, second.raw);
        std::string name;
        std::istringstream(Log().substr(before.size())) >> name;
        return name;
    }
    static std::string Log() { return test::Bytes(handset::HostPath(L"\\tuner.log")); }
    static Argument Number(std::uint32_t number) {
        Argument argument{};
        argument.number = number;
        return argument;
    }
    static Argument Out(void* place) {
        Argument argument{};
        argument.pointer = place;
        return argument;
    }

    const test::HandsetHere handset_{L"tuner-slots"};
    void* device_ = nullptr;
};

TEST_F(TunerSlots, EachOperationIsInItsPlace) {
    std::uint32_t number = 0;
    wchar_t text[260];
    std::int32_t services[5] = {};
    // clang-format off
    const struct {
        int slot;
        const char* name;
        Argument first, second;
    } kSlots[] = {
        { 7, "Initialize",  {},                {}},
        { 3, "GetVolume",   Out(&number),      {}},
        { 6, "SetChannel",  Number(9850),      {}},
        { 4, "GetChannel",  Out(&number),      {}},
        { 9, "SetSpeaker",  Number(0),         {}},
        {10, "SetBTAudio",  Number(0),         {}},
        {11, "SetMute",     Number(0),         {}},
        {12, "SetVolume",   Number(30),        {}},
        {13, "SeekNext",    {},                {}},
        {14, "SeekPrev",    {},                {}},
        {15, "GetSignal",   Out(&number),      {}},
        {16, "GetRDSData",  Out(text),         Out(&number)},
        {17, "GetStereo",   {},                {}},
        {18, "GetAFCount",  Out(&number),      {}},
        { 8, "Reserved",    {},                {}},
        {19, "GetAFItem",   Number(0),         Out(text)},
        {20, "GetRDSInfo",  Out(services),     {}},
        {21, "GetPTYText",  Out(text),         {}},
        { 5, "Close",       {},                {}},
    };
    // clang-format on
    for (const auto& row : kSlots) EXPECT_EQ(Call(row.slot, row.first, row.second), row.name) << row.slot;
}

TEST_F(TunerSlots, TheChannelIsTunedAndReadInUnitsOf10kHz) {
    Call(7);
    Call(6, Number(9850));
    std::uint32_t channel = 0;
    Call(4, Out(&channel));
    EXPECT_EQ(channel, 9850u);
}

}  // namespace
