// The handset under the tests.
#include "tests/unit/capture/fixture.h"

#include <filesystem>

#include "handset/panel/encoding.h"
#include "handset/panel/manifest.h"

namespace test {
namespace {

std::wstring UniqueName() {
    static int number = 0;
    return L"capture-test-" + std::to_wstring(GetCurrentProcessId()) + L'-' + std::to_wstring(++number);
}

std::wstring TemporaryFolder() {
    wchar_t folder[MAX_PATH] = L"";
    GetTempPathW(MAX_PATH, folder);
    return folder;
}

std::wstring ProgramFolder() {
    wchar_t program[MAX_PATH] = L"";
    GetModuleFileNameW(nullptr, program, MAX_PATH);
    return std::filesystem::path(program).parent_path().wstring() + L"\\";
}

}  // namespace

CRef<IUnknown> Create(const CLSID& classId) {
    void* made = nullptr;
    CRef<IUnknown> object;
    if (SUCCEEDED(CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown, &made)))
        *object.Put() = static_cast<IUnknown*>(made);
    return object;
}

ULONG OtherReferences(IUnknown* object) {
    object->AddRef();
    return object->Release() - 1;
}

std::string Bytes(const std::wstring& hostPath) {
    const HANDLE file = CreateFileW(hostPath.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                    nullptr, OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE) return "";
    std::string bytes;
    char piece[65536];
    DWORD read = 0;
    while (ReadFile(file, piece, sizeof piece, &read, nullptr) && read > 0) bytes.append(piece, read);
    CloseHandle(file);
    return bytes;
}

CaptureTest::CaptureTest()
    : root_(TemporaryFolder() + UniqueName()), manifest_(ProgramFolder() + UniqueName() + L".manifest") {
    const std::wstring key = L"Software\\Kora Handset Test\\" + UniqueName();
    SetEnvironmentVariableW(L"KORA_STATEKEY", key.c_str());
    SetEnvironmentVariableW(L"KORA_HOSTSOUND", L"0");
    std::filesystem::create_directories(root_ + L"\\Windows");
    std::filesystem::create_directories(root_ + L"\\Storage Card");
    handset::SetStateString(L"DeviceRoot", root_);
    panel::WriteWholeFile(root_ + L"\\Windows\\band.ini", "[9000]\nlevel=100\nprogramme=tone:440\n");

    CoInitializeEx(nullptr, COINIT_MULTITHREADED);
    panel::WriteWholeFile(manifest_, panel::ManifestText({L"capture.dll", L"fmdevice.dll"}));
    ACTCTXW context{};
    context.cbSize = sizeof context;
    context.lpSource = manifest_.c_str();
    activation_ = CreateActCtxW(&context);
    ActivateActCtx(activation_, &cookie_);
}

CaptureTest::~CaptureTest() {
    radio_.Reset();
    DeactivateActCtx(0, cookie_);
    ReleaseActCtx(activation_);
    CoUninitialize();
    DeleteFileW(manifest_.c_str());
    RegDeleteTreeW(HKEY_CURRENT_USER, handset::StateKeyPath().c_str());
    std::error_code ignored;
    std::filesystem::remove_all(root_, ignored);
}

void CaptureTest::PlayTone(std::uint32_t volume) {
    radio_ = CreateAs<IFMDevice>(CLSID_CFMDevice, IID_IFMDevice);
    ASSERT_TRUE(static_cast<bool>(radio_));
    ASSERT_EQ(radio_->Initialize(), S_OK);
    ASSERT_EQ(radio_->SetChannel(9000), S_OK);
    ASSERT_EQ(radio_->SetVolume(volume), S_OK);
}

}  // namespace test
