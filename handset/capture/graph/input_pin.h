// A pin that takes samples and hands them to its filter, one thread at a time.
#pragma once

#include "handset/capture/graph/pin.h"
#include "handset/state/locks.h"

namespace capture {

// What a filter does with a stream. Every call but OnBeginFlush is made under the pin's stream lock.
class IStreamSink {
  public:
    // S_OK: more; S_FALSE or a failure: no more.
    virtual HRESULT OnSample(const BYTE* bytes, std::size_t size, REFERENCE_TIME start,
                             REFERENCE_TIME stop) = 0;
    virtual HRESULT OnEndOfStream() = 0;
    virtual HRESULT OnBeginFlush() = 0;
    virtual HRESULT OnEndFlush() = 0;

  protected:
    ~IStreamSink() = default;
};

class CInputPin : public CPin, public IMemInputPin {
  public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override;
    ULONG STDMETHODCALLTYPE AddRef() override { return CPin::AddRef(); }
    ULONG STDMETHODCALLTYPE Release() override { return CPin::Release(); }

    HRESULT STDMETHODCALLTYPE Connect(IPin* peer, const AM_MEDIA_TYPE* type) override;
    HRESULT STDMETHODCALLTYPE ReceiveConnection(IPin* connector, const AM_MEDIA_TYPE* type) override;
    HRESULT STDMETHODCALLTYPE EndOfStream() override;
    HRESULT STDMETHODCALLTYPE BeginFlush() override;
    HRESULT STDMETHODCALLTYPE EndFlush() override;
    HRESULT STDMETHODCALLTYPE NewSegment(REFERENCE_TIME start, REFERENCE_TIME stop, double rate) override;

    HRESULT STDMETHODCALLTYPE GetAllocator(IMemAllocator** allocator) override;
    HRESULT STDMETHODCALLTYPE NotifyAllocator(IMemAllocator* allocator, BOOL readOnly) override;
    HRESULT STDMETHODCALLTYPE GetAllocatorRequirements(ALLOCATOR_PROPERTIES* properties) override;
    HRESULT STDMETHODCALLTYPE Receive(IMediaSample* sample) override;
    HRESULT STDMETHODCALLTYPE ReceiveMultiple(IMediaSample** samples, long count, long* processed) override;
    HRESULT STDMETHODCALLTYPE ReceiveCanBlock() override;

    // Held while a sample is worked on. A filter takes it in OnStop, after its own lock.
    handset::CLock& StreamLock() { return streamLock_; }

  protected:
    CInputPin(CFilter* filter, IStreamSink* sink, const wchar_t* name)
        : CPin(filter, name, PINDIR_INPUT), sink_(*sink) {}
    void OnDisconnect() override { allocator_.Reset(); }

  private:
    HRESULT CheckStreaming() const;

    IStreamSink& sink_;
    handset::CLock streamLock_;
    CRef<IMemAllocator> allocator_;
};

}  // namespace capture
