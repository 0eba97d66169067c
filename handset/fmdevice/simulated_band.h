// The simulated band: a front end whose antenna is the file \Windows\band.ini (see band_file.h). A channel
// without a station is noise. The file is read again when it has changed; each fault in it is a line in the
// debug output.
#pragma once

#include <windows.h>

#include <memory>
#include <string>

#include "handset/fmdevice/front_end.h"
#include "handset/fmdevice/generators.h"

namespace fm {

class CSimulatedBand : public ITunerFrontEnd {
  public:
    [[nodiscard]] bool Refresh() override;
    [[nodiscard]] bool Wraps() const override { return band_.wrap; }
    [[nodiscard]] int Level(std::uint32_t channel) const override;
    [[nodiscard]] Reception Receive(std::uint32_t channel) const override;
    [[nodiscard]] RdsData Rds(std::uint32_t channel) const override;
    void Render(const Reception& reception, float* frames, std::size_t count) override;

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
    static FileStamp StampOf(const std::wstring& hostPath);
    void Read(const std::string& text);
    bool RefreshFile();
    // True when the handset's limit of reception has changed.
    bool RefreshLimit();

    Band band_;
    int limit_ = 100;                   // no station comes in better; the state value SignalLimit
    std::uint32_t limitedChannel_ = 0;  // the only one that the limit is for; 0 = all
    bool looked_ = false;
    std::wstring path_;
    FileStamp stamp_;
    // A file written a moment ago may change once more without its time of writing showing it.
    bool settled_ = false;
    std::string text_;

    // The sound thread's own.
    std::unique_ptr<IGenerator> generator_;
    std::uint32_t generatorChannel_ = 0;
    std::string generatorSource_;
    CNoise hiss_{20211};
};

}  // namespace fm
