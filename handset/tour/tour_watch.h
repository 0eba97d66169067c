// The tour's eyes and ears: the tuner log, the sound log and the pictures.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "handset/controls/console.h"
#include "handset/sound/analysis.h"
#include "handset/tour/tuner_log.h"

namespace panel {

class CTourWatch {
  public:
    // Points the state's TunerLog and SoundLog at files of its own, emptied; they go back on destruction.
    CTourWatch(std::wstring pictureFolder, CConsole& console);
    ~CTourWatch();
    CTourWatch(const CTourWatch&) = delete;
    CTourWatch& operator=(const CTourWatch&) = delete;

    // How often a tuner operation has succeeded since the tour began.
    [[nodiscard]] std::size_t Calls(const char* operation) const;
    [[nodiscard]] std::optional<std::uint32_t> LastNumberOf(const char* operation) const;
    [[nodiscard]] bool WaitForCalls(const char* operation, std::size_t count) const;
    [[nodiscard]] bool WaitForNumber(const char* operation, std::uint32_t number) const;

    // Listens to half a second that was played after this call; nothing when no sound comes.
    [[nodiscard]] std::optional<sound::Hearing> ListenNow() const;
    // "98.5 MHz, KORA ONE, signal 45" from the tuner log and the band.
    [[nodiscard]] std::wstring TunedTo() const;
    // Prints "picture NAME" and waits for NAME.png.
    void Picture(const wchar_t* name) const;
    // Lays what was heard during the whole tour beside the pictures, as tour.wav.
    void KeepSound() const;
    [[nodiscard]] const std::vector<BandStation>& Stations() const { return stations_; }

  private:
    // Nothing before the first of it is written.
    [[nodiscard]] std::optional<sound::WavSound> SoundSoFar() const;
    std::wstring pictureFolder_;
    CConsole& console_;
    std::wstring tunerLogBefore_, soundLogBefore_;
    std::vector<BandStation> stations_;
};

}  // namespace panel
