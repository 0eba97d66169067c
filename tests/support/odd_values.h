// Registry values as no program of the handset writes them: of another type, without a terminator, of any
// length, or gone.
#pragma once

#include <windows.h>

#include <atomic>
#include <random>
#include <string>
#include <thread>
#include <vector>

namespace test {

// A value that the radio or the handset reads; `key` is below the handset's state key and may be the key
// itself ("").
struct ReadPlace {
    const wchar_t* pszKey;
    const wchar_t* pszValue;
};
// What a running radio reads. Without "Headset", which ends it.
extern const std::vector<ReadPlace> kReadByTheRadio;
// What a radio reads as it starts, and the programs of the handset read beside it.
extern const std::vector<ReadPlace> kReadAtAStart;
// What the start with "Kora.vol" reads.
extern const std::vector<ReadPlace> kReadAsPresets;

// Writes one odd value there, or takes the value away.
void WriteOddValue(const ReadPlace& place, std::mt19937& random);

// Writes a text there that is longer than any buffer.
void WriteLongText(const ReadPlace& place);

// Writes odd values as fast as it can, from a thread of its own, until it goes.
class OddWriter {
  public:
    OddWriter(const std::vector<ReadPlace>& places, unsigned seed);
    ~OddWriter();
    OddWriter(const OddWriter&) = delete;
    OddWriter& operator=(const OddWriter&) = delete;
    unsigned Written() const { return m_written; }

  private:
    std::atomic<bool> m_over{false};
    std::atomic<unsigned> m_written{0};
    std::thread m_thread;
};

}  // namespace test
