// The simulated band: a front end whose antenna is the file \Windows\band.ini (see band_file.h). A channel
// without a station is noise. The file is read again when it has changed and is whole: until then, and while
// it cannot be read, the band is the one that was read last. Each fault in it is a line in the debug output.
#pragma once

#include <windows.h>

#include <atomic>
#include <memory>
#include <optional>
#include <string>

#include "handset/fmdevice/band/front_end.h"
#include "handset/fmdevice/band/generators.h"
#include "handset/fmdevice/band/rds_reader.h"
#include "handset/fmdevice/band/receiver_sound.h"

namespace fm {

class CSimulatedBand : public ITunerFrontEnd {
  public:
    void Power(bool on) override;
    [[nodiscard]] bool Refresh() override;
    void Tune(std::uint32_t channel) override;
    [[nodiscard]] Reception Receive() override;
    [[nodiscard]] StationServices Services() override;
    [[nodiscard]] std::optional<RdsText> TakeText() override;
    [[nodiscard]] std::string StationName() override;
    [[nodiscard]] std::unique_ptr<ISeek> Seek(bool up) override;
    [[nodiscard]] int AwaitLevel() override;
    // With the receiver's lock: the level at any channel of the band.
    [[nodiscard]] int Level(std::uint32_t channel) const;
    void Render(const Reception& reception, std::uint64_t position, float* frames,
                std::size_t count) override;

  private:
    // What tells one state of the file from another.
    struct FileStamp {
        bool there = false;
        std::uint64_t written = 0;  // 100 ns
        std::uint64_t size = 0;
        bool operator==(const FileStamp& other) const {
            return there == other.there && written == other.written && size == other.size;
        }
    };
    // What one look at the file found; without a text: it could not be read.
    struct FileLook {
        FileStamp stamp;
        std::optional<std::string> text;
        bool operator==(const FileLook& other) const { return stamp == other.stamp && text == other.text; }
    };
    static FileStamp StampOf(const std::wstring& hostPath);
    // Whether nobody is writing it: it is as it was at an earlier look, or was written well before.
    bool IsAtRest(const FileLook& look, std::uint64_t now_100ns);
    void Read(const std::string& text);
    bool RefreshFile();
    // True when the handset's limit of reception has changed.
    bool RefreshLimit();
    // What the tuned station sends; empty when it sends nothing, or there is none.
    const RdsData& Sent() const;
    void Listen();

    Band band_;
    std::uint32_t channel_ = kBandBottom_10kHz;
    CRdsReader rds_;
    // Of the tuned channel, for who asks without the receiver's lock.
    std::atomic<int> level_{0};
    int limit_ = 100;                   // no station comes in better; the state value SignalLimit
    std::uint32_t limitedChannel_ = 0;  // the only one that the limit is for; 0 = all
    bool looked_ = false;
    std::wstring path_;
    FileStamp stamp_;
    // A file written a moment ago may change once more without its time of writing showing it.
    bool settled_ = false;
    std::string text_;
    bool unreadable_ = false;  // it is there and was said to be unreadable
    FileLook seen_;
    std::uint64_t seenSince_100ns_ = 0;

    // The sound thread's own.
    std::unique_ptr<IGenerator> generator_;
    std::uint32_t generatorChannel_ = 0;
    std::string generatorSource_;
    CHiss hiss_{20211};
};

}  // namespace fm
