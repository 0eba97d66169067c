// A pin that delivers samples: it finds the type of a connection, chooses the allocator and hands samples on.
#pragma once

#include <mutex>

#include "handset/capture/graph/pin.h"

namespace capture {

class COutputPin : public CPin {
  public:
    HRESULT STDMETHODCALLTYPE Connect(IPin* peer, const AM_MEDIA_TYPE* type) override;
    HRESULT STDMETHODCALLTYPE ReceiveConnection(IPin* connector, const AM_MEDIA_TYPE* type) override;
    HRESULT STDMETHODCALLTYPE EndOfStream() override;
    HRESULT STDMETHODCALLTYPE BeginFlush() override;
    HRESULT STDMETHODCALLTYPE EndFlush() override;
    HRESULT STDMETHODCALLTYPE NewSegment(REFERENCE_TIME start, REFERENCE_TIME stop, double rate) override;

    // Makes the allocator's buffers, and gives them back, on the change of the filter's state.
    HRESULT Activate();
    void Deactivate();

    // Hands bytes on in as many samples as they need. Anything but S_OK: no more is taken. The times are
    // stream times. One thread at a time, while the pin is connected; without the filter's lock.
    HRESULT Deliver(const BYTE* bytes, std::size_t size, REFERENCE_TIME start, REFERENCE_TIME stop,
                    bool discontinuity);
    // What else flows with the samples, to the connected pin. The filter's stream does this, not its lock.
    HRESULT DeliverEndOfStream();
    HRESULT DeliverBeginFlush();
    HRESULT DeliverEndFlush();

  protected:
    COutputPin(CFilter* filter, const wchar_t* name) : CPin(filter, name, PINDIR_OUTPUT) {}

    // The buffers that this pin wants.
    virtual ALLOCATOR_PROPERTIES Buffers() const = 0;
    void OnDisconnect() override;

  private:
    HRESULT TryTypes(IPin* peer, const std::vector<CMediaType>& types, const AM_MEDIA_TYPE* wanted);
    HRESULT TryType(IPin* peer, const CMediaType& type);
    HRESULT ChooseAllocator();
    HRESULT UseAllocator(IMemAllocator* allocator, const ALLOCATOR_PROPERTIES& wanted);

    CRef<IMemInputPin> input_;  // of the connected pin
    CRef<IMemAllocator> allocator_;
};

}  // namespace capture
