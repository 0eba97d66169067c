// The tuner device as the handset serves it: its class, its interface slot by slot, and what crosses in them.
// A program of the device has a declaration of its own; what both must agree on is the binary form.
//
// Every operation may be called from any thread at any time. It gives 0 for success and any other value for
// failure (handset/fmdevice/receiver.h names the values). RDS data is that of IEC 62106.
#pragma once

#include <windows.h>

#include <unknwn.h>

#include <cstdint>

namespace fm {

inline constexpr CLSID kTunerClass = {
    0xcd0dd476, 0xb0be, 0x48fd, {0x90, 0xfe, 0x91, 0xfc, 0x36, 0xed, 0x0a, 0x77}};
inline constexpr IID kTunerInterface = {
    0x3a905b65, 0xd245, 0x4160, {0xa7, 0xfd, 0xfb, 0xcd, 0xd8, 0xa6, 0xd1, 0xef}};
// The class's key in the device's registry, as `handset reg` names it; the radio keeps its settings there.
inline constexpr wchar_t kTunerKey[] = L"HKCR\\CLSID\\{cd0dd476-b0be-48fd-90fe-91fc36ed0a77}";

// Which RDS services the tuned station sends; each word is 0 or 1.
struct RdsServices {
    std::int32_t radioText;
    std::int32_t serviceName;
    std::int32_t programmeType;
    std::int32_t alternatives;
    std::int32_t clockTime;
};

// Characters, terminator included, for which a caller has room; no text is longer.
inline constexpr int kRdsTextRoom = 260;         // GetRDSData, GetPTYText
inline constexpr int kAlternativeTextRoom = 16;  // GetAFItem

// What GetRDSData delivers.
enum class TextKind : std::int32_t {
    kServiceName = 0,
    kRadioText = 1,
    kProgramText = 2,
    kServiceNameWithAF = 4,
};

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"  // a destructor in the table would move the operations
struct ITunerSlots : public IUnknown {
    virtual HRESULT STDMETHODCALLTYPE GetVolume(std::uint32_t* percent) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetChannel(std::uint32_t* channel_10kHz) = 0;
    virtual HRESULT STDMETHODCALLTYPE Close() = 0;
    virtual HRESULT STDMETHODCALLTYPE SetChannel(std::uint32_t channel_10kHz) = 0;
    virtual HRESULT STDMETHODCALLTYPE Initialize() = 0;
    // Does nothing; holds its place.
    virtual HRESULT STDMETHODCALLTYPE Reserved() = 0;
    virtual HRESULT STDMETHODCALLTYPE SetSpeaker(BOOL on) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetBTAudio(BOOL on) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetMute(BOOL mute) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetVolume(std::uint32_t percent) = 0;
    virtual HRESULT STDMETHODCALLTYPE SeekNext() = 0;
    virtual HRESULT STDMETHODCALLTYPE SeekPrev() = 0;
    // 0 to 100.
    virtual HRESULT STDMETHODCALLTYPE GetSignal(std::int32_t* level) = 0;
    // text[kRdsTextRoom]; kind is a TextKind.
    virtual HRESULT STDMETHODCALLTYPE GetRDSData(WCHAR* text, std::int32_t* kind) = 0;
    // S_OK: stereo.
    virtual HRESULT STDMETHODCALLTYPE GetStereo() = 0;
    virtual HRESULT STDMETHODCALLTYPE GetAFCount(std::int32_t* count) = 0;
    // MHz with one decimal; text[kAlternativeTextRoom].
    virtual HRESULT STDMETHODCALLTYPE GetAFItem(std::int32_t index, WCHAR* text) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetRDSInfo(RdsServices* services) = 0;
    // text[kRdsTextRoom].
    virtual HRESULT STDMETHODCALLTYPE GetPTYText(WCHAR* text) = 0;
};
#pragma GCC diagnostic pop

}  // namespace fm
