// The receiver's operations.
#include "handset/fmdevice/receiver.h"

#include "handset/coredll/platform_call.h"
#include "handset/fmdevice/pty_names.h"
#include "handset/fmdevice/seek.h"
#include "handset/state/handset_state.h"
#include "handset/state/utf8_text.h"

namespace fm {
namespace {

// Real time between two looks at the conditions and the state, so that many calls cost little.
constexpr std::uint64_t kLookPeriod_ms = 20;
constexpr std::uint32_t kFullVolume = 100;

using Guard = std::lock_guard<std::mutex>;

struct KindRow {
    RdsTextKind kind;
    TextKind alone;
    TextKind withAlternatives;
};

constexpr KindRow kKinds[] = {
    {RdsTextKind::kServiceName, TextKind::kServiceName, TextKind::kServiceNameWithAF},
    {RdsTextKind::kRadioText, TextKind::kRadioText, TextKind::kRadioText},
    {RdsTextKind::kProgramText, TextKind::kProgramText, TextKind::kProgramText},
};

TextKind DeviceKind(RdsTextKind kind, const RdsData& data) {
    for (const KindRow& row : kKinds) {
        if (row.kind == kind) return data.alternatives_10kHz.empty() ? row.alone : row.withAlternatives;
    }
    return TextKind::kServiceName;
}

}  // namespace

CReceiver::CReceiver(std::shared_ptr<ITunerFrontEnd> frontEnd, CSoundEngine* sound)
    : frontEnd_(std::move(frontEnd)), sound_(sound) {
    sound_->AddUser();
}

CReceiver::~CReceiver() {
    sound_->Show(nullptr);
    sound_->RemoveUser();
}

HRESULT CReceiver::Enter() {
    if (!up_) return kNotReady;
    const std::uint64_t now = GetTickCount64();
    if (now - lookedAt_ms_ < kLookPeriod_ms) return S_OK;
    lookedAt_ms_ = now;
    std::wstring soundLog = handset::StateString(L"SoundLog", L"");
    const bool changed = frontEnd_->Refresh();
    if (!changed && soundLog == soundLog_) return S_OK;
    soundLog_ = std::move(soundLog);
    Show();
    return S_OK;
}

void CReceiver::Show() {
    auto scene = std::make_shared<SoundScene>();
    if (up_) {
        const bool silent = now_.mute || seeks_ > 0;
        scene->frontEnd = frontEnd_;
        scene->reception = frontEnd_->Receive(now_.channel);
        scene->gain = silent ? 0.0F : static_cast<float>(now_.volume) / kFullVolume;
        scene->stereoOut = !now_.speaker && !now_.bluetooth;
        scene->logPath = soundLog_;
    }
    sound_->Show(std::move(scene));
}

void CReceiver::Tuned(std::uint32_t channel) {
    now_.channel = channel;
    ++tunings_;
    rds_.Restart(HandsetMilliseconds());
    // For the handset's panel, whose slider weakens this station.
    handset::SetStateDword(L"TunedChannel", channel);
}

RdsData CReceiver::Listen() {
    RdsData data = frontEnd_->Rds(now_.channel);
    rds_.Listen(data, frontEnd_->Level(now_.channel), HandsetMilliseconds());
    return data;
}

template <typename Change>
HRESULT CReceiver::Switch(Change change) {
    const Guard guard(lock_);
    const HRESULT ready = Enter();
    if (ready != S_OK) return ready;
    change();
    Show();
    return S_OK;
}

HRESULT CReceiver::Initialize() {
    const bool fault = handset::FaultInjected(L"initialize");
    const Guard guard(lock_);
    if (fault) return E_FAIL;
    if (up_) return S_OK;
    up_ = true;
    now_ = {};
    Tuned(now_.channel);
    lookedAt_ms_ = GetTickCount64();
    soundLog_ = handset::StateString(L"SoundLog", L"");
    // Whether anything is new there matters to nobody yet.
    (void)frontEnd_->Refresh();
    Show();
    return S_OK;
}

HRESULT CReceiver::Close() {
    const Guard guard(lock_);
    if (!up_) return kNotReady;
    up_ = false;
    ++tunings_;
    Show();
    return S_OK;
}

HRESULT CReceiver::SetChannel(std::uint32_t channel) {
    if (!InBand(channel)) {
        const Guard guard(lock_);
        return up_ ? E_INVALIDARG : kNotReady;
    }
    return Switch([&] { Tuned(channel); });
}

HRESULT CReceiver::GetChannel(std::uint32_t* channel) {
    const Guard guard(lock_);
    const HRESULT ready = Enter();
    *channel = ready == S_OK ? now_.channel : 0;
    return ready;
}

HRESULT CReceiver::Seek(bool up) {
    const bool fault = handset::FaultInjected(L"seek");
    std::uint64_t tuning = 0;
    SeekResult result;
    {
        const Guard guard(lock_);
        const HRESULT ready = Enter();
        if (ready != S_OK) return ready;
        if (fault) return E_FAIL;
        result = SeekStation(now_.channel, up, frontEnd_->Wraps(),
                             [this](std::uint32_t channel) { return frontEnd_->Level(channel); });
        tuning = ++tunings_;
        ++seeks_;
        Show();
    }
    ::Sleep(HandsetRealTimeout(result.Duration_ms()));
    const Guard guard(lock_);
    --seeks_;
    const bool overtaken = !up_ || tuning != tunings_;
    if (!overtaken && result.found) Tuned(result.channel);
    Show();
    if (overtaken) return E_ABORT;
    return result.found ? S_OK : kNoStation;
}

HRESULT CReceiver::SetVolume(std::uint32_t percent) {
    if (percent > kFullVolume) {
        const Guard guard(lock_);
        return up_ ? E_INVALIDARG : kNotReady;
    }
    return Switch([&] { now_.volume = percent; });
}

HRESULT CReceiver::GetVolume(std::uint32_t* percent) {
    const Guard guard(lock_);
    const HRESULT ready = Enter();
    *percent = ready == S_OK ? now_.volume : 0;
    return ready;
}

HRESULT CReceiver::SetMute(bool mute) {
    return Switch([&] { now_.mute = mute; });
}

HRESULT CReceiver::SetSpeaker(bool on) {
    return Switch([&] { now_.speaker = on; });
}

HRESULT CReceiver::SetBTAudio(bool on) {
    return Switch([&] { now_.bluetooth = on; });
}

HRESULT CReceiver::GetSignal(std::int32_t* level) {
    const Guard guard(lock_);
    const HRESULT ready = Enter();
    *level = ready == S_OK ? frontEnd_->Level(now_.channel) : 0;
    return ready;
}

HRESULT CReceiver::GetStereo() {
    const Guard guard(lock_);
    const HRESULT ready = Enter();
    if (ready != S_OK) return ready;
    return frontEnd_->Receive(now_.channel).stereo ? S_OK : S_FALSE;
}

HRESULT CReceiver::GetRDSData(std::wstring* text, std::int32_t* kind) {
    const Guard guard(lock_);
    text->clear();
    *kind = -1;
    const HRESULT ready = Enter();
    if (ready != S_OK) return ready;
    const RdsData data = Listen();
    const auto next = rds_.Next();
    if (!next) return S_FALSE;
    rds_.Given(*next);
    *text = handset::Wide(next->text);
    *kind = static_cast<std::int32_t>(DeviceKind(next->kind, data));
    return S_OK;
}

HRESULT CReceiver::GetAFCount(std::int32_t* count) {
    const Guard guard(lock_);
    *count = 0;
    const HRESULT ready = Enter();
    if (ready != S_OK) return ready;
    *count = static_cast<std::int32_t>(frontEnd_->Rds(now_.channel).alternatives_10kHz.size());
    return *count > 0 ? S_OK : S_FALSE;
}

HRESULT CReceiver::GetAFItem(std::int32_t index, std::wstring* text) {
    const Guard guard(lock_);
    text->clear();
    const HRESULT ready = Enter();
    if (ready != S_OK) return ready;
    const auto alternatives = frontEnd_->Rds(now_.channel).alternatives_10kHz;
    if (index < 0 || static_cast<std::size_t>(index) >= alternatives.size()) return E_INVALIDARG;
    const std::uint32_t channel = alternatives[static_cast<std::size_t>(index)];
    *text = std::to_wstring(channel / 100) + L'.' + std::to_wstring(channel % 100 / 10);
    return S_OK;
}

HRESULT CReceiver::GetRDSInfo(RdsServices* services) {
    const Guard guard(lock_);
    *services = {};
    const HRESULT ready = Enter();
    if (ready != S_OK) return ready;
    const RdsData data = frontEnd_->Rds(now_.channel);
    services->radioText = !data.radioTexts.empty();
    services->serviceName = !data.serviceNames.empty();
    // Type 0 says that there is none.
    services->programmeType = data.programmeType > 0;
    services->alternatives = !data.alternatives_10kHz.empty();
    services->clockTime = data.clockTime;
    return S_OK;
}

HRESULT CReceiver::GetPTYText(std::wstring* text) {
    const Guard guard(lock_);
    text->clear();
    const HRESULT ready = Enter();
    if (ready != S_OK) return ready;
    const RdsData data = Listen();
    const bool received = rds_.HasGroup() && frontEnd_->Level(now_.channel) > kNoRdsLevel;
    if (!received || data.programmeType <= 0) return S_FALSE;
    *text = handset::Wide(ProgrammeTypeName(data.programmeType));
    return S_OK;
}

}  // namespace fm
