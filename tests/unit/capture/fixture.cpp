// The handset under the tests.
#include "tests/unit/capture/fixture.h"

#include <filesystem>

#include "handset/panel/encoding.h"
#include "handset/panel/manifest.h"

namespace test {
namespace {

std::wstring NameOf(DWORD processId, int number) {
    return L"capture-test-" + std::to_wstring(processId) + L'-' + std::to_wstring(number);
}

std::wstring NextName() {
    static int number = 0;
    return NameOf(GetCurrentProcessId(), ++number);
}

std::wstring KeyOf(const std::wstring& name) {
    return L"Software\\Kora Handset Test\\" + name;
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

std::wstring RootOf(const std::wstring& name) {
    return TemporaryFolder() + name;
}

std::wstring ManifestOf(const std::wstring& name) {
    return ProgramFolder() + name + L".manifest";
}

void Forget(const std::wstring& name) {
    DeleteFileW(ManifestOf(name).c_str());
    RegDeleteTreeW(HKEY_CURRENT_USER, KeyOf(name).c_str());
    std::error_code ignored;
    std::filesystem::remove_all(RootOf(name), ignored);
}

}  // namespace

void ForgetHandsetOf(DWORD processId) {
    Forget(NameOf(processId, 1));
}

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

CaptureTest::CaptureTest() : name_(NextName()), root_(RootOf(name_)), manifest_(ManifestOf(name_)) {
    // Numbers of processes come again: an earlier run may have ended here without cleaning up.
    Forget(name_);
    SetEnvironmentVariableW(L"KORA_STATEKEY", KeyOf(name_).c_str());
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
    Forget(name_);
}

void CaptureTest::PlayTone(std::uint32_t volume) {
    radio_ = CreateAs<IFMDevice>(CLSID_CFMDevice, IID_IFMDevice);
    ASSERT_TRUE(static_cast<bool>(radio_));
    ASSERT_EQ(radio_->Initialize(), S_OK);
    ASSERT_EQ(radio_->SetChannel(9000), S_OK);
    ASSERT_EQ(radio_->SetVolume(volume), S_OK);
}

}  // namespace test
