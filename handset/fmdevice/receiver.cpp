// The receiver's operations.
#include "handset/fmdevice/receiver.h"

#include "handset/base/utf8.h"
#include "handset/coredll/kernel/platform_call.h"
#include "handset/fmdevice/band/debug_output.h"
#include "handset/fmdevice/band/pty_names.h"
#include "handset/fmdevice/tuner_memory.h"
#include "handset/state/handset_state.h"

namespace fm {
namespace {

// Real time between two looks at the conditions and the state, so that many calls cost little.
constexpr std::uint64_t kLookPeriod_ms = 20;

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

TextKind DeviceKind(RdsTextKind kind, bool alternatives) {
    for (const KindRow& row : kKinds) {
        if (row.kind == kind) return alternatives ? row.withAlternatives : row.alone;
    }
    return TextKind::kServiceName;
}

}  // namespace

CReceiver::CReceiver(std::shared_ptr<ITunerFrontEnd> frontEnd, sound::CSoundEngine* sound)
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
    auto scene = std::make_shared<sound::SoundScene>();
    if (up_) {
        const bool silent = now_.mute || seeks_ > 0;
        scene->render = [frontEnd = frontEnd_, reception = frontEnd_->Receive()](
                            std::uint64_t position, float* frames, std::size_t count) {
            frontEnd->Render(reception, position, frames, count);
        };
        scene->gain = silent ? 0.0F : static_cast<float>(now_.volume) / kFullVolume;
        scene->stereoOut = !now_.speaker && !now_.bluetooth;
        scene->logPath = soundLog_;
        scene->report = ReportLine;
    }
    sound_->Show(std::move(scene));
}

void CReceiver::Tuned(std::uint32_t channel) {
    now_.channel = channel;
    ++tunings_;
    frontEnd_->Tune(channel);
    // For the next power-up, and for the handset's panel, whose slider weakens this station.
    RememberChannel(channel);
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
    const TunerMemory memory = Remembered();
    up_ = true;
    now_ = {};
    now_.channel = memory.channel;
    now_.volume = memory.volume;
    frontEnd_->Power(true);
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
    frontEnd_->Power(false);
    // Who closes the radio in silence has meant it.
    RememberVolume(now_.volume);
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
    std::unique_ptr<ISeek> seek;
    {
        const Guard guard(lock_);
        const HRESULT ready = Enter();
        if (ready != S_OK) return ready;
        if (fault) return E_FAIL;
        seek = frontEnd_->Seek(up);
        tuning = ++tunings_;
        ++seeks_;
        Show();
    }
    for (;;) {
        std::uint32_t channel = 0;
        const SeekState state = seek->Step(&channel);
        const Guard guard(lock_);
        const bool overtaken = !up_ || tuning != tunings_;
        if (state == SeekState::kUnderWay && !overtaken) continue;
        --seeks_;
        if (!overtaken && state == SeekState::kFound) Tuned(channel);
        Show();
        if (overtaken) return E_ABORT;
        return state == SeekState::kFound ? S_OK : kNoStation;
    }
}

HRESULT CReceiver::SetVolume(std::uint32_t percent) {
    if (percent > kFullVolume) {
        const Guard guard(lock_);
        return up_ ? E_INVALIDARG : kNotReady;
    }
    return Switch([&] {
        // A silence may be that of a weak signal, which the radio ends before it closes. One that is killed
        // in it is to come back audible.
        if (percent > 0 && percent != now_.volume) RememberVolume(percent);
        now_.volume = percent;
    });
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
    *level = 0;
    {
        const Guard guard(lock_);
        const HRESULT ready = Enter();
        if (ready != S_OK) return ready;
    }
    *level = frontEnd_->AwaitLevel();
    return S_OK;
}

HRESULT CReceiver::GetStereo() {
    const Guard guard(lock_);
    const HRESULT ready = Enter();
    if (ready != S_OK) return ready;
    return frontEnd_->Receive().stereo ? S_OK : S_FALSE;
}

HRESULT CReceiver::GetRDSData(std::wstring* text, std::int32_t* kind) {
    const Guard guard(lock_);
    text->clear();
    *kind = -1;
    const HRESULT ready = Enter();
    if (ready != S_OK) return ready;
    const auto next = frontEnd_->TakeText();
    if (!next) return S_FALSE;
    *text = handset::Wide(next->text);
    *kind =
        static_cast<std::int32_t>(DeviceKind(next->kind, !frontEnd_->Services().alternatives_10kHz.empty()));
    return S_OK;
}

HRESULT CReceiver::GetAFCount(std::int32_t* count) {
    const Guard guard(lock_);
    *count = 0;
    const HRESULT ready = Enter();
    if (ready != S_OK) return ready;
    *count = static_cast<std::int32_t>(frontEnd_->Services().alternatives_10kHz.size());
    return *count > 0 ? S_OK : S_FALSE;
}

HRESULT CReceiver::GetAFItem(std::int32_t index, std::wstring* text) {
    const Guard guard(lock_);
    text->clear();
    const HRESULT ready = Enter();
    if (ready != S_OK) return ready;
    const auto alternatives = frontEnd_->Services().alternatives_10kHz;
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
    const StationServices known = frontEnd_->Services();
    services->radioText = known.radioText;
    services->serviceName = known.serviceName;
    // Type 0 says that there is none.
    services->programmeType = known.programmeType > 0;
    services->alternatives = !known.alternatives_10kHz.empty();
    services->clockTime = known.clockTime;
    return S_OK;
}

HRESULT CReceiver::GetPTYText(std::wstring* text) {
    const Guard guard(lock_);
    text->clear();
    const HRESULT ready = Enter();
    if (ready != S_OK) return ready;
    const StationServices services = frontEnd_->Services();
    if (!services.received || services.programmeType <= 0) return S_FALSE;
    *text = handset::Wide(ProgrammeTypeName(services.programmeType));
    return S_OK;
}

void CReceiver::GetStation(std::uint32_t* channel, std::string* name) {
    const Guard guard(lock_);
    const bool ready = Enter() == S_OK;
    *channel = ready ? now_.channel : 0;
    *name = ready ? frontEnd_->StationName() : std::string();
}

}  // namespace fm
