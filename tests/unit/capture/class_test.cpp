// capture.dll as a COM server: its classes, their interfaces, and what keeps it loaded.
#include "handset/capture/class_ids.h"
#include "handset/include/audiowrapper.h"
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
