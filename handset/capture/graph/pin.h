// What the pins have in common: IPin with its connection. A pin is a part of its filter and has no life of
// its own.
#pragma once

#include <string>
#include <vector>

#include "handset/capture/graph/com_reference.h"
#include "handset/capture/graph/direct_show.h"
#include "handset/capture/graph/filter.h"
#include "handset/capture/graph/media_type.h"

namespace capture {

class CPin : public IPin {
  public:
    const std::wstring& Name() const { return name_; }
    CFilter& Filter() const { return filter_; }
    bool Connected() const { return static_cast<bool>(peer_); }
    // Of the connection, while there is one.
    const CMediaType& ConnectionType() const { return type_; }

    ULONG STDMETHODCALLTYPE AddRef() override { return filter_.AddRef(); }
    ULONG STDMETHODCALLTYPE Release() override { return filter_.Release(); }

    HRESULT STDMETHODCALLTYPE Disconnect() override;
    HRESULT STDMETHODCALLTYPE ConnectedTo(IPin** pin) override;
    HRESULT STDMETHODCALLTYPE ConnectionMediaType(AM_MEDIA_TYPE* type) override;
    HRESULT STDMETHODCALLTYPE QueryPinInfo(PIN_INFO* info) override;
    HRESULT STDMETHODCALLTYPE QueryDirection(PIN_DIRECTION* direction) override;
    HRESULT STDMETHODCALLTYPE QueryId(LPWSTR* id) override;
    HRESULT STDMETHODCALLTYPE QueryAccept(const AM_MEDIA_TYPE* type) override;
    HRESULT STDMETHODCALLTYPE EnumMediaTypes(IEnumMediaTypes** out) override;
    // Every input is connected to every output.
    HRESULT STDMETHODCALLTYPE QueryInternalConnections(IPin** pins, ULONG* count) override;

  protected:
    CPin(CFilter* filter, const wchar_t* name, PIN_DIRECTION direction)
        : filter_(*filter), name_(name), direction_(direction) {}
    virtual ~CPin() = default;

    // The types that the pin offers, the best first, and whether it takes one, offered or not. Under the
    // lock.
    virtual std::vector<CMediaType> Types() const = 0;
    virtual bool Accepts(const CMediaType& type) const = 0;
    // What a derived pin keeps of a connection goes here.
    virtual void OnDisconnect() {}

    void SetConnection(IPin* peer, const CMediaType& type);
    void ForgetConnection();
    IPin* Peer() const { return peer_.Get(); }

  private:
    CFilter& filter_;
    const std::wstring name_;
    const PIN_DIRECTION direction_;
    CRef<IPin> peer_;
    CMediaType type_;
};

// An enumerator with one reference; `owner` is kept while it lives.
IEnumPins* ListPins(const std::vector<CPin*>& pins, CRef<IUnknown> owner);

}  // namespace capture
