// One filter for both kinds of file. A file is made when the graph leaves the stopped state and closed when
// it stops again or the stream ends; exactly one of the two events of graph_events.h tells of it.
#include "handset/capture/files/file_sink.h"

#include <cwchar>
#include <memory>

#include "handset/base/module_edge.h"
#include "handset/capture/files/device_file.h"
#include "handset/capture/files/sink_kinds.h"
#include "handset/capture/files/tuned_tags.h"
#include "handset/capture/graph/graph_events.h"
#include "handset/capture/graph/input_pin.h"

namespace capture {
namespace {

class CSinkPin final : public CInputPin {
  public:
    CSinkPin(CFilter* filter, IStreamSink* sink, const SinkKind& kind)
        : CInputPin(filter, sink, L"In"), kind_(kind) {}

  protected:
    // No type is better than another.
    std::vector<CMediaType> Types() const override { return {}; }
    bool Accepts(const CMediaType& type) const override { return kind_.acceptsStream(type); }

  private:
    const SinkKind& kind_;
};

class CFileSink final : public CFilter,
                        public IFileSinkFilter2,
                        public IAMFilterMiscFlags,
                        public IStreamSink {
  public:
    explicit CFileSink(const SinkKind& kind) : CFilter(kind.classId), kind_(kind), pin_(this, this, kind) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override {
        IBaseFilter* const filter = this;
        IFileSinkFilter2* const sink = this;
        IAMFilterMiscFlags* const flags = this;
        return AnswerQuery({{IID_IUnknown, filter},
                            {IID_IPersist, filter},
                            {IID_IMediaFilter, filter},
                            {IID_IBaseFilter, filter},
                            {IID_IFileSinkFilter, sink},
                            {IID_IFileSinkFilter2, sink},
                            {IID_IAMFilterMiscFlags, flags}},
                           iid, out);
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return CFilter::AddRef(); }
    ULONG STDMETHODCALLTYPE Release() override { return CFilter::Release(); }

    HRESULT STDMETHODCALLTYPE SetFileName(LPCOLESTR path, const AM_MEDIA_TYPE* type) override;
    HRESULT STDMETHODCALLTYPE GetCurFile(LPOLESTR* path, AM_MEDIA_TYPE* type) override;
    HRESULT STDMETHODCALLTYPE SetMode(DWORD flags) override;
    HRESULT STDMETHODCALLTYPE GetMode(DWORD* flags) override;

    ULONG STDMETHODCALLTYPE GetMiscFlags() override { return AM_FILTER_MISC_FLAGS_IS_RENDERER; }

    HRESULT OnSample(const BYTE* bytes, std::size_t size, REFERENCE_TIME start, REFERENCE_TIME stop) override;
    HRESULT OnEndOfStream() override;
    HRESULT OnBeginFlush() override { return S_OK; }
    HRESULT OnEndFlush() override { return S_OK; }

  protected:
    std::vector<CPin*> Pins() override { return {&pin_}; }
    HRESULT OnPause() override;
    HRESULT OnRun(REFERENCE_TIME) override;
    void OnStop() override;

  private:
    // Under the stream lock.
    HRESULT Begin();
    void Fail(HRESULT why);
    void CloseFile();
    void Complete();

    const SinkKind& kind_;
    CSinkPin pin_;
    std::wstring path_;  // as it was given; under the filter's lock
    CMediaType fileType_;
    CDeviceFile file_;                          // of the stream, like what follows
    std::unique_ptr<IRecordingWriter> writer_;  // none: there is no file
    RecordingTags tags_;                        // of the file
    bool ended_ = false;                        // the stream has ended, and nobody was told yet
};

HRESULT CFileSink::SetFileName(LPCOLESTR path, const AM_MEDIA_TYPE* type) try {
    if (path == nullptr) return E_POINTER;
    const std::lock_guard<handset::CRecursiveLock> guard(Lock());
    if (!Stopped()) return VFW_E_NOT_STOPPED;
    if (std::wcslen(path) >= MAX_PATH) return HRESULT_FROM_WIN32(ERROR_FILENAME_EXCED_RANGE);
    const CMediaType fileType = type != nullptr ? CMediaType(*type) : CMediaType();
    if (!kind_.acceptsFile(fileType)) return VFW_E_INVALIDMEDIATYPE;
    const HRESULT result = CDeviceFile::Check(path);
    if (FAILED(result)) return result;
    path_ = path;
    fileType_ = fileType;
    return S_OK;
} catch (...) {
    return handset::EdgeResult();
}

HRESULT CFileSink::GetCurFile(LPOLESTR* path, AM_MEDIA_TYPE* type) try {
    if (path == nullptr) return E_POINTER;
    *path = nullptr;
    const std::lock_guard<handset::CRecursiveLock> guard(Lock());
    if (!path_.empty()) {
        *path = static_cast<LPOLESTR>(CoTaskMemAlloc((path_.size() + 1) * sizeof(wchar_t)));
        if (*path == nullptr) return E_OUTOFMEMORY;
        std::wcscpy(*path, path_.c_str());
    }
    return type != nullptr ? fileType_.CopyTo(type) : S_OK;
} catch (...) {
    return handset::EdgeResult();
}

// A recording always begins with an empty file.
HRESULT CFileSink::SetMode(DWORD flags) {
    return flags == AM_FILE_OVERWRITE ? S_OK : E_INVALIDARG;
}

HRESULT CFileSink::GetMode(DWORD* flags) {
    if (flags == nullptr) return E_POINTER;
    *flags = AM_FILE_OVERWRITE;
    return S_OK;
}

// A filter that fails here would leave its graph half started, and the graphs of some hosts never recover. So
// the graph runs, and is told.
HRESULT CFileSink::OnPause() {
    const std::lock_guard<handset::CLock> guard(pin_.StreamLock());
    ended_ = false;
    const HRESULT result = Begin();
    if (result != S_OK) Notify(kEventWriteFailed, result, 0);
    return S_OK;
}

// S_FALSE: there is nothing to write or nowhere to write it.
HRESULT CFileSink::Begin() try {
    if (path_.empty() || !pin_.Connected()) return S_FALSE;
    const HRESULT created = file_.Create(path_);
    if (FAILED(created)) return created;
    writer_ = kind_.makeWriter(pin_.ConnectionType());
    tags_ = TagsNow(path_);
    writer_->Tag(tags_);
    if (writer_->Begin(&file_)) return S_OK;
    writer_.reset();
    file_.Close();
    return file_.Error();
} catch (...) {
    writer_.reset();
    file_.Close();
    return handset::EdgeResult();
}

HRESULT CFileSink::OnRun(REFERENCE_TIME) {
    const std::lock_guard<handset::CLock> guard(pin_.StreamLock());
    Complete();
    return S_OK;
}

// What is still under way is not waited for: the stream control ends a stream before its graph is stopped.
void CFileSink::OnStop() {
    const std::lock_guard<handset::CLock> guard(pin_.StreamLock());
    CloseFile();
}

HRESULT CFileSink::OnSample(const BYTE* bytes, std::size_t size, REFERENCE_TIME, REFERENCE_TIME) {
    if (!writer_) return S_FALSE;
    if (writer_->Write(bytes, size)) return S_OK;
    Fail(file_.Error() != S_OK ? file_.Error() : E_FAIL);
    return S_FALSE;
}

void CFileSink::Fail(HRESULT why) {
    // What was written before is made to play as far as it can be.
    (void)writer_->Finish();
    writer_.reset();
    file_.Close();
    Notify(kEventWriteFailed, why, 0);
}

HRESULT CFileSink::OnEndOfStream() {
    ended_ = true;
    if (Running()) Complete();
    return S_OK;
}

void CFileSink::CloseFile() {
    if (!writer_) return;
    writer_->Tag(TagsAtEnd(path_, tags_));
    const bool complete = writer_->Finish();
    writer_.reset();
    file_.Close();
    Notify(complete ? kEventFileWritten : kEventWriteFailed, complete ? S_OK : file_.Error(), 0);
}

// The end of the stream, once: the file, and the word to the graph that this filter is done.
void CFileSink::Complete() {
    if (!ended_) return;
    ended_ = false;
    CloseFile();
    IBaseFilter* const filter = this;
    Notify(EC_COMPLETE, S_OK, reinterpret_cast<LONG_PTR>(filter));
}

HRESULT CreateSink(const SinkKind& kind, REFIID iid, void** out) {
    CRef<IBaseFilter> filter;
    *filter.Put() = new CFileSink(kind);
    return filter->QueryInterface(iid, out);
}

}  // namespace

HRESULT CreateWavSink(REFIID iid, void** out) {
    return CreateSink(kWavSink, iid, out);
}

HRESULT CreateAmrSink(REFIID iid, void** out) {
    return CreateSink(kAmrSink, iid, out);
}

}  // namespace capture
