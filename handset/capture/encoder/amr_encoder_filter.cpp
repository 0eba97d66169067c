// Speech in, AMR frames out. Before Init it takes no connection.
#include "handset/capture/encoder/amr_encoder_filter.h"

#include <memory>
#include <optional>

#include "handset/base/module_edge.h"
#include "handset/capture/encoder/amr_encoder.h"
#include "handset/capture/graph/capture_formats.h"
#include "handset/capture/graph/class_ids.h"
#include "handset/capture/graph/input_pin.h"
#include "handset/capture/graph/output_pin.h"
#include "handset/capture/graph/stream_control.h"
#include "handset/include/audiowrapper.h"

namespace capture {
namespace {

constexpr DWORD kBytesPerSecond = 50 * kLargestAmrFrame_bytes;
constexpr sound::WavShape kSpeech{kAmrRate_Hz, 1, 16};

CMediaType SpeechType() {
    WAVEFORMATEX format{};
    format.wFormatTag = WAVE_FORMAT_PCM;
    format.nChannels = kSpeech.channels;
    format.nSamplesPerSec = kSpeech.rate_Hz;
    format.wBitsPerSample = kSpeech.bits;
    format.nBlockAlign = static_cast<WORD>(kSpeech.FrameBytes());
    format.nAvgBytesPerSec = format.nSamplesPerSec * format.nBlockAlign;
    return CMediaType(MEDIASUBTYPE_PCM, format);
}

CMediaType AmrType() {
    WAVEFORMATEX format{};
    format.wFormatTag = kWaveFormatAmr;
    format.nChannels = 1;
    format.nSamplesPerSec = kAmrRate_Hz;
    format.nBlockAlign = kLargestAmrFrame_bytes;
    format.nAvgBytesPerSec = kBytesPerSecond;
    return CMediaType(kSubtypeAmr, format);
}

class CSpeechPin final : public CInputPin {
  public:
    CSpeechPin(CFilter* filter, IStreamSink* sink, const bool* ready)
        : CInputPin(filter, sink, L"In"), ready_(*ready) {}

  protected:
    std::vector<CMediaType> Types() const override {
        return ready_ ? std::vector<CMediaType>{SpeechType()} : std::vector<CMediaType>{};
    }
    bool Accepts(const CMediaType& type) const override {
        const auto shape = PcmShape(type);
        return ready_ && shape && shape->rate_Hz == kSpeech.rate_Hz && shape->channels == kSpeech.channels &&
               shape->bits == kSpeech.bits;
    }

  private:
    const bool& ready_;
};

class CFramesPin final : public COutputPin {
  public:
    CFramesPin(CFilter* filter, const bool* ready) : COutputPin(filter, L"Out"), ready_(*ready) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override {
        return AnswerQuery({{IID_IUnknown, this}, {IID_IPin, this}}, iid, out);
    }

  protected:
    std::vector<CMediaType> Types() const override {
        return ready_ ? std::vector<CMediaType>{AmrType()} : std::vector<CMediaType>{};
    }
    bool Accepts(const CMediaType& type) const override { return ready_ && type == AmrType(); }
    ALLOCATOR_PROPERTIES Buffers() const override { return {4, kBytesPerSecond, 1, 0}; }

  private:
    const bool& ready_;
};

class CAmrEncoderFilter final : public CFilter, public IAudioWrapperFilter, public IStreamSink {
  public:
    CAmrEncoderFilter() : CFilter(kClassAmrEncoder), in_(this, this, &ready_), out_(this, &ready_) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override {
        IBaseFilter* const filter = this;
        IAudioWrapperFilter* const wrapper = this;
        return AnswerQuery({{IID_IUnknown, filter},
                            {IID_IPersist, filter},
                            {IID_IMediaFilter, filter},
                            {IID_IBaseFilter, filter},
                            {IID_IAudioWrapperFilter, wrapper}},
                           iid, out);
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return CFilter::AddRef(); }
    ULONG STDMETHODCALLTYPE Release() override { return CFilter::Release(); }

