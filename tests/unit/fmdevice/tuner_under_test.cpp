// A tuner device on a handset of its own.
#include "tests/unit/fmdevice/tuner_under_test.h"
#include "handset/state/process_start.h"

namespace test {
namespace {

template <typename Proc>
Proc Export(const char* name) {
    return reinterpret_cast<Proc>(
        reinterpret_cast<void*>(GetProcAddress(LoadLibraryW(L"fmdevice.dll"), name)));
}

}  // namespace

ClassObjectProc GetClassObject() {
    return Export<ClassObjectProc>("DllGetClassObject");
}

CanUnloadProc CanUnloadNow() {
    return Export<CanUnloadProc>("DllCanUnloadNow");
}

IClassFactory* Factory() {
    void* factory = nullptr;
    GetClassObject()(CLSID_CFMDevice, IID_IClassFactory, &factory);
    return static_cast<IClassFactory*>(factory);
}

IFMDevice* CreateDevice(HRESULT* result) {
    void* device = nullptr;
    const HRESULT created = Factory()->CreateInstance(nullptr, IID_IFMDevice, &device);
    if (result != nullptr) *result = created;
    return static_cast<IFMDevice*>(device);
}

void ExpectToPassAtSixtyTimesTheSpeed(const std::wstring& filter) {
    wchar_t program[MAX_PATH] = L"";
    GetModuleFileNameW(nullptr, program, MAX_PATH);
    std::wstring command =
        L"\"" + std::wstring(program) + L"\" --gtest_also_run_disabled_tests --gtest_filter=" + filter;
    SetEnvironmentVariableW(L"KORA_CLOCKRATE", L"60");
    STARTUPINFOW start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION process{};
    const BOOL started = handset::StartProcess(program, command.data(), nullptr, nullptr, FALSE, 0, nullptr,
                                               nullptr, &start, &process);
    SetEnvironmentVariableW(L"KORA_CLOCKRATE", nullptr);
    ASSERT_TRUE(started);
    EXPECT_EQ(WaitForSingleObject(process.hProcess, 120000), WAIT_OBJECT_0);
    DWORD code = 1;
    GetExitCodeProcess(process.hProcess, &code);
    EXPECT_EQ(code, 0u);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
}

TunerTest::TunerTest() : handset_(L"tuner-test") {}

TunerTest::~TunerTest() {
    if (device_ != nullptr) device_->Release();
}

void TunerTest::PowerUp() {
    device_ = CreateDevice();
    ASSERT_NE(device_, nullptr);
    ASSERT_EQ(device_->Initialize(), S_OK);
}

std::uint32_t TunerTest::Channel() {
    std::uint32_t channel = 0;
    EXPECT_EQ(device_->GetChannel(&channel), S_OK);
    return channel;
}

std::int32_t TunerTest::Signal() {
    std::int32_t level = -1;
    EXPECT_EQ(device_->GetSignal(&level), S_OK);
    return level;
}

}  // namespace test
