// A tuner device on a handset of its own.
#include "tests/unit/fmdevice/tuner_under_test.h"

#include <filesystem>

namespace test {
namespace {

template <typename Proc>
Proc Export(const char* name) {
    return reinterpret_cast<Proc>(
        reinterpret_cast<void*>(GetProcAddress(LoadLibraryW(L"fmdevice.dll"), name)));
}

std::wstring FreshRoot() {
    static int number = 0;
    wchar_t folder[MAX_PATH] = L"";
    GetTempPathW(MAX_PATH, folder);
    return std::wstring(folder) + L"tuner-test-" + std::to_wstring(GetCurrentProcessId()) + L'-' +
           std::to_wstring(++number);
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

std::string Bytes(const std::wstring& hostPath) {
    const HANDLE file = CreateFileW(hostPath.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                    nullptr, OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE) return "";
    // Piece by piece: a file that grows meanwhile has at least what its header, read first, says.
    std::string bytes;
    char piece[65536];
    DWORD read = 0;
    while (ReadFile(file, piece, sizeof piece, &read, nullptr) && read > 0) bytes.append(piece, read);
    CloseHandle(file);
    return bytes;
}

void WriteBytes(const std::wstring& hostPath, const std::string& bytes) {
    const HANDLE file =
        CreateFileW(hostPath.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_ALWAYS, 0, nullptr);
    ASSERT_NE(file, INVALID_HANDLE_VALUE);
    DWORD written = 0;
    WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
    CloseHandle(file);
}

TunerTest::TunerTest() : root_(FreshRoot()) {
    const std::wstring key = L"Software\\Kora Handset Test\\tuner-" + std::to_wstring(GetCurrentProcessId());
    SetEnvironmentVariableW(L"KORA_STATEKEY", key.c_str());
    // Tests are silent, unless somebody wants to hear them.
    if (GetEnvironmentVariableW(L"KORA_HOSTSOUND", nullptr, 0) == 0)
        SetEnvironmentVariableW(L"KORA_HOSTSOUND", L"0");
    std::filesystem::create_directories(root_ + L"\\Windows");
    handset::SetStateString(L"DeviceRoot", root_);
}

TunerTest::~TunerTest() {
    if (device_ != nullptr) device_->Release();
    RegDeleteTreeW(HKEY_CURRENT_USER, handset::StateKeyPath().c_str());
    std::error_code ignored;
    std::filesystem::remove_all(root_, ignored);
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
