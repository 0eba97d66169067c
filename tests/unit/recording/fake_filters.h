// The fake graph's filters, and what they are asked for: the pin's formats, the property bag, the file sinks
// and the encoder's wrapper.
#pragma once

#include <algorithm>

#include "audiowrapper.h"
#include "tests/unit/recording/fake_object.h"

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"  // COM interfaces have none, by their binary form

namespace test {

class FakeStreamConfig : public Fake<IAMStreamConfig> {
  public:
    using Fake::Fake;
    HRESULT STDMETHODCALLTYPE SetFormat(AM_MEDIA_TYPE* type) override {
        const auto* format = reinterpret_cast<WAVEFORMATEX*>(type->pbFormat);
        return Note("SetFormat",
                    std::to_string(format->nSamplesPerSec) + " " + std::to_string(format->nChannels) + " " +
                        std::to_string(format->wBitsPerSample) + " tag " +
                        std::to_string(format->wFormatTag) + " align " + std::to_string(format->nBlockAlign) +
                        " bytes " + std::to_string(format->nAvgBytesPerSec));
    }
    UNUSED(GetFormat, (AM_MEDIA_TYPE**))
    HRESULT STDMETHODCALLTYPE GetNumberOfCapabilities(int* count, int* size) override {
        *count = static_cast<int>(g_graph->capabilities.size());
        *size = g_graph->capabilitySize;
        return Note("GetNumberOfCapabilities");
    }
    HRESULT STDMETHODCALLTYPE GetStreamCaps(int index, AM_MEDIA_TYPE** type, BYTE* capability) override {
        const HRESULT result = Note("GetStreamCaps", std::to_string(index));
        if (FAILED(result)) return result;
        std::fill_n(capability, g_graph->capabilitySize, BYTE{0xAA});
        *type = g_graph->NewMediaType(g_graph->capabilities[static_cast<std::size_t>(index)]);
        return S_OK;
    }
};

class FakePropertyBag : public Fake<IPersistPropertyBag> {
  public:
    using Fake::Fake;
    UNUSED(GetClassID, (CLSID*))
    UNUSED(InitNew, ())
    HRESULT STDMETHODCALLTYPE Load(IPropertyBag* bag, IErrorLog* log) override {
        return Note("Load", bag == nullptr && log == nullptr ? "null null" : "something");
    }
    UNUSED(Save, (IPropertyBag*, BOOL, BOOL))
};

template <typename Interface>
class FakeSinkOf : public Fake<Interface> {
  public:
    using Fake<Interface>::Fake;
    HRESULT STDMETHODCALLTYPE SetFileName(LPCOLESTR path, const AM_MEDIA_TYPE* type) override {
        return this->Note("SetFileName",
                          Narrow(path) + " " + NameOf(&type->majortype) + " " + NameOf(&type->subtype));
    }
    HRESULT STDMETHODCALLTYPE GetCurFile(LPOLESTR*, AM_MEDIA_TYPE*) override {
        return this->Note("GetCurFile (unexpected)");
    }
};

using FakeSink = FakeSinkOf<IFileSinkFilter>;

class FakeSink2 : public FakeSinkOf<IFileSinkFilter2> {
  public:
    using FakeSinkOf::FakeSinkOf;
    UNUSED(SetMode, (DWORD))
    UNUSED(GetMode, (DWORD*))
};

class FakeWrapper : public Fake<IAudioWrapperFilter> {
  public:
    using Fake::Fake;
    HRESULT STDMETHODCALLTYPE Init(const GUID* codec, const GUID* category) override {
        return Note("Init", NameOf(codec) + " " + NameOf(category));
    }
};

class FakeFilter : public Fake<IBaseFilter> {
  public:
    using Fake::Fake;
    const std::string& Name() const { return m_name; }
    UNUSED(GetClassID, (CLSID*))
    UNUSED(Stop, ())
    UNUSED(Pause, ())
    UNUSED(Run, (REFERENCE_TIME))
    UNUSED(GetState, (DWORD, FILTER_STATE*))
    UNUSED(SetSyncSource, (IReferenceClock*))
    UNUSED(GetSyncSource, (IReferenceClock**))
    UNUSED(EnumPins, (IEnumPins**))
    UNUSED(FindPin, (LPCWSTR, IPin**))
    UNUSED(QueryFilterInfo, (FILTER_INFO*))
    UNUSED(JoinFilterGraph, (IFilterGraph*, LPCWSTR))
    UNUSED(QueryVendorInfo, (LPWSTR*))

  protected:
    HRESULT Answer(REFIID iid, void** object) override {
        if (m_name == "captureFilter" && iid == IID_IPersistPropertyBag) {
            *object = static_cast<IPersistPropertyBag*>(new FakePropertyBag("propertyBag"));
        } else if (m_name == "writer" && iid == IID_IFileSinkFilter) {
            *object = static_cast<IFileSinkFilter*>(new FakeSink("sink"));
        } else if (m_name == "multiplexer" && iid == IID_IFileSinkFilter2) {
            *object = static_cast<IFileSinkFilter2*>(new FakeSink2("sink2"));
        } else if (m_name == "encoder" && iid == IID_IAudioWrapperFilter) {
            *object = static_cast<IAudioWrapperFilter*>(new FakeWrapper("wrapper"));
        }
        return *object != nullptr ? S_OK : E_NOINTERFACE;
    }
};

inline std::string NameOf(IBaseFilter* filter) {
    return filter == nullptr ? "null" : static_cast<FakeFilter*>(filter)->Name();
}

}  // namespace test
#pragma GCC diagnostic pop