    HRESULT STDMETHODCALLTYPE Init(const GUID* codec, const GUID* category) override;

    HRESULT OnSample(const BYTE* bytes, std::size_t size, REFERENCE_TIME start, REFERENCE_TIME stop) override;
    HRESULT OnEndOfStream() override;
    HRESULT OnBeginFlush() override { return out_.DeliverBeginFlush(); }
    HRESULT OnEndFlush() override;

  protected:
    std::vector<CPin*> Pins() override { return {&in_, &out_}; }
    HRESULT OnPause() override;
    void OnStop() override;

  private:
    HRESULT DeliverFrames(REFERENCE_TIME stop);

    bool ready_ = false;  // the codec has been chosen; under the filter's lock
    CSpeechPin in_;
    CFramesPin out_;
    std::unique_ptr<CAmrEncoder> encoder_;  // of the stream, like what follows
    std::vector<std::uint8_t> frames_;
};

HRESULT CAmrEncoderFilter::Init(const GUID* codec, const GUID* category) try {
    if (codec == nullptr || category == nullptr) return E_POINTER;
    const std::lock_guard<handset::CRecursiveLock> guard(Lock());
    if (ready_) return E_UNEXPECTED;
    if (*category != CLSID_AudioCompressorCategory) return E_INVALIDARG;
    if (*codec != kCodecAmr) return CLASS_E_CLASSNOTAVAILABLE;
    ready_ = true;
    return S_OK;
} catch (...) {
    return handset::EdgeResult();
}

HRESULT CAmrEncoderFilter::OnPause() {
    if (!in_.Connected() || !out_.Connected()) return S_OK;
    encoder_ = std::make_unique<CAmrEncoder>();
    return *encoder_ ? out_.Activate() : E_OUTOFMEMORY;
}

// The buffers go first: the stream may be waiting for one.
void CAmrEncoderFilter::OnStop() {
    out_.Deactivate();
    const std::lock_guard<handset::CLock> guard(in_.StreamLock());
    encoder_.reset();
}

HRESULT CAmrEncoderFilter::OnSample(const BYTE* bytes, std::size_t size, REFERENCE_TIME,
                                    REFERENCE_TIME stop) {
    if (!encoder_) return VFW_E_NOT_CONNECTED;
    frames_.clear();
    encoder_->Encode(reinterpret_cast<const std::int16_t*>(bytes), size / sizeof(std::int16_t), &frames_);
    const auto rest = static_cast<REFERENCE_TIME>(encoder_->Rest());
    return DeliverFrames(stop - rest * kStreamSecond / kAmrRate_Hz);
}

HRESULT CAmrEncoderFilter::DeliverFrames(REFERENCE_TIME stop) {
    if (frames_.empty()) return S_OK;
    const auto samples =
        static_cast<REFERENCE_TIME>(frames_.size() / kLargestAmrFrame_bytes * kAmrFrame_samples);
    const REFERENCE_TIME start = stop - samples * kStreamSecond / kAmrRate_Hz;
    return out_.Deliver(frames_.data(), frames_.size(), start, stop, false);
}

HRESULT CAmrEncoderFilter::OnEndOfStream() {
    if (!encoder_) return VFW_E_NOT_CONNECTED;
    frames_.clear();
    encoder_->Flush(&frames_);
    const HRESULT result = DeliverFrames(0);
    return result == S_OK ? out_.DeliverEndOfStream() : result;
}

HRESULT CAmrEncoderFilter::OnEndFlush() {
    if (encoder_) encoder_ = std::make_unique<CAmrEncoder>();
    return out_.DeliverEndFlush();
}

}  // namespace

HRESULT CreateAmrEncoderFilter(REFIID iid, void** out) {
    CRef<IBaseFilter> filter;
    *filter.Put() = new CAmrEncoderFilter;
    return filter->QueryInterface(iid, out);
}

}  // namespace capture
