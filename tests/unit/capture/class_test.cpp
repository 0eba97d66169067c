// capture.dll as a COM server: its classes, their interfaces, and what keeps it loaded.
#include "handset/capture/graph/class_ids.h"
#include "handset/include/audiowrapper.h"
#include "handset/setup/host_builder.h"
#include "handset/setup/manifest.h"
#include "tests/unit/capture/fixture.h"

namespace {

using test::CRef;

constexpr CLSID kClasses[] = {capture::kClassGraphBuilder, capture::kClassAudioCapture,
                              capture::kClassWavWriter, capture::kClassAmrEncoder,
                              capture::kClassMultiplexer};

template <typename Proc>
Proc Export(const char* name) {
    return reinterpret_cast<Proc>(
        reinterpret_cast<void*>(GetProcAddress(LoadLibraryW(L"capture.dll"), name)));
}

HRESULT ClassObject(const CLSID& classId, const IID& iid, void** out) {
    using Proc = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);
    return Export<Proc>("DllGetClassObject")(classId, iid, out);
}

HRESULT CanUnload() {
    return Export<HRESULT(STDAPICALLTYPE*)()>("DllCanUnloadNow")();
}

CRef<IClassFactory> Factory(const CLSID& classId) {
    void* out = nullptr;
    CRef<IClassFactory> factory;
    if (SUCCEEDED(ClassObject(classId, IID_IClassFactory, &out)))
        *factory.Put() = static_cast<IClassFactory*>(out);
    return factory;
}

bool Has(IUnknown* object, const IID& iid) {
    return static_cast<bool>(test::Query<IUnknown>(object, iid));
}

class Classes : public test::CaptureTest {};

TEST_F(Classes, AreFoundThroughTheManifest) {
    for (const CLSID& classId : kClasses) EXPECT_TRUE(static_cast<bool>(test::Create(classId)));
}

// What the radio gets: the host's builder where that controls streams, as the desktop's does, and the
// handset's otherwise, as under Wine.
TEST(GraphBuilderOfTheHost, IsLeftAloneWhereItControlsStreams) {
    for (const HRESULT answer : {S_OK, E_UNEXPECTED, E_POINTER, E_INVALIDARG, E_FAIL})
        EXPECT_FALSE(panel::LacksStreamControl(S_OK, answer)) << answer;
    EXPECT_TRUE(panel::LacksStreamControl(S_OK, E_NOTIMPL));
    EXPECT_TRUE(panel::LacksStreamControl(REGDB_E_CLASSNOTREG, REGDB_E_CLASSNOTREG));
    EXPECT_TRUE(panel::LacksStreamControl(E_NOINTERFACE, E_NOINTERFACE));
}

TEST(GraphBuilderOfTheHost, IsNamedInTheManifestOnlyWhereTheHandsetsTakesItsPlace) {
    const std::string manifest = panel::ManifestText({L"capture.dll", L"fmdevice.dll"});
    const bool named = manifest.find("{bf87b6e0-8c27-11d0-b3f0-00aa003761c5}") != std::string::npos;
    EXPECT_EQ(named, panel::HostLacksStreamControl());
    for (const char* filter :
         {"{e30629d2-27e5-11ce-875d-00608cb78066}", "{a3abfe59-c33f-4e34-a0c4-cec0ce25ec9e}",
          "{94297043-bd82-4dfd-b0de-8177739c6d20}", "{6a59220b-a696-4b79-ad80-e3c239a9d788}"})
        EXPECT_NE(manifest.find(filter), std::string::npos) << filter;
}

TEST_F(Classes, AnObjectThatIsReleasedIsGone) {
    EXPECT_EQ(CanUnload(), S_OK);
    for (const CLSID& classId : kClasses) {
        CRef<IUnknown> object = test::Create(classId);
        EXPECT_EQ(test::OtherReferences(object.Get()), 0u);
        EXPECT_EQ(CanUnload(), S_FALSE);
        EXPECT_EQ(object.Detach()->Release(), 0u);
        EXPECT_EQ(CanUnload(), S_OK);
    }
}

