// The tuner device of the handset: an in-process COM object that owns the FM receiver. Its driver software
// provides it; the radio creates one and reaches the receiver through nothing else.
//
// Every operation may be called from any thread at any time (the radio enters the multithreaded apartment).
// An operation that can fail gives 0 for success and any other value for failure.
// RDS data is that of IEC 62106.
#pragma once

#include <windows.h>

#include <unknwn.h>

#include <cstdint>

// Class of the tuner device; its text form also names the radio's settings key.
inline constexpr GUID CLSID_CFMDevice = {
    0xcd0dd476, 0xb0be, 0x48fd, {0x90, 0xfe, 0x91, 0xfc, 0x36, 0xed, 0x0a, 0x77}};
inline constexpr GUID IID_IFMDevice = {
    0x3a905b65, 0xd245, 0x4160, {0xa7, 0xfd, 0xfb, 0xcd, 0xd8, 0xa6, 0xd1, 0xef}};
// The device's key under HKEY_CLASSES_ROOT, which also holds the radio's settings.
inline constexpr WCHAR kFMDeviceKey[] = L"\\CLSID\\{cd0dd476-b0be-48fd-90fe-91fc36ed0a77}";

// Which RDS services the tuned station sends; each word is 0 or 1. Zeroed by the caller.
struct rds_inf {
    std::int32_t b_RDS_RT;   // radio text
    std::int32_t b_RDS_PS;   // programme service name
    std::int32_t b_RDS_PTY;  // programme type
    std::int32_t b_RDS_AF;   // list of alternative frequencies
    std::int32_t b_RDS_CT;   // clock time
};
static_assert(sizeof(rds_inf) == 20, "the device fills five 32-bit words");

// Room that the callers give for texts, terminator included; no text of the device is longer.
inline constexpr int kRdsTextCapacity = 260;  // GetRDSData, GetPTYText
inline constexpr int kAFTextCapacity = 16;    // GetAFItem

// What GetRDSData delivered.
enum RdsKind : std::int32_t {
    kRdsServiceName = 0,
    kRdsRadioText = 1,
    kRdsProgramText = 2,
    kRdsServiceNameWithAF = 4,
};

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"  // a destructor in the table would move the operations
// The order of the operations is the device's; none may be moved or left out.
struct IFMDevice : public IUnknown {
    // Volume in percent, 0 to 100.
    virtual HRESULT STDMETHODCALLTYPE GetVolume(std::uint32_t* percent) = 0;
    // Tuned frequency in units of 10 kHz (8750 = 87.50 MHz).
    virtual HRESULT STDMETHODCALLTYPE GetChannel(std::uint32_t* channel) = 0;
    // Powers the receiver down; the last call before Release.
    virtual HRESULT STDMETHODCALLTYPE Close() = 0;
    // Tunes; 0 = tuned. A frequency outside the receiver's range is refused.
    virtual HRESULT STDMETHODCALLTYPE SetChannel(std::uint32_t channel) = 0;
    // Powers the receiver up; the first call. E_FAIL when there is no receiver.
    virtual HRESULT STDMETHODCALLTYPE Initialize() = 0;
    // Keeps its place in the order; never called.
    virtual HRESULT STDMETHODCALLTYPE Reserved() = 0;
    // TRUE: loudspeaker, FALSE: headset.
    virtual HRESULT STDMETHODCALLTYPE SetSpeaker(BOOL on) = 0;
    // TRUE: sound to the Bluetooth audio link, FALSE: away from it.
    virtual HRESULT STDMETHODCALLTYPE SetBTAudio(BOOL on) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetMute(BOOL mute) = 0;
    // Percent, 0 to 100.
    virtual HRESULT STDMETHODCALLTYPE SetVolume(std::uint32_t percent) = 0;
    // Seek upwards and downwards; 0 = a station was found and is tuned.
    virtual HRESULT STDMETHODCALLTYPE SeekNext() = 0;
    virtual HRESULT STDMETHODCALLTYPE SeekPrev() = 0;
    // Level of reception; 15 is the border between weak and usable, 65 and more is excellent.
    virtual HRESULT STDMETHODCALLTYPE GetSignal(std::int32_t* level) = 0;
    // The next RDS text that arrived, with its RdsKind; text[kRdsTextCapacity]. Non-zero: no RDS data.
    virtual HRESULT STDMETHODCALLTYPE GetRDSData(WCHAR* text, std::int32_t* kind) = 0;
    // 0 = the reception is stereo, anything else = mono.
    virtual HRESULT STDMETHODCALLTYPE GetStereo() = 0;
    // Number of alternative frequencies of the tuned station.
    virtual HRESULT STDMETHODCALLTYPE GetAFCount(std::int32_t* count) = 0;
    // An alternative frequency as text in MHz with one decimal ("98.5"); text[kAFTextCapacity].
    virtual HRESULT STDMETHODCALLTYPE GetAFItem(std::int32_t index, WCHAR* text) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetRDSInfo(rds_inf* info) = 0;
    // Text of the programme type; text[kRdsTextCapacity]. Non-zero: none is known.
    virtual HRESULT STDMETHODCALLTYPE GetPTYText(WCHAR* text) = 0;
};
#pragma GCC diagnostic pop

// The name by which the radio speaks of the device.
using CFMDevice = IFMDevice;
