// The WAV writer and the multiplexer.
#include "handset/capture/files/sink_kinds.h"

#include "handset/base/calendar.h"
#include "handset/base/file_time.h"
#include "handset/capture/files/amr_file_writer.h"
#include "handset/capture/files/tuned_tags.h"
#include "handset/capture/files/wav_writer.h"
#include "handset/capture/graph/capture_formats.h"
#include "handset/capture/graph/class_ids.h"

namespace capture {
namespace {

bool IsPcm(const CMediaType& type) {
    return PcmShape(type).has_value();
}

bool IsAmr(const CMediaType& type) {
    return type.Major() == MEDIATYPE_Audio && type.Subtype() == kSubtypeAmr && type.Wave() != nullptr;
}

bool IsPlainFile(const CMediaType& type) {
    return type.Major() == GUID_NULL || (type.Major() == MEDIATYPE_Stream && type.Subtype() == GUID_NULL);
}

bool IsAmrFile(const CMediaType& type) {
    return type.Major() == GUID_NULL || (type.Major() == MEDIATYPE_Audio && type.Subtype() == kFileAmr);
}

std::unique_ptr<IRecordingWriter> WavWriter(const CMediaType& stream) {
    return std::make_unique<CWavWriter>(PcmShape(stream).value_or(sound::WavShape{}));
}

// Seconds since the beginning of 1904, as the file counts them.
std::unique_ptr<IRecordingWriter> AmrWriter(const CMediaType&) {
    constexpr std::uint64_t kFrom1601To1904_s =
        (handset::kFirstDayOfMovies - handset::kFirstDayOfFileTimes) * handset::kSecondsOfDay;
    const std::uint64_t ticks = handset::Ticks(HandsetFileTime());
    return std::make_unique<CAmrFileWriter>(
        static_cast<std::uint32_t>(ticks / 10'000'000 - kFrom1601To1904_s));
}

}  // namespace

const SinkKind kWavSink = {kClassWavWriter, IsPcm, IsPlainFile, WavWriter};
const SinkKind kAmrSink = {kClassMultiplexer, IsAmr, IsAmrFile, AmrWriter};

}  // namespace capture
