// The handset under the tests.
#include "tests/unit/capture/fixture.h"

#include <filesystem>

#include "handset/setup/manifest.h"

namespace test {
namespace {

constexpr wchar_t kFamily[] = L"capture-test";

// Beside the program, since it names the DLLs there.
std::wstring ManifestOf(const std::wstring& name) {
    wchar_t program[MAX_PATH] = L"";
    GetModuleFileNameW(nullptr, program, MAX_PATH);
    return std::filesystem::path(program).parent_path().wstring() + L"\\" + name + L".manifest";
}

}  // namespace

void ForgetHandsetOf(DWORD processId) {
    const std::wstring name = HandsetHere::FirstNameIn(kFamily, processId);
    DeleteFileW(ManifestOf(name).c_str());
    HandsetHere::Forget(name);
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

CaptureTest::CaptureTest() : handset_(kFamily), manifest_(ManifestOf(handset_.Name())) {
    std::filesystem::create_directories(Host(L"\\Storage Card"));
    WriteBytes(Host(L"\\Windows\\band.ini"), "[9000]\nlevel=100\nprogramme=tone:440\n");

    CoInitializeEx(nullptr, COINIT_MULTITHREADED);
    WriteBytes(manifest_, panel::ManifestText({L"capture.dll", L"fmdevice.dll"}));
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
}

void CaptureTest::PlayTone(std::uint32_t volume) {
    radio_ = CreateAs<IFMDevice>(CLSID_CFMDevice, IID_IFMDevice);
    ASSERT_TRUE(static_cast<bool>(radio_));
    ASSERT_EQ(radio_->Initialize(), S_OK);
    ASSERT_EQ(radio_->SetChannel(9000), S_OK);
    ASSERT_EQ(radio_->SetVolume(volume), S_OK);
}

}  // namespace test
