// The output pin of the capture filter: its formats and its stream.
#pragma once

#include "handset/capture/graph/output_pin.h"
#include "handset/capture/source/sound_pump.h"

namespace capture {

class CCapturePin final : public COutputPin,
                          public IAMStreamConfig,
                          public IAMStreamControl,
                          public IKsPropertySet {
  public:
    explicit CCapturePin(CFilter* filter);

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override;
    ULONG STDMETHODCALLTYPE AddRef() override { return CPin::AddRef(); }
    ULONG STDMETHODCALLTYPE Release() override { return CPin::Release(); }

    // The filter's changes of state. Without a connection nothing flows.
    HRESULT Open();
    void Run(REFERENCE_TIME start);
    void Halt();
    void Close();

    // IAMStreamConfig. A format whose bits field is 0 is kept as it was given and means 16 bits.
    HRESULT STDMETHODCALLTYPE SetFormat(AM_MEDIA_TYPE* type) override;
    HRESULT STDMETHODCALLTYPE GetFormat(AM_MEDIA_TYPE** type) override;
    HRESULT STDMETHODCALLTYPE GetNumberOfCapabilities(int* count, int* size) override;
    HRESULT STDMETHODCALLTYPE GetStreamCaps(int index, AM_MEDIA_TYPE** type, BYTE* caps) override;

    // IAMStreamControl. An event is sent for a change that has a cookie other than 0, when it happens.
    HRESULT STDMETHODCALLTYPE StartAt(const REFERENCE_TIME* start, DWORD cookie) override;
    HRESULT STDMETHODCALLTYPE StopAt(const REFERENCE_TIME* stop, BOOL sendExtra, DWORD cookie) override;
    HRESULT STDMETHODCALLTYPE GetInfo(AM_STREAM_INFO* info) override;

    // IKsPropertySet: that this is a capture pin.
    HRESULT STDMETHODCALLTYPE Set(REFGUID set, DWORD id, void* instance, DWORD instanceSize, void* data,
                                  DWORD size) override;
    HRESULT STDMETHODCALLTYPE Get(REFGUID set, DWORD id, void* instance, DWORD instanceSize, void* data,
                                  DWORD size, DWORD* returned) override;
    HRESULT STDMETHODCALLTYPE QuerySupported(REFGUID set, DWORD id, DWORD* support) override;

  protected:
    std::vector<CMediaType> Types() const override;
    bool Accepts(const CMediaType& type) const override;
    ALLOCATOR_PROPERTIES Buffers() const override;

  private:
    HRESULT Reconnect(const CMediaType& type);

    CMediaType format_;
    bool chosen_ = false;  // format_ was set by a client: no other is offered
    CSoundPump pump_;
};

}  // namespace capture
