#include "handset/fmdevice/antenna/file_source.h"

#include <windows.h>

#include "handset/base/module_edge.h"
#include "handset/base/utf8.h"
#include "handset/state/handset_state.h"

namespace fm {
namespace {

constexpr DWORD kRetry_ms = 500;
constexpr DWORD kLook_ms = 50;
constexpr DWORD kPiece_ms = 10;
// A machine that was busy for longer does not make up for it.
constexpr double kLatest_s = 0.3;

std::string HostPathOf(const std::string& path) {
    const bool onDevice = path.size() > 1 && path[0] == '\\' && path[1] != '\\';
    return onDevice ? handset::Utf8(handset::HostPath(handset::Wide(path).c_str())) : path;
}

}  // namespace

CFileSource::CFileSource(const handset::Antenna& antenna, CSampleStream* stream)
    : antenna_(antenna), stream_(stream) {
    thread_ = handset::WorkerThread([this] { Run(); }, [this] { return !stop_; });
}

CFileSource::~CFileSource() {
    stop_ = true;
    thread_.join();
}

std::string CFileSource::Open(sdr::CIqFile* file) const {
    sdr::IqHints hints;
    if (!antenna_.form.empty()) hints.form = sdr::FormNamed(antenna_.form);
    hints.rate_Hz = antenna_.rate_Hz;
    hints.centre_Hz = antenna_.centre_Hz;
    const std::string fault = file->Open(HostPathOf(antenna_.path), hints);
    if (!fault.empty()) return fault;
    if (!file->Description().centre_Hz)
        return antenna_.path + ": its centre is not known; it has to be given";
    return {};
}

void CFileSource::Run() {
    while (!stop_) {
        sdr::CIqFile file;
        const std::string fault = Open(&file);
        if (fault.empty()) {
            Play(&file);
            stream_->End();
            continue;
        }
        stream_->Say(fault);
        for (DWORD waited = 0; waited < kRetry_ms && !stop_; waited += kLook_ms) ::Sleep(kLook_ms);
    }
}

void CFileSource::Play(sdr::CIqFile* file) {
    StreamForm form;
    // As the file's reader gives them.
    form.form = sdr::SampleForm::kCf32;
    form.rate_Hz = file->Description().rate_Hz;
    form.centre_Hz = *file->Description().centre_Hz;
    form.tunable = false;
    stream_->Begin(form);
    stream_->Say(kPlays);
    std::uint64_t began_ms = GetTickCount64();
    double played = 0.0;  // samples
    std::vector<sdr::Sample> samples;
    bool empty = false;
    while (!stop_) {
        const double due = static_cast<double>(GetTickCount64() - began_ms) / 1000.0 * form.rate_Hz;
        if (due - played > kLatest_s * form.rate_Hz) {
            began_ms = GetTickCount64();
            played = 0.0;
            continue;
        }
        if (due - played < form.rate_Hz * kPiece_ms / 1000.0) {
            ::Sleep(kPiece_ms);
            continue;
        }
        samples.clear();
        const std::size_t read = file->Read(static_cast<std::size_t>(due - played), &samples);
        if (read == 0) {
            // Cut off or taken away meanwhile.
            if (empty) return;
            empty = true;
            file->Rewind();
            continue;
        }
        empty = false;
        played += static_cast<double>(read);
        stream_->Write(reinterpret_cast<const std::uint8_t*>(samples.data()), read * sizeof(sdr::Sample));
    }
}

}  // namespace fm
