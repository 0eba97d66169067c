// fmdevice.dll as a COM server.
#include <objbase.h>

#include <filesystem>

#include "tests/support/tuner_contract.h"
#include "tests/unit/fmdevice/tuner_under_test.h"

namespace {

using test::CanUnloadNow;
using test::Factory;
using test::GetClassObject;

void* const kJunk = reinterpret_cast<void*>(0x1234);

class TunerClass : public test::TunerTest {};

TEST_F(TunerClass, TheClassObjectIsAFactoryAndNothingElse) {
    void* out = kJunk;
    ASSERT_EQ(GetClassObject()(CLSID_CFMDevice, IID_IClassFactory, &out), S_OK);
    ASSERT_NE(out, nullptr);
    static_cast<IClassFactory*>(out)->Release();
    out = kJunk;
    EXPECT_EQ(GetClassObject()(CLSID_CFMDevice, IID_IPersist, &out), E_NOINTERFACE);
    EXPECT_EQ(out, nullptr);
    EXPECT_EQ(GetClassObject()(CLSID_CFMDevice, IID_IClassFactory, nullptr), E_POINTER);
}

TEST_F(TunerClass, AnotherClassIsNotAvailable) {
    void* out = kJunk;
    EXPECT_EQ(GetClassObject()(IID_IFMDevice, IID_IClassFactory, &out), CLASS_E_CLASSNOTAVAILABLE);
    EXPECT_EQ(out, nullptr);
}

TEST_F(TunerClass, ADeviceCannotBeAggregated) {
    void* out = kJunk;
    EXPECT_EQ(Factory()->CreateInstance(Factory(), IID_IUnknown, &out), CLASS_E_NOAGGREGATION);
    EXPECT_EQ(out, nullptr);
}

TEST_F(TunerClass, AnInterfaceThatIsNotThereLeavesNullAndNoObject) {
    void* out = kJunk;
    EXPECT_EQ(Factory()->CreateInstance(nullptr, IID_IDispatch, &out), E_NOINTERFACE);
    EXPECT_EQ(out, nullptr);
    EXPECT_EQ(CanUnloadNow()(), S_OK);
}

TEST_F(TunerClass, ADeviceHasItsInterfaceAndIUnknownAndNoOther) {
    device_ = test::CreateDevice();
    ASSERT_NE(device_, nullptr);
    for (const IID& iid : {IID_IUnknown, IID_IFMDevice}) {
        void* out = nullptr;
        ASSERT_EQ(device_->QueryInterface(iid, &out), S_OK);
        EXPECT_EQ(out, device_);
        EXPECT_EQ(device_->Release(), 1u);
    }
    for (const IID& iid : {IID_IDispatch, IID_IPersist, IID_IMarshal, IID_IClassFactory}) {
        void* out = kJunk;
        EXPECT_EQ(device_->QueryInterface(iid, &out), E_NOINTERFACE);
        EXPECT_EQ(out, nullptr);
    }
    EXPECT_EQ(device_->QueryInterface(IID_IUnknown, nullptr), E_POINTER);
}

TEST_F(TunerClass, ReferencesAreCountedAndTheLastOneFreesTheLibrary) {
    device_ = test::CreateDevice();
    EXPECT_EQ(CanUnloadNow()(), S_FALSE);
    EXPECT_EQ(device_->AddRef(), 2u);
    EXPECT_EQ(device_->Release(), 1u);
    EXPECT_EQ(device_->Release(), 0u);
    device_ = nullptr;
    EXPECT_EQ(CanUnloadNow()(), S_OK);
}

TEST_F(TunerClass, ALockOfTheFactoryKeepsTheLibrary) {
    ASSERT_EQ(Factory()->LockServer(TRUE), S_OK);
    EXPECT_EQ(CanUnloadNow()(), S_FALSE);
    ASSERT_EQ(Factory()->LockServer(FALSE), S_OK);
    EXPECT_EQ(CanUnloadNow()(), S_OK);
}

// As UI.exe finds it: no registration, a manifest beside the program.
TEST_F(TunerClass, AManifestIsEnoughForCoCreateInstance) {
    wchar_t program[MAX_PATH] = L"";
    GetModuleFileNameW(nullptr, program, MAX_PATH);
    const std::wstring folder = std::filesystem::path(program).parent_path().wstring();
    const std::wstring manifest =
        folder + L"\\tuner-test-" + std::to_wstring(GetCurrentProcessId()) + L".manifest";
    test::WriteBytes(manifest,
                     "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\r\n"
                     "<assembly xmlns=\"urn:schemas-microsoft-com:asm.v1\" manifestVersion=\"1.0\">\r\n"
                     "<assemblyIdentity type=\"win32\" name=\"Kora.Test\" version=\"1.0.0.0\"/>\r\n"
                     "<file name=\"fmdevice.dll\"><comClass clsid=\"" TEST_TUNER_CLASS
                     "\""
                     " threadingModel=\"Both\"/></file>\r\n</assembly>\r\n");
    ACTCTXW context{};
    context.cbSize = sizeof context;
    context.lpSource = manifest.c_str();
    const HANDLE activation = CreateActCtxW(&context);
    ASSERT_NE(activation, INVALID_HANDLE_VALUE) << GetLastError();
    ULONG_PTR cookie = 0;
    ASSERT_TRUE(ActivateActCtx(activation, &cookie));
    ASSERT_EQ(CoInitializeEx(nullptr, COINIT_MULTITHREADED), S_OK);
    void* out = nullptr;
    EXPECT_EQ(CoCreateInstance(CLSID_CFMDevice, nullptr, CLSCTX_INPROC_SERVER, IID_IFMDevice, &out), S_OK);
    if (out != nullptr) {
        EXPECT_EQ(static_cast<IFMDevice*>(out)->Initialize(), S_OK);
        EXPECT_EQ(static_cast<IFMDevice*>(out)->Release(), 0u);
    }
    CoUninitialize();
    DeactivateActCtx(0, cookie);
    ReleaseActCtx(activation);
    DeleteFileW(manifest.c_str());
}

}  // namespace
