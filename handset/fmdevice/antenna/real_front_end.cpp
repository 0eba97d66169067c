// The radio's thread, and what others ask of it.
#include "handset/fmdevice/antenna/real_front_end.h"

#include <windows.h>

#include <algorithm>
#include <cmath>
#include <mutex>
#include <utility>

#include "handset/base/antenna_text.h"
#include "handset/base/module_edge.h"
#include "handset/base/utf8.h"
#include "handset/coredll/kernel/platform_call.h"
#include "handset/fmdevice/antenna/file_source.h"
#include "handset/fmdevice/antenna/rtl_tcp_source.h"
#include "handset/fmdevice/band/debug_output.h"
#include "handset/sound/format.h"

namespace fm {
namespace {

using Guard = std::lock_guard<handset::CLock>;

constexpr double kBlock_s = 0.01;
constexpr DWORD kBlockWait_ms = 20;
// From the arrival of samples to their sound: a stick sends 68 ms at once, and this machine has more to do.
constexpr double kLead_s = 0.13;
constexpr double kSound_s = 4.0;
// Without samples for so long nothing comes in any more.
constexpr std::uint64_t kSilent_ms = 300;
constexpr std::uint64_t kPublish_ms = 500;
constexpr std::uint64_t kLossShown_ms = 2000;
// A seek's bounds. It goes on by what was seen a moment ago, and when the one before ran out of its time, by
// all that this one saw.
constexpr std::uint64_t kLongestSeek_ms = 950;
constexpr std::uint64_t kStillKnown_ms = 2000;
constexpr std::uint64_t kSeekGoesOn_ms = 3000;
constexpr DWORD kLookWait_ms = 200;

std::uint64_t NowFrame() {
    return sound::FrameAt(HandsetMilliseconds());
}

std::unique_ptr<ISampleSource> OpenSource(const handset::Antenna& antenna, CSampleStream* stream) {
    if (antenna.kind == handset::AntennaKind::kFile) return std::make_unique<CFileSource>(antenna, stream);
    return std::make_unique<CRtlTcpSource>(antenna, stream);
}

}  // namespace

// Goes on by looks; the radio comes back to its station when the seek is over.
class CRealSeek : public ISeek {
  public:
    CRealSeek(std::shared_ptr<CRealFrontEnd> front, const CBandSeek& plan, std::uint64_t since_ms)
        : front_(std::move(front)), plan_(plan), since_ms_(since_ms), began_ms_(GetTickCount64()) {}
    ~CRealSeek() override { front_->EndLooks(); }

    SeekState Step(std::uint32_t* channel) override {
        if (!front_->Receiving()) return SeekState::kNothing;
        const std::uint64_t left_ms = Left_ms();
        if (left_ms == 0) return OutOfTime();
        const auto wait_ms = static_cast<DWORD>(std::min<std::uint64_t>(left_ms, kLookWait_ms));
        if (look_ != 0 && !front_->AwaitLook(look_, wait_ms)) return SeekState::kUnderWay;
        const Guard guard(front_->lock_);
        const CBandSeek::Where where = plan_.GoOn(front_->seen_, since_ms_);
        *channel = plan_.Channel_10kHz();
        if (where == CBandSeek::Where::kFound) return SeekState::kFound;
        if (where == CBandSeek::Where::kNothing) {
            // Who seeks again wants the band looked at again.
            front_->soughtRound_ms_ = GetTickCount64();
            return SeekState::kNothing;
        }
        look_ = front_->OrderLook(plan_);
        return SeekState::kUnderWay;
    }

  private:
    std::uint64_t Left_ms() const {
        const std::uint64_t took_ms = GetTickCount64() - began_ms_;
        return kLongestSeek_ms - std::min(took_ms, kLongestSeek_ms);
    }
    SeekState OutOfTime() {
        const Guard guard(front_->lock_);
        front_->seekUnended_ms_ = GetTickCount64();
        front_->seekSince_ms_ = since_ms_;
        return SeekState::kNothing;
    }

