// The operations of CFMDevice: arguments checked, the receiver asked, a line logged.
#include "handset/fmdevice/tuner_device.h"

#include <algorithm>
#include <new>

#include "handset/coredll/platform_call.h"
#include "handset/fmdevice/module.h"
#include "handset/fmdevice/simulated_band.h"
#include "handset/fmdevice/tuner_log.h"
#include "handset/state/handset_state.h"

namespace fm {
namespace {

// One operation: a platform call around it, and no exception beyond it.
template <typename Operation>
HRESULT Perform(Operation operation) {
    const PlatformCall call;
    try {
        return operation();
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    } catch (...) {
        return E_UNEXPECTED;
    }
}

// The receiver of this process lives as long as a device does. Neither is ever destroyed at process end, when
// the sound thread is gone without having been asked.
std::shared_ptr<CReceiver> SharedReceiver() {
    static std::mutex& lock = *new std::mutex;  // guards `receiver`
    static std::weak_ptr<CReceiver>& receiver = *new std::weak_ptr<CReceiver>;
    const std::lock_guard<std::mutex> guard(lock);
    std::shared_ptr<CReceiver> shared = receiver.lock();
    if (!shared) {
        shared = std::make_shared<CReceiver>(std::make_shared<CSimulatedBand>(), &CSoundEngine::Instance());
        receiver = shared;
    }
    return shared;
}

void CopyText(const std::wstring& from, int capacity, WCHAR* to) {
    const std::size_t length = std::min(from.size(), static_cast<std::size_t>(capacity) - 1);
    std::copy_n(from.begin(), length, to);
    to[length] = L'\0';
}

std::wstring Call(const wchar_t* name, std::int64_t argument) {
    return std::wstring(name) + L' ' + std::to_wstring(argument);
}

// The fault "monitor" is due, which it is once in a process.
bool TakeMonitorFault() {
    static std::atomic<bool> raised{false};
    return handset::FaultInjected(L"monitor") && !raised.exchange(true);
}

}  // namespace

HRESULT CreateTunerDevice(REFIID iid, void** out) {
    if (out == nullptr) return E_POINTER;
    *out = nullptr;
    return Perform([&]() -> HRESULT {
        if (handset::FaultInjected(L"create")) return E_FAIL;
        if (iid != IID_IUnknown && iid != IID_IFMDevice) return E_NOINTERFACE;
        *out = static_cast<IFMDevice*>(new CTunerDevice(SharedReceiver()));
        return S_OK;
    });
}

CTunerDevice::CTunerDevice(std::shared_ptr<CReceiver> receiver) : receiver_(std::move(receiver)) {
    ++g_moduleUses;
}

CTunerDevice::~CTunerDevice() {
    --g_moduleUses;
}

HRESULT CTunerDevice::QueryInterface(REFIID iid, void** out) {
    if (out == nullptr) return E_POINTER;
    *out = nullptr;
    if (iid != IID_IUnknown && iid != IID_IFMDevice) return E_NOINTERFACE;
    AddRef();
    *out = static_cast<IFMDevice*>(this);
    return S_OK;
}

ULONG CTunerDevice::AddRef() {
    return ++references_;
}

ULONG CTunerDevice::Release() {
    const ULONG left = --references_;
    if (left > 0) return left;
    Perform([&] {
        LogCall(L"Release", 0);
        delete this;
        return S_OK;
    });
    return 0;
}

HRESULT CTunerDevice::GetVolume(std::uint32_t* percent) {
    return Perform([&] {
        if (percent == nullptr) return LogCall(L"GetVolume", E_POINTER);
        const HRESULT result = receiver_->GetVolume(percent);
        return LogCall(L"GetVolume", result, result == S_OK ? std::to_wstring(*percent) : L"");
    });
}

HRESULT CTunerDevice::GetChannel(std::uint32_t* channel) {
    return Perform([&] {
        if (channel == nullptr) return LogCall(L"GetChannel", E_POINTER);
        const HRESULT result = receiver_->GetChannel(channel);
        return LogCall(L"GetChannel", result, result == S_OK ? std::to_wstring(*channel) : L"");
    });
}

HRESULT CTunerDevice::Close() {
    return Perform([&] { return LogCall(L"Close", receiver_->Close()); });
}

HRESULT CTunerDevice::SetChannel(std::uint32_t channel) {
    return Perform([&] { return LogCall(Call(L"SetChannel", channel), receiver_->SetChannel(channel)); });
}

HRESULT CTunerDevice::Initialize() {
    return Perform([&] { return LogCall(L"Initialize", receiver_->Initialize()); });
}

HRESULT CTunerDevice::Reserved() {
    return Perform([&] { return LogCall(L"Reserved", E_NOTIMPL); });
}

HRESULT CTunerDevice::SetSpeaker(BOOL on) {
    return Perform([&] { return LogCall(Call(L"SetSpeaker", on), receiver_->SetSpeaker(on != FALSE)); });
}

HRESULT CTunerDevice::SetBTAudio(BOOL on) {
    return Perform([&] { return LogCall(Call(L"SetBTAudio", on), receiver_->SetBTAudio(on != FALSE)); });
}

HRESULT CTunerDevice::SetMute(BOOL mute) {
    return Perform([&] { return LogCall(Call(L"SetMute", mute), receiver_->SetMute(mute != FALSE)); });
}

HRESULT CTunerDevice::SetVolume(std::uint32_t percent) {
    return Perform([&] { return LogCall(Call(L"SetVolume", percent), receiver_->SetVolume(percent)); });
}

HRESULT CTunerDevice::SeekNext() {
    return Perform([&] { return LogCall(L"SeekNext", receiver_->Seek(true)); });
}

HRESULT CTunerDevice::SeekPrev() {
    return Perform([&] { return LogCall(L"SeekPrev", receiver_->Seek(false)); });
}

HRESULT CTunerDevice::GetSignal(std::int32_t* level) {
    bool fault = false;
    const HRESULT result = Perform([&] {
        fault = TakeMonitorFault();
        if (fault) return LogCall(L"GetSignal", static_cast<HRESULT>(EXCEPTION_ACCESS_VIOLATION));
        if (level == nullptr) return LogCall(L"GetSignal", E_POINTER);
        const HRESULT asked = receiver_->GetSignal(level);
        return LogCall(L"GetSignal", asked, asked == S_OK ? std::to_wstring(*level) : L"");
    });
    // Out here no scope is open that a caller's guard would leave without closing: a write to address 0.
    const ULONG_PTR access[] = {1, 0};
    if (fault) RaiseException(EXCEPTION_ACCESS_VIOLATION, 0, std::size(access), access);
    return result;
}

HRESULT CTunerDevice::GetRDSData(WCHAR* text, std::int32_t* kind) {
    return Perform([&] {
        if (text == nullptr || kind == nullptr) return LogCall(L"GetRDSData", E_POINTER);
        std::wstring data;
        const HRESULT result = receiver_->GetRDSData(&data, kind);
        CopyText(data, kRdsTextCapacity, text);
        return LogCall(L"GetRDSData", result, result == S_OK ? std::to_wstring(*kind) + L' ' + text : L"");
    });
}

HRESULT CTunerDevice::GetStereo() {
    return Perform([&] { return LogCall(L"GetStereo", receiver_->GetStereo()); });
}

HRESULT CTunerDevice::GetAFCount(std::int32_t* count) {
    return Perform([&] {
        if (count == nullptr) return LogCall(L"GetAFCount", E_POINTER);
        const HRESULT result = receiver_->GetAFCount(count);
        return LogCall(L"GetAFCount", result, SUCCEEDED(result) ? std::to_wstring(*count) : L"");
    });
}

HRESULT CTunerDevice::GetAFItem(std::int32_t index, WCHAR* text) {
    return Perform([&] {
        const std::wstring call = Call(L"GetAFItem", index);
        if (text == nullptr) return LogCall(call, E_POINTER);
        std::wstring item;
        const HRESULT result = receiver_->GetAFItem(index, &item);
        CopyText(item, kAFTextCapacity, text);
        return LogCall(call, result, item);
    });
}

HRESULT CTunerDevice::GetRDSInfo(rds_inf* info) {
    return Perform([&] {
        if (info == nullptr) return LogCall(L"GetRDSInfo", E_POINTER);
        const HRESULT result = receiver_->GetRDSInfo(info);
        std::wstring words;
        for (const std::int32_t word :
             {info->b_RDS_RT, info->b_RDS_PS, info->b_RDS_PTY, info->b_RDS_AF, info->b_RDS_CT}) {
            words += (words.empty() ? L"" : L" ") + std::to_wstring(word);
        }
        return LogCall(L"GetRDSInfo", result, result == S_OK ? words : L"");
    });
}

HRESULT CTunerDevice::GetPTYText(WCHAR* text) {
    return Perform([&] {
        if (text == nullptr) return LogCall(L"GetPTYText", E_POINTER);
        std::wstring type;
        const HRESULT result = receiver_->GetPTYText(&type);
        CopyText(type, kRdsTextCapacity, text);
        return LogCall(L"GetPTYText", result, type);
    });
}

}  // namespace fm
