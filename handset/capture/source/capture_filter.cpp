// The filter around the capture pin. It brings the handset's clock, so that a graph's time is the handset's.
#include "handset/capture/source/capture_filter.h"

#include "handset/capture/graph/class_ids.h"
#include "handset/capture/graph/filter.h"
#include "handset/capture/graph/reference_clock.h"
#include "handset/capture/source/capture_pin.h"

namespace capture {
namespace {

class CCaptureFilter final : public CFilter, public IPersistPropertyBag, public IAMFilterMiscFlags {
  public:
    CCaptureFilter() : CFilter(kClassAudioCapture), clock_(static_cast<IBaseFilter*>(this)), pin_(this) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override {
        IBaseFilter* const filter = this;
        IPersistPropertyBag* const bag = this;
        IAMFilterMiscFlags* const flags = this;
        return AnswerQuery({{IID_IUnknown, filter},
                            {IID_IPersist, filter},
                            {IID_IMediaFilter, filter},
                            {IID_IBaseFilter, filter},
                            {IID_IPersistPropertyBag, bag},
                            {IID_IAMFilterMiscFlags, flags},
                            {IID_IReferenceClock, &clock_}},
                           iid, out);
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return CFilter::AddRef(); }
    ULONG STDMETHODCALLTYPE Release() override { return CFilter::Release(); }
    HRESULT STDMETHODCALLTYPE GetClassID(CLSID* classId) override { return CFilter::GetClassID(classId); }

    // There is one device, the radio, and nothing about it to choose: any bag will do, and none.
    HRESULT STDMETHODCALLTYPE InitNew() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE Load(IPropertyBag*, IErrorLog*) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE Save(IPropertyBag*, BOOL, BOOL) override { return E_NOTIMPL; }

    ULONG STDMETHODCALLTYPE GetMiscFlags() override { return AM_FILTER_MISC_FLAGS_IS_SOURCE; }

  protected:
    std::vector<CPin*> Pins() override { return {&pin_}; }
    HRESULT OnPause() override { return pin_.Open(); }
    HRESULT OnRun(REFERENCE_TIME start) override {
        pin_.Run(start);
        return S_OK;
    }
    void OnHalt() override { pin_.Halt(); }
    void OnStop() override { pin_.Close(); }
    // There is no sound before its time.
    HRESULT PausedState() const override { return VFW_S_CANT_CUE; }

  private:
    CHandsetClock clock_;
    CCapturePin pin_;
};

}  // namespace

HRESULT CreateCaptureFilter(REFIID iid, void** out) {
    CRef<IBaseFilter> filter;
    *filter.Put() = new CCaptureFilter;
    return filter->QueryInterface(iid, out);
}

}  // namespace capture
