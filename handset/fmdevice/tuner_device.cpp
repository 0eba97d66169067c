// The operations of the tuner device: arguments checked, the receiver asked, a line logged.
#include "handset/fmdevice/tuner_device.h"

#include <algorithm>
#include <cwchar>
#include <set>

#include "handset/base/module_edge.h"
#include "handset/coredll/kernel/platform_call.h"
#include "handset/fmdevice/antenna/chosen_front_end.h"
#include "handset/fmdevice/module.h"
#include "handset/fmdevice/tuned_station.h"
#include "handset/fmdevice/tuner_log.h"
#include "handset/state/handset_state.h"

namespace fm {
namespace {

// The fault "crash:NAME" of an operation is due, which it is once in a process. "monitor" is crash:GetSignal.
bool TakeCrash(const wchar_t* name) {
    const std::wstring faults = handset::InjectedFaults();
    if (faults.empty()) return false;
    const bool monitor = std::wcscmp(name, L"GetSignal") == 0 && handset::FaultIn(faults, L"monitor");
    if (!monitor && !handset::FaultIn(faults, (L"crash:" + std::wstring(name)).c_str())) return false;
    static std::mutex& lock = *new std::mutex;  // guards `taken`
    static auto& taken = *new std::set<std::wstring>;
    const std::lock_guard<std::mutex> guard(lock);
    return taken.insert(name).second;
}

// Raised where no scope is open that a caller's guard would leave without closing: a write to address 0.
void CrashWhenDue(const wchar_t* name) try {
    if (!TakeCrash(name)) return;
    LogCall(name, static_cast<HRESULT>(EXCEPTION_ACCESS_VIOLATION));
    const ULONG_PTR access[] = {1, 0};
    RaiseException(EXCEPTION_ACCESS_VIOLATION, 0, std::size(access), access);
} catch (...) {
    handset::EdgeAnswer<void>();
}

// One operation: a platform call around it, and no exception of its own beyond it.
template <typename Operation>
HRESULT Perform(const wchar_t* name, Operation operation) try {
    CrashWhenDue(name);
    const CPlatformCall call;
    return operation();
} catch (...) {
    return handset::EdgeResult();
}

// The receiver of this process lives as long as a device does. Neither is ever destroyed at process end, when
// the sound thread is gone without having been asked.
std::shared_ptr<CReceiver> SharedReceiver(bool make) {
    static std::mutex& lock = *new std::mutex;  // guards `receiver`
    static std::weak_ptr<CReceiver>& receiver = *new std::weak_ptr<CReceiver>;
    const std::lock_guard<std::mutex> guard(lock);
    std::shared_ptr<CReceiver> shared = receiver.lock();
    if (!shared && make) {
        shared = std::make_shared<CReceiver>(std::make_shared<CChosenFrontEnd>(),
                                             &sound::CSoundEngine::Instance());
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

}  // namespace

HRESULT CreateTunerDevice(REFIID iid, void** out) {
    if (out == nullptr) return E_POINTER;
    *out = nullptr;
    return Perform(L"CreateInstance", [&]() -> HRESULT {
        if (handset::FaultInjected(L"create")) return E_FAIL;
        if (iid != IID_IUnknown && iid != kTunerInterface) return E_NOINTERFACE;
        *out = static_cast<ITunerSlots*>(new CTunerDevice(SharedReceiver(true)));
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
    CrashWhenDue(L"QueryInterface");
    if (out == nullptr) return E_POINTER;
    *out = nullptr;
    if (iid != IID_IUnknown && iid != kTunerInterface) return E_NOINTERFACE;
    AddRef();
    *out = static_cast<ITunerSlots*>(this);
    return S_OK;
}

ULONG CTunerDevice::AddRef() {
    CrashWhenDue(L"AddRef");
    return ++references_;
}

ULONG CTunerDevice::Release() {
    CrashWhenDue(L"Release");
    const ULONG left = --references_;
    if (left > 0) return left;
    (void)Perform(L"Released", [&] {
        // Also when there is no memory for the line.
        struct Last {
            CTunerDevice* device;
            ~Last() { delete device; }
        } const last{this};
        return LogCall(L"Release", 0);
    });
    return 0;
}

HRESULT CTunerDevice::GetVolume(std::uint32_t* percent) {
    return Perform(L"GetVolume", [&] {
        if (percent == nullptr) return LogCall(L"GetVolume", E_POINTER);
        const HRESULT result = receiver_->GetVolume(percent);
        return LogCall(L"GetVolume", result, result == S_OK ? std::to_wstring(*percent) : L"");
    });
}

HRESULT CTunerDevice::GetChannel(std::uint32_t* channel) {
    return Perform(L"GetChannel", [&] {
        if (channel == nullptr) return LogCall(L"GetChannel", E_POINTER);
        const HRESULT result = receiver_->GetChannel(channel);
        return LogCall(L"GetChannel", result, result == S_OK ? std::to_wstring(*channel) : L"");
    });
}

HRESULT CTunerDevice::Close() {
    return Perform(L"Close", [&] { return LogCall(L"Close", receiver_->Close()); });
}

HRESULT CTunerDevice::SetChannel(std::uint32_t channel) {
    return Perform(L"SetChannel",
                   [&] { return LogCall(Call(L"SetChannel", channel), receiver_->SetChannel(channel)); });
}

HRESULT CTunerDevice::Initialize() {
    return Perform(L"Initialize", [&] { return LogCall(L"Initialize", receiver_->Initialize()); });
}

HRESULT CTunerDevice::Reserved() {
    return Perform(L"Reserved", [&] { return LogCall(L"Reserved", E_NOTIMPL); });
}

HRESULT CTunerDevice::SetSpeaker(BOOL on) {
    return Perform(L"SetSpeaker",
                   [&] { return LogCall(Call(L"SetSpeaker", on), receiver_->SetSpeaker(on != FALSE)); });
}

HRESULT CTunerDevice::SetBTAudio(BOOL on) {
    return Perform(L"SetBTAudio",
                   [&] { return LogCall(Call(L"SetBTAudio", on), receiver_->SetBTAudio(on != FALSE)); });
}

HRESULT CTunerDevice::SetMute(BOOL mute) {
    return Perform(L"SetMute",
                   [&] { return LogCall(Call(L"SetMute", mute), receiver_->SetMute(mute != FALSE)); });
}

HRESULT CTunerDevice::SetVolume(std::uint32_t percent) {
    return Perform(L"SetVolume",
                   [&] { return LogCall(Call(L"SetVolume", percent), receiver_->SetVolume(percent)); });
}

HRESULT CTunerDevice::SeekNext() {
    return Perform(L"SeekNext", [&] { return LogCall(L"SeekNext", receiver_->Seek(true)); });
}

HRESULT CTunerDevice::SeekPrev() {
    return Perform(L"SeekPrev", [&] { return LogCall(L"SeekPrev", receiver_->Seek(false)); });
}

HRESULT CTunerDevice::GetSignal(std::int32_t* level) {
    return Perform(L"GetSignal", [&] {
        if (level == nullptr) return LogCall(L"GetSignal", E_POINTER);
        const HRESULT result = receiver_->GetSignal(level);
        return LogCall(L"GetSignal", result, result == S_OK ? std::to_wstring(*level) : L"");
    });
}

HRESULT CTunerDevice::GetRDSData(WCHAR* text, std::int32_t* kind) {
    return Perform(L"GetRDSData", [&] {
        if (text == nullptr || kind == nullptr) return LogCall(L"GetRDSData", E_POINTER);
        std::wstring data;
        const HRESULT result = receiver_->GetRDSData(&data, kind);
        CopyText(data, kRdsTextRoom, text);
        return LogCall(L"GetRDSData", result, result == S_OK ? std::to_wstring(*kind) + L' ' + text : L"");
    });
}

HRESULT CTunerDevice::GetStereo() {
    return Perform(L"GetStereo", [&] { return LogCall(L"GetStereo", receiver_->GetStereo()); });
}

HRESULT CTunerDevice::GetAFCount(std::int32_t* count) {
    return Perform(L"GetAFCount", [&] {
        if (count == nullptr) return LogCall(L"GetAFCount", E_POINTER);
        const HRESULT result = receiver_->GetAFCount(count);
        return LogCall(L"GetAFCount", result, SUCCEEDED(result) ? std::to_wstring(*count) : L"");
    });
}

HRESULT CTunerDevice::GetAFItem(std::int32_t index, WCHAR* text) {
    return Perform(L"GetAFItem", [&] {
        const std::wstring call = Call(L"GetAFItem", index);
        if (text == nullptr) return LogCall(call, E_POINTER);
        std::wstring item;
        const HRESULT result = receiver_->GetAFItem(index, &item);
        CopyText(item, kAlternativeTextRoom, text);
        return LogCall(call, result, item);
    });
}

HRESULT CTunerDevice::GetRDSInfo(RdsServices* services) {
    return Perform(L"GetRDSInfo", [&] {
        if (services == nullptr) return LogCall(L"GetRDSInfo", E_POINTER);
        const HRESULT result = receiver_->GetRDSInfo(services);
        std::wstring words;
        for (const std::int32_t word : {services->radioText, services->serviceName, services->programmeType,
                                        services->alternatives, services->clockTime}) {
            words += (words.empty() ? L"" : L" ") + std::to_wstring(word);
        }
        return LogCall(L"GetRDSInfo", result, result == S_OK ? words : L"");
    });
}

HRESULT CTunerDevice::GetPTYText(WCHAR* text) {
    return Perform(L"GetPTYText", [&] {
        if (text == nullptr) return LogCall(L"GetPTYText", E_POINTER);
        std::wstring type;
        const HRESULT result = receiver_->GetPTYText(&type);
        CopyText(type, kRdsTextRoom, text);
        return LogCall(L"GetPTYText", result, type);
    });
}

}  // namespace fm

bool HandsetTunedStation(TunedStation* station) try {
    if (station == nullptr) return false;
    *station = {};
    const auto receiver = fm::SharedReceiver(false);
    if (!receiver) return false;
    std::string name;
    receiver->GetStation(&station->channel_10kHz, &name);
    name.copy(station->name, std::size(station->name) - 1);
    return station->channel_10kHz != 0;
} catch (...) {
    *station = {};
    return handset::EdgeAnswer(false);
}
