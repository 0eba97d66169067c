// A capture graph that writes down what is asked of it and answers as the test wants. Its classes take the
// place of the real ones in this process: CoCreateInstance finds them first.
#pragma once

#include <windows.h>

#include <dshow.h>

#include <condition_variable>
#include <deque>
#include <map>
#include <mutex>
#include <set>
#include <string>
#include <vector>

namespace test {

// A format that the capture pin offers.
struct Capability {
    DWORD rate_Hz;
    WORD channels;
    WORD bits;
    bool waveFormat = true;  // false: a media type of another kind
};

class FakeGraph {
  public:
    FakeGraph();
    ~FakeGraph();
    FakeGraph(const FakeGraph&) = delete;
    FakeGraph& operator=(const FakeGraph&) = delete;

    // What it answers. Results by call, such as "graph.AddFilter", or by call and first arguments, such as
    // "graph.AddFilter encoder"; the others succeed.
    std::map<std::string, HRESULT> results;
    std::vector<Capability> capabilities = {{8000, 1, 16}, {22050, 2, 16}, {44100, 2, 16}};
    int capabilitySize = 52;
    LONGLONG position = 0;
    // Events that Stop brings about; without one the event loop goes on waiting.
    std::vector<LONG> eventsOfStop = {257};
    // Raised, it ends the wait with E_ABORT.
    static constexpr LONG kNoEvent = -1;

    // Everything so far, with arguments. Waiting for an event is left out.
    std::vector<std::string> Calls() const;
    std::vector<std::string> CallsOf(const std::string& object) const;
    void ForgetCalls();
    // References that the application still holds, by object; those without are left out.
    std::map<std::string, long> References() const;
    // Media types that were handed out and whose own object was not released.
    long OpenMediaTypes() const;
    // Blocks of memory of the media types that were handed out, two for each, and not freed.
    std::size_t OpenBlocks() const;
    void Raise(LONG event);

    // For the objects.
    HRESULT Note(const std::string& call, const std::string& arguments = "");
    void Hold(const std::string& object, long change);
    HRESULT NextEvent(LONG* code);
    AM_MEDIA_TYPE* NewMediaType(const Capability& capability);
    void Freed(void* block);

  private:
    int ThreadsThatWait() const;

    mutable std::mutex m_mutex;  // guards what follows
    std::condition_variable m_raised;
    std::deque<LONG> m_events;
    int m_waiting = 0;  // threads in NextEvent
    std::vector<std::string> m_calls;
    std::map<std::string, long> m_references;
    std::set<void*> m_blocks;
    std::vector<DWORD> m_registered;
};

}  // namespace test
