// A recording graph, made with the calls that the radio makes.
#pragma once

#include <atomic>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "tests/unit/capture/fixture.h"

namespace test {

struct AskedFormat {
    DWORD rate_Hz;
    WORD channels;
    WORD bits;
};
inline constexpr AskedFormat kSpeech = {8000, 1, 16};

struct GraphEvent {
    long code;
    LONG_PTR first;
    LONG_PTR second;
};

class CRecordingRig {
  public:
    ~CRecordingRig();

    // Each gives the first failure, or S_OK.
    HRESULT Build(const AskedFormat& format);
    HRESULT AttachWav(const std::wstring& path);
    HRESULT AttachAmr(const std::wstring& path);
    // Blocks the stream, runs the graph and lets the stream flow; events are collected from then on.
    HRESULT Start();
    // Stops the stream at the position that the graph has reached, and then the graph; waits for the loop of
    // events.
    HRESULT Stop();
    // The same without asking for the end of the stream.
    HRESULT StopGraph();
    // Releases everything; false when some filter had other references left.
    bool Release();

    // The events that came, up to the one that ended the loop (0x101 or 0x104).
    std::vector<GraphEvent> Events();
    bool SawEvent(long code);
    // The loop of events has ended.
    bool Ended() const { return ended_; }

    CRef<ICaptureGraphBuilder2> builder;
    CRef<IGraphBuilder> graph;
    CRef<IMediaControl> control;
    CRef<IMediaEvent> events;
    CRef<IMediaSeeking> seeking;
    CRef<IBaseFilter> capture;
    CRef<IBaseFilter> encoder;
    CRef<IBaseFilter> sink;
    CRef<IAMStreamConfig> config;
    // The stream times at which the stream was let go, for which its stop was asked, and by which it had
    // come: what was in the file before it was asked stays there.
    REFERENCE_TIME startedAt = 0;
    REFERENCE_TIME stoppedAt = 0;
    REFERENCE_TIME stoppedBy = 0;
    double Seconds() const { return static_cast<double>(stoppedAt - startedAt) / 1e7; }
    double MostSeconds() const { return static_cast<double>(stoppedBy - startedAt) / 1e7; }
    // The handset's time in milliseconds of both.
    std::uint64_t started_ms = 0;
    std::uint64_t stopped_ms = 0;

  private:
    HRESULT Choose(const AskedFormat& format);
    HRESULT AskForStart();
    HRESULT SetFile(const IID& iid, const std::wstring& path, const GUID& major, const GUID& subtype);
    void CollectEvents();

    std::thread loop_;
    std::mutex lock_;  // guards seen_
    std::vector<GraphEvent> seen_;
    std::atomic<bool> ended_{false};
};

// Waits until the handset's clock has gone on by so much.
void LetPass(std::uint64_t handset_ms);

}  // namespace test