    const std::shared_ptr<CRealFrontEnd> front_;
    CBandSeek plan_;
    const std::uint64_t since_ms_;
    const std::uint64_t began_ms_;
    std::uint64_t look_ = 0;
};

CRealFrontEnd::CRealFrontEnd(const handset::Antenna& antenna, const handset::AntennaChoice& choice)
    : name_(choice.antenna),
      deEmphasis_(choice.deemphasis_us == 75 ? sdr::DeEmphasis::k75us : sdr::DeEmphasis::k50us),
      source_(OpenSource(antenna, &stream_)),
      sound_(kSound_s, kLead_s),
      bridge_(sound::kSampleRate_Hz, kLead_s) {
    Apply(choice);
    thread_ = handset::WorkerThread([this] { Run(); }, [this] { return !stop_; });
}

CRealFrontEnd::~CRealFrontEnd() {
    stop_ = true;
    thread_.join();
}

void CRealFrontEnd::Apply(const handset::AntennaChoice& choice) {
    source_->SetGain(choice.gain, choice.correction_ppm, choice.bias);
}

void CRealFrontEnd::Tune(std::uint32_t channel) {
    const Guard guard(lock_);
    ++orders_.tuning;
    orders_.channel_10kHz = channel;
    orders_.around.reset();
    snapshot_ = {};
    texts_.Retune();
    changed_.NotifyAll();
    stream_.Wake();
    const Guard sound(soundLock_);
    sound_.Silence(NowFrame());
}

Reception CRealFrontEnd::Receive() {
    const Guard guard(lock_);
    Reception reception;
    reception.channel = orders_.channel_10kHz;
    if (snapshotOf_ != orders_.tuning) return reception;
    reception.level = snapshot_.level;
    reception.stereo = snapshot_.stereo;
    return reception;
}

StationServices CRealFrontEnd::Services() {
    const Guard guard(lock_);
    return texts_.Services();
}

std::optional<RdsText> CRealFrontEnd::TakeText() {
    const Guard guard(lock_);
    return texts_.Give();
}

std::string CRealFrontEnd::StationName() {
    const Guard guard(lock_);
    return texts_.ServiceName();
}

int CRealFrontEnd::AwaitLevel() {
    std::unique_lock<handset::CLock> lock(lock_);
    const std::uint64_t began_ms = GetTickCount64();
    for (;;) {
        if (!receiving_) return 0;
        const bool known = snapshotOf_ == orders_.tuning && snapshot_.measured;
        const std::uint64_t waited_ms = GetTickCount64() - began_ms;
        if (known || waited_ms >= kLongestLevel_ms) return known ? snapshot_.level : 0;
        changed_.WaitFor(&lock, static_cast<DWORD>(kLongestLevel_ms - waited_ms));
    }
}

void CRealFrontEnd::Render(const Reception&, std::uint64_t position, float* frames, std::size_t count) {
    const Guard guard(soundLock_);
    sound_.Read(position, frames, count);
}

std::unique_ptr<ISeek> CRealFrontEnd::Seek(bool up) {
    const Guard guard(lock_);
    const std::uint64_t now_ms = GetTickCount64();
    std::uint64_t since_ms = now_ms - std::min(now_ms, kStillKnown_ms);
    const bool goesOn = seekUnended_ms_ != 0 && now_ms - seekUnended_ms_ < kSeekGoesOn_ms;
    if (goesOn) since_ms = std::min(since_ms, seekSince_ms_);
    since_ms = std::max(since_ms, soughtRound_ms_ + 1);
    return std::make_unique<CRealSeek>(shared_from_this(), CBandSeek(orders_.channel_10kHz, up), since_ms);
}

bool CRealFrontEnd::Receiving() {
    const Guard guard(lock_);
    return receiving_;
}

std::uint64_t CRealFrontEnd::OrderLook(const CBandSeek& around) {
    orders_.around.emplace(around);
    stream_.Wake();
    return ++orders_.look;
}

bool CRealFrontEnd::AwaitLook(std::uint64_t look, DWORD timeout_ms) {
    std::unique_lock<handset::CLock> lock(lock_);
    const std::uint64_t tuning = orders_.tuning;
    const std::uint64_t began_ms = GetTickCount64();
    while (lookDone_ < look && tuning == orders_.tuning && receiving_) {
        const std::uint64_t waited_ms = GetTickCount64() - began_ms;
        if (waited_ms >= timeout_ms) return false;
        changed_.WaitFor(&lock, static_cast<DWORD>(timeout_ms - waited_ms));
    }
    return lookDone_ >= look;
}

void CRealFrontEnd::EndLooks() {
    const Guard guard(lock_);
    if (!orders_.around) return;
    orders_.around.reset();
    ++orders_.look;
    stream_.Wake();
}

void CRealFrontEnd::Run() {
    Work work;
    while (!stop_) {
        const CSampleStream::Taken taken = stream_.Take(kBlock_s, kBlockWait_ms, &work.bytes);
        work.inHand_s = taken.Seconds(work.bytes.size() + taken.lost);
        Follow(taken, &work);
        Orders orders;
        {
            const Guard guard(lock_);
            orders = orders_;
        }
        if (work.air) {
            Obey(orders, &work);
            Hear(taken, orders, &work);
        }
        Note(&work);
        Publish(&work);
    }
}

void CRealFrontEnd::Follow(const CSampleStream::Taken& taken, Work* work) {
    if (taken.stream == work->stream) return;
    work->stream = taken.stream;
    work->air.reset();
    work->done = {};
    if (taken.stream == 0) return;
    work->air = std::make_unique<CAirReceiver>(
        taken.form, deEmphasis_, &work->band,
        [this, work](double centre_Hz) { return source_->SetCentre(centre_Hz) + work->inHand_s; });
}

void CRealFrontEnd::Obey(const Orders& orders, Work* work) {
    if (orders.tuning != work->done.tuning) work->air->Tune(orders.channel_10kHz);
    // Also right behind a tuning, as in a scan.
    if (orders.look != work->done.look) {
        if (orders.around)
            work->air->Look(orders.around->Centre_Hz(work->air->HalfWidth_Hz()));
        else
            work->air->EndLook();
    }
    work->done = orders;
}

void CRealFrontEnd::Hear(const CSampleStream::Taken& taken, const Orders& orders, Work* work) {
    const std::uint64_t now_ms = GetTickCount64();
    work->frames.clear();
    if (taken.lost > 0) {
        work->lost_ms = now_ms;
        work->air->Lost(taken.lost, &work->frames);
    }
    if (!work->bytes.empty()) {
        work->heard_ms = now_ms;
        work->air->Process(work->bytes.data(), work->bytes.size(), now_ms, &work->frames);
    }
    if (work->frames.empty()) return;
    double fill_s = 0.0;
    {
        const Guard guard(soundLock_);
        fill_s = sound_.Fill_s(NowFrame());
    }
    work->sound.clear();
    // What the bridge holds back is of the station before.
    if (std::exchange(work->heard, orders.tuning) != orders.tuning) bridge_.Silence();
    // After a gap the fill says nothing of the clocks.
    if (fill_s < 0.0) bridge_.Restart();
    bridge_.Process(work->frames.data(), work->frames.size() / sound::kChannels, std::max(fill_s, 0.0),
                    &work->sound);

    const Guard guard(lock_);
    // Tuned meanwhile: this is the station before.
    if (orders_.tuning != orders.tuning) std::fill(work->sound.begin(), work->sound.end(), 0.0F);
    const Guard sound(soundLock_);
    sound_.Append(work->sound.data(), work->sound.size() / sound::kChannels, NowFrame());
}

void CRealFrontEnd::Note(Work* work) {
    const bool receiving = work->air && work->heard_ms != 0 && GetTickCount64() - work->heard_ms < kSilent_ms;
    const Guard guard(lock_);
    receiving_ = receiving;
    if (!receiving) {
        snapshot_ = {};
        texts_.Take({});
    } else if (work->done.tuning == orders_.tuning) {
        snapshot_ = work->air->Snapshot();
        snapshotOf_ = work->done.tuning;
        if (snapshot_.measured && !snapshot_.beside) texts_.Take(work->air->Station());
        seen_ = work->band;
        if (work->air->LookDone()) lookDone_ = work->done.look;
    }
    changed_.NotifyAll();
}

std::string CRealFrontEnd::Condition(const Work& work) {
    const std::string condition = stream_.Condition();
    const bool lost = work.lost_ms != 0 && GetTickCount64() - work.lost_ms < kLossShown_ms;
    if (condition != kPlays || !lost) return condition;
    return "this machine is too slow: samples are lost";
}

void CRealFrontEnd::Publish(Work* work) {
    const std::string condition = Condition(*work);
    if (condition != work->said) {
        work->said = condition;
        ReportLine("antenna: " + condition);
        work->published_ms = 0;
    }
    const std::uint64_t now_ms = GetTickCount64();
    if (now_ms - work->published_ms < kPublish_ms) return;
    work->published_ms = now_ms;
    handset::ReceptionState state;
    state.source = name_;
    state.condition = handset::Wide(condition);
    state.levels = work->band.Levels();
    {
        const Guard guard(lock_);
        state.channel_10kHz = orders_.channel_10kHz;
        state.level = static_cast<std::uint32_t>(snapshot_.level);
        state.stereo = snapshot_.stereo;
        state.carrierToNoise_dBHz = snapshot_.carrierToNoise_dBHz;
        if (snapshot_.offset_Hz)
            state.offset_Hz = static_cast<std::int32_t>(std::lround(*snapshot_.offset_Hz));
        if (snapshot_.blockErrors)
            state.blockErrors_percent =
                static_cast<std::uint32_t>(std::lround(*snapshot_.blockErrors * 100.0));
        state.pi = snapshot_.pi;
        const StationServices& services = texts_.Services();
        state.trafficProgramme = services.received && services.trafficProgramme;
        state.trafficAnnouncement = services.received && services.trafficAnnouncement;
    }
    handset::WriteReception(state);
}

}  // namespace fm