TEST_F(Classes, OtherClassesAreRefused) {
    void* out = &out;
    EXPECT_EQ(ClassObject(CLSID_FilterGraph, IID_IClassFactory, &out), CLASS_E_CLASSNOTAVAILABLE);
    EXPECT_EQ(out, nullptr);
    EXPECT_EQ(ClassObject(capture::kClassWavWriter, IID_IClassFactory, nullptr), E_POINTER);
    out = &out;
    EXPECT_EQ(ClassObject(capture::kClassWavWriter, IID_IBaseFilter, &out), E_NOINTERFACE);
    EXPECT_EQ(out, nullptr);
}

TEST_F(Classes, AFactoryMakesNoPartOfAnotherObject) {
    for (const CLSID& classId : kClasses) {
        const CRef<IClassFactory> factory = Factory(classId);
        ASSERT_TRUE(static_cast<bool>(factory));
        void* out = &out;
        EXPECT_EQ(factory->CreateInstance(factory.Get(), IID_IUnknown, &out), CLASS_E_NOAGGREGATION);
        EXPECT_EQ(out, nullptr);
        EXPECT_EQ(factory->CreateInstance(nullptr, IID_IUnknown, nullptr), E_POINTER);
        EXPECT_EQ(factory->CreateInstance(nullptr, IID_IStream, &out), E_NOINTERFACE);
        EXPECT_EQ(out, nullptr);
    }
}

TEST_F(Classes, ALockOfAFactoryKeepsTheLibrary) {
    CRef<IClassFactory> factory = Factory(capture::kClassWavWriter);
    ASSERT_EQ(factory->LockServer(TRUE), S_OK);
    factory.Reset();
    EXPECT_EQ(CanUnload(), S_FALSE);
    factory = Factory(capture::kClassWavWriter);
    ASSERT_EQ(factory->LockServer(FALSE), S_OK);
    factory.Reset();
    EXPECT_EQ(CanUnload(), S_OK);
}

TEST_F(Classes, EachHasItsInterfacesAndNoOthers) {
    const struct {
        CLSID classId;
        std::vector<IID> has;
        std::vector<IID> lacks;
    } rows[] = {
        {capture::kClassAudioCapture,
         {IID_IPersist, IID_IMediaFilter, IID_IBaseFilter, IID_IPersistPropertyBag, IID_IReferenceClock,
          IID_IAMFilterMiscFlags},
         {IID_IFileSinkFilter, IID_IMediaSeeking, IID_IAMStreamConfig, IID_IAudioWrapperFilter}},
        {capture::kClassWavWriter,
         {IID_IPersist, IID_IMediaFilter, IID_IBaseFilter, IID_IFileSinkFilter, IID_IFileSinkFilter2,
          IID_IAMFilterMiscFlags},
         {IID_IPersistPropertyBag, IID_IReferenceClock, IID_IMediaSeeking, IID_IAudioWrapperFilter}},
        {capture::kClassMultiplexer,
         {IID_IPersist, IID_IMediaFilter, IID_IBaseFilter, IID_IFileSinkFilter, IID_IFileSinkFilter2,
          IID_IAMFilterMiscFlags},
         {IID_IPersistPropertyBag, IID_IReferenceClock, IID_IMediaSeeking, IID_IAudioWrapperFilter}},
        {capture::kClassAmrEncoder,
         {IID_IPersist, IID_IMediaFilter, IID_IBaseFilter, IID_IAudioWrapperFilter},
         {IID_IFileSinkFilter, IID_IReferenceClock, IID_IMediaSeeking, IID_IAMFilterMiscFlags}},
        {capture::kClassGraphBuilder, {IID_ICaptureGraphBuilder2}, {IID_IBaseFilter, IID_IGraphBuilder}},
    };
    for (const auto& row : rows) {
        const CRef<IUnknown> object = test::Create(row.classId);
        for (const IID& iid : row.has) EXPECT_TRUE(Has(object.Get(), iid)) << std::hex << iid.Data1;
        for (const IID& iid : row.lacks) EXPECT_FALSE(Has(object.Get(), iid)) << std::hex << iid.Data1;
        EXPECT_EQ(object->QueryInterface(IID_IUnknown, nullptr), E_POINTER);
    }
}

}  // namespace
