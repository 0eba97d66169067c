// The formats in which sound can be captured.
#pragma once

#include <optional>

#include "handset/capture/graph/direct_show.h"
#include "handset/capture/graph/media_type.h"
#include "handset/sound/wav.h"

namespace capture {

int CaptureFormatCount();
// `index` is below the count; the best format is the first.
CMediaType CaptureFormatType(int index);
AUDIO_STREAM_CONFIG_CAPS CaptureFormatCaps(int index);

// PCM sound of one or two channels of 8 or 16 bits; 0 bits mean 16. Nothing for any other type. Block length
// and bytes per second are not looked at: a client that changes a format does not always set them right.
std::optional<sound::WavShape> PcmShape(const CMediaType& type);
// True for a shape that the capture filter can make.
bool CanCapture(const sound::WavShape& shape);

}  // namespace capture
