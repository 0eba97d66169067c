// Injected faults.
#include <atomic>

#include "tests/unit/fmdevice/tuner_under_test.h"

namespace {

class TunerFaults : public test::TunerTest {
  protected:
    void SetUp() override { WriteBand("[9850]\nlevel=45\n"); }
    void Inject(const wchar_t* faults) { handset::SetStateString(L"Fault", faults); }
};

TEST_F(TunerFaults, InitializeFailsAndTheDeviceStaysOff) {
    Inject(L"database-write initialize");
    device_ = test::CreateDevice();
    EXPECT_EQ(device_->Initialize(), E_FAIL);
    EXPECT_EQ(device_->SetChannel(9850), test::kNotReady);
    Inject(L"");
    EXPECT_EQ(device_->Initialize(), S_OK);
}

TEST_F(TunerFaults, CreationFailsAndLeavesNull) {
    Inject(L"create");
    HRESULT result = S_OK;
    EXPECT_EQ(test::CreateDevice(&result), nullptr);
    EXPECT_EQ(result, E_FAIL);
    EXPECT_EQ(test::CanUnloadNow()(), S_OK);
}

TEST_F(TunerFaults, EverySeekFailsAndTheChannelStays) {
    PowerUp();
    Inject(L"seek");
    EXPECT_EQ(device_->SeekNext(), E_FAIL);
    EXPECT_EQ(device_->SeekPrev(), E_FAIL);
    EXPECT_EQ(Channel(), 8750u);
    Inject(L"");
    EXPECT_EQ(device_->SeekNext(), S_OK);
}

std::atomic<int> g_violations{0};

LONG CALLBACK CountViolations(EXCEPTION_POINTERS* exception) {
    if (exception->ExceptionRecord->ExceptionCode != EXCEPTION_ACCESS_VIOLATION)
        return EXCEPTION_CONTINUE_SEARCH;
    ++g_violations;
    return EXCEPTION_CONTINUE_EXECUTION;
}

class TunerCrashes : public TunerFaults {
  protected:
    TunerCrashes() { g_violations = 0; }
    ~TunerCrashes() override { RemoveVectoredExceptionHandler(handler_); }

  private:
    void* const handler_ = AddVectoredExceptionHandler(1, CountViolations);
};

TEST_F(TunerCrashes, TheSignalRaisesAnAccessViolationOnceInAProcess) {
    PowerUp();
    Inject(L"monitor");
    std::int32_t level = 0;
    device_->GetSignal(&level);
    EXPECT_EQ(g_violations, 1);
    EXPECT_EQ(device_->GetSignal(&level), S_OK);
    EXPECT_EQ(g_violations, 1);
}

WCHAR g_text[kRdsTextCapacity];
std::int32_t g_number;
std::uint32_t g_unsigned;
rds_inf g_info;
void* g_interface;

struct Operation {
    const wchar_t* name;
    void (*call)(IFMDevice* device);
};

// Every operation but GetSignal, whose turn was above, in the order of the interface.
const Operation kOperations[] = {
    {L"QueryInterface", [](IFMDevice* d) { d->QueryInterface(IID_IUnknown, &g_interface); }},
    {L"AddRef", [](IFMDevice* d) { d->AddRef(); }},
    {L"Release", [](IFMDevice* d) { d->Release(); }},
    {L"GetVolume", [](IFMDevice* d) { d->GetVolume(&g_unsigned); }},
    {L"GetChannel", [](IFMDevice* d) { d->GetChannel(&g_unsigned); }},
    {L"SetChannel", [](IFMDevice* d) { d->SetChannel(9850); }},
    {L"Reserved", [](IFMDevice* d) { d->Reserved(); }},
    {L"SetSpeaker", [](IFMDevice* d) { d->SetSpeaker(FALSE); }},
    {L"SetBTAudio", [](IFMDevice* d) { d->SetBTAudio(FALSE); }},
    {L"SetMute", [](IFMDevice* d) { d->SetMute(FALSE); }},
    {L"SetVolume", [](IFMDevice* d) { d->SetVolume(50); }},
    {L"SeekNext", [](IFMDevice* d) { d->SeekNext(); }},
    {L"SeekPrev", [](IFMDevice* d) { d->SeekPrev(); }},
    {L"GetRDSData", [](IFMDevice* d) { d->GetRDSData(g_text, &g_number); }},
    {L"GetStereo", [](IFMDevice* d) { d->GetStereo(); }},
    {L"GetAFCount", [](IFMDevice* d) { d->GetAFCount(&g_number); }},
    {L"GetAFItem", [](IFMDevice* d) { d->GetAFItem(0, g_text); }},
    {L"GetRDSInfo", [](IFMDevice* d) { d->GetRDSInfo(&g_info); }},
    {L"GetPTYText", [](IFMDevice* d) { d->GetPTYText(g_text); }},
    {L"Close", [](IFMDevice* d) { d->Close(); }},
    {L"Initialize", [](IFMDevice* d) { d->Initialize(); }},
};
static_assert(std::size(kOperations) == 21, "the interface has 22 operations");

TEST_F(TunerCrashes, EachOperationRaisesItsOwnOnceAndThenWorks) {
    PowerUp();
    device_->AddRef();
    device_->AddRef();  // for the two that are given back
    for (const Operation& operation : kOperations) {
        g_violations = 0;
        Inject((L"seek2 crash:" + std::wstring(operation.name)).c_str());
        operation.call(device_);
        EXPECT_EQ(g_violations, 1) << operation.name;
        operation.call(device_);
        EXPECT_EQ(g_violations, 1) << operation.name;
    }
    Inject(L"");
    // What the calls of QueryInterface and AddRef have taken.
    for (int i = 0; i < 4; ++i) device_->Release();
    std::int32_t level = 0;
    EXPECT_EQ(device_->GetSignal(&level), S_OK);
}

TEST_F(TunerCrashes, OneThatIsNotNamedDoesNotCrash) {
    PowerUp();
    Inject(L"crash:SetCh crash:Other xcrash:SetChannel");
    EXPECT_EQ(device_->SetChannel(9850), S_OK);
    EXPECT_EQ(g_violations, 0);
}

TEST_F(TunerFaults, TheLimitOfReceptionMayBeForOneStationAlone) {
    WriteBand("[9850]\nlevel=45\n[10110]\nlevel=33\n");
    PowerUp();
    device_->SetChannel(9850);
    EXPECT_EQ(handset::StateDword(L"TunedChannel", 0), 9850u);
    handset::SetStateDword(L"SignalLimitChannel", 9850);
    handset::SetStateDword(L"SignalLimit", 10);
    EXPECT_TRUE(test::WaitFor([&] { return Signal() == 10; }));
    device_->SetChannel(10110);
    EXPECT_EQ(Signal(), 33);
    handset::DeleteStateValue(L"SignalLimitChannel");
    EXPECT_TRUE(test::WaitFor([&] { return Signal() == 10; }));
}

}  // namespace
