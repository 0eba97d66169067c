// What sets the two file sinks apart.
#pragma once

#include <windows.h>

#include <memory>

#include "handset/capture/files/recording_file.h"
#include "handset/capture/graph/media_type.h"

namespace capture {

struct SinkKind {
    const CLSID& classId;
    // Whether it takes a type of stream.
    bool (*acceptsStream)(const CMediaType& type);
    // Whether it makes files of the type that a client gives with the name; an empty type leaves it to the
    // sink.
    bool (*acceptsFile)(const CMediaType& type);
    std::unique_ptr<IRecordingWriter> (*makeWriter)(const CMediaType& stream);
};

extern const SinkKind kWavSink;
extern const SinkKind kAmrSink;

}  // namespace capture
