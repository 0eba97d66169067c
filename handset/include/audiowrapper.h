// The initialisation interface of the handset's audio encoder filters. Everything else that recording needs
// of DirectShow is in <dshow.h>.
#pragma once

#include <windows.h>

#include <unknwn.h>

// What an encoder filter answers beside IBaseFilter.
inline constexpr IID IID_IAudioWrapperFilter = {
    0x52d6f586, 0x9f0f, 0x4824, {0x8f, 0xc8, 0xe3, 0x2c, 0xa0, 0x49, 0x30, 0xc2}};

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"  // a destructor in the table would move the operation
struct IAudioWrapperFilter : public IUnknown {
    // Chooses the codec, once, before the filter is connected. `category` is the class of filters that the
    // codec is looked for in, such as CLSID_AudioCompressorCategory. E_POINTER without a codec or a category,
    // E_INVALIDARG for a category that the filter does not serve, CLASS_E_CLASSNOTAVAILABLE for a codec that
    // is not there, E_UNEXPECTED the second time.
    virtual HRESULT STDMETHODCALLTYPE Init(const GUID* codec, const GUID* category) = 0;
};
#pragma GCC diagnostic pop
