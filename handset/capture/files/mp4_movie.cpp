// The boxes, each in the order of its definition in the standard.
#include "handset/capture/files/mp4_movie.h"

#include <algorithm>

#include "handset/capture/encoder/amr_frames.h"

namespace capture {
namespace {

constexpr std::uint32_t kTrack = 1;

void Matrix(CBoxBytes* out) {
    for (const std::uint32_t value : {0x10000u, 0u, 0u, 0u, 0x10000u, 0u, 0u, 0u, 0x40000000u})
        out->U32(value);
}

// ISO 14496-12, 8.2.2.
void MovieHeader(CBoxBytes* out, std::uint32_t created, std::uint32_t duration) {
    const CBox box(out, "mvhd", 0, 0);
    for (const std::uint32_t value : {created, created, kAmrRate_Hz, duration}) out->U32(value);
    out->U32(0x10000);  // rate 1
    out->U16(0x100);    // volume 1
    out->Zeros(10);
    Matrix(out);
    out->Zeros(24);
    out->U32(kTrack + 1);
}

// 8.3.2; enabled, in movie, in preview.
void TrackHeader(CBoxBytes* out, std::uint32_t created, std::uint32_t duration) {
    const CBox box(out, "tkhd", 0, 7);
    for (const std::uint32_t value : {created, created, kTrack, 0u, duration}) out->U32(value);
    out->Zeros(8 + 4);
    out->U16(0x100);  // volume 1
    out->Zeros(2);
    Matrix(out);
    out->Zeros(8);
}

// 8.4.2 and 8.4.3.
void MediaHeader(CBoxBytes* out, std::uint32_t created, std::uint32_t duration) {
    {
        const CBox box(out, "mdhd", 0, 0);
        for (const std::uint32_t value : {created, created, kAmrRate_Hz, duration}) out->U32(value);
        out->U16(0x55C4);  // language "und"
        out->U16(0);
    }
    const CBox box(out, "hdlr", 0, 0);
    out->U32(0);
    out->Type("soun");
    out->Zeros(12 + 1);
}

// TS 26.244, 6.5 and 6.7: the number of channels and of bits are fixed there, whatever the sound is.
void SampleDescription(CBoxBytes* out) {
    const CBox box(out, "stsd", 0, 0);
    out->U32(1);
    const CBox entry(out, "samr");
    out->Zeros(6);
    out->U16(1);  // data reference
    out->Zeros(8);
    out->U16(2);
    out->U16(16);
    out->Zeros(4);
    out->U16(kAmrRate_Hz);
    out->U16(0);
    const CBox specific(out, "damr");
    out->Type("Kora");
    out->U8(0);        // decoder version
    out->U16(0x81FF);  // any mode may come
    out->U8(0);        // a mode may change at every frame
    out->U8(1);        // frames a sample
}

// 8.6.1.2, 8.7.4, 8.7.3 and 8.7.5.
void SampleTables(CBoxBytes* out, const Mp4Samples& samples) {
    {
        const auto count = static_cast<std::uint32_t>(samples.frame_bytes.size());
        const CBox box(out, "stts", 0, 0);
        out->U32(count == 0 ? 0 : 1);
        if (count != 0) out->U32(count);
        if (count != 0) out->U32(kAmrFrame_samples);
    }
    {
        CBoxBytes runs;
        std::uint32_t count = 0;
        for (std::size_t i = 0; i < samples.chunks.size(); ++i) {
            if (i > 0 && samples.chunks[i].frames == samples.chunks[i - 1].frames) continue;
            runs.U32(static_cast<std::uint32_t>(i + 1));
            runs.U32(samples.chunks[i].frames);
            runs.U32(1);  // sample description
            ++count;
        }
        const CBox box(out, "stsc", 0, 0);
        out->U32(count);
        for (const std::uint8_t byte : runs.Bytes()) out->U8(byte);
    }
    {
        const CBox box(out, "stsz", 0, 0);
        const std::uint32_t common = samples.CommonLength();
        out->U32(common);
        out->U32(static_cast<std::uint32_t>(samples.frame_bytes.size()));
        if (common == 0) {
            for (const std::uint8_t length : samples.frame_bytes) out->U32(length);
        }
    }
    const CBox box(out, "stco", 0, 0);
    out->U32(static_cast<std::uint32_t>(samples.chunks.size()));
    for (const Mp4Chunk& chunk : samples.chunks) out->U32(static_cast<std::uint32_t>(chunk.offset));
}

void MediaInformation(CBoxBytes* out, const Mp4Samples& samples) {
    const CBox box(out, "minf");
    {
        const CBox sound(out, "smhd", 0, 0);
        out->Zeros(4);
    }
    {
        const CBox information(out, "dinf");
        const CBox reference(out, "dref", 0, 0);
        out->U32(1);
        const CBox location(out, "url ", 0, 1);  // in this file
    }
    const CBox table(out, "stbl");
    SampleDescription(out);
    SampleTables(out, samples);
}

void MovieAndTrack(CBoxBytes* out, std::uint32_t created, const Mp4Samples& samples) {
    const auto duration = static_cast<std::uint32_t>(samples.frame_bytes.size() * kAmrFrame_samples);
    MovieHeader(out, created, duration);
    const CBox track(out, "trak");
    TrackHeader(out, created, duration);
    const CBox media(out, "mdia");
    MediaHeader(out, created, duration);
    MediaInformation(out, samples);
}

}  // namespace

std::uint32_t Mp4Samples::CommonLength() const {
    if (frame_bytes.empty()) return 0;
    const auto other = std::find_if(frame_bytes.begin(), frame_bytes.end(),
                                    [this](std::uint8_t length) { return length != frame_bytes.front(); });
    return other == frame_bytes.end() ? frame_bytes.front() : 0;
}

CBoxBytes Mp4FileType() {
    CBoxBytes out;
    {
        const CBox box(&out, "ftyp");
        out.Type("3gp4");
        out.U32(0x200);  // version 4.2 of TS 26.244's table of brands
        out.Type("3gp4");
        out.Type("isom");
        out.Type("mp42");
    }
    const CBox box(&out, "free");
    out.Zeros(kPlaceholder_bytes - 8);
    return out;
}

CBoxBytes Mp4MediaDataHeader(std::uint64_t end) {
    CBoxBytes out;
    out.U32(1);  // the size is the 64-bit one
    out.Type("mdat");
    out.U64(end - kPlaceholderOffset);
    return out;
}

CBoxBytes Mp4FragmentedMovie(std::uint32_t created, const RecordingTags& tags) {
    CBoxBytes out;
    const CBox movie(&out, "moov");
    MovieAndTrack(&out, created, {});
    AppendMp4Tags(&out, tags);
    const CBox extends(&out, "mvex");
    const CBox box(&out, "trex", 0, 0);  // 8.8.3
    for (const std::uint32_t value : {kTrack, 1u, static_cast<std::uint32_t>(kAmrFrame_samples), 0u, 0u})
        out.U32(value);
    return out;
}

CBoxBytes Mp4CompleteMovie(std::uint32_t created, const Mp4Samples& samples, const RecordingTags& tags) {
    CBoxBytes out;
    const CBox movie(&out, "moov");
    MovieAndTrack(&out, created, samples);
    AppendMp4Tags(&out, tags);
    return out;
}

CBoxBytes Mp4FragmentHead(std::uint64_t offset, std::uint32_t sequence, std::uint64_t before,
                          const std::vector<std::uint8_t>& frame_bytes) {
    // 8.8.4 to 8.8.8, 8.8.12. The lengths of the boxes are fixed but for a list of frame lengths.
    constexpr std::uint32_t kMoof_bytes = 8 + 16 + 8 + 28 + 20 + 20;
    const std::uint32_t common = Mp4Samples{frame_bytes, {}}.CommonLength();
    const auto count = static_cast<std::uint32_t>(frame_bytes.size());
    CBoxBytes out;
    {
        const CBox fragment(&out, "moof");
        {
            const CBox box(&out, "mfhd", 0, 0);
            out.U32(sequence);
        }
        const CBox track(&out, "traf");
        {
            const CBox box(&out, "tfhd", 0, 0x11);  // with the place of the data and a length for every frame
            out.U32(kTrack);
            out.U64(offset);
            out.U32(common);
        }
        {
            const CBox box(&out, "tfdt", 1, 0);
            out.U64(before * kAmrFrame_samples);
        }
        const CBox box(&out, "trun", 0, common == 0 ? 0x201 : 0x1);  // with the place, and lengths
        out.U32(count);
        out.U32(kMoof_bytes + (common == 0 ? 4 * count : 0) + 8);
        if (common == 0) {
            for (const std::uint8_t length : frame_bytes) out.U32(length);
        }
    }
    std::uint32_t bytes = 8;
    for (const std::uint8_t length : frame_bytes) bytes += length;
    out.U32(bytes);
    out.Type("mdat");
    return out;
}

}  // namespace capture
