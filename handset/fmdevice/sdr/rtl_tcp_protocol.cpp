// Greeting and commands.
#include "handset/fmdevice/sdr/rtl_tcp_protocol.h"

#include <algorithm>

namespace sdr::rtl_tcp {
namespace {

constexpr std::array<std::uint8_t, 4> kMagic = {'R', 'T', 'L', '0'};
constexpr std::array<std::string_view, 7> kTuners = {"unknown", "E4000", "FC0012", "FC0013",
                                                     "FC2580",  "R820T", "R828D"};

struct Span {
    std::uint32_t from_Hz;
    std::uint32_t to_Hz;
};
constexpr std::array<Span, 2> kRates = {{{225001, 300000}, {900001, 3200000}}};

std::uint32_t BigEndian(const std::uint8_t* bytes) {
    return std::uint32_t{bytes[0]} << 24 | std::uint32_t{bytes[1]} << 16 | std::uint32_t{bytes[2]} << 8 |
           bytes[3];
}

}  // namespace

std::string_view NameOf(Tuner tuner) {
    const auto index = static_cast<std::size_t>(tuner);
    return kTuners[index < kTuners.size() ? index : 0];
}

std::size_t CHeaderReader::Feed(const std::uint8_t* bytes, std::size_t count) {
    std::size_t taken = 0;
    while (state_ == State::kMore && taken < count) {
        if (held_ < kMagic.size() && bytes[taken] != kMagic[held_]) {
            state_ = State::kWrong;
            break;
        }
        bytes_[held_++] = bytes[taken++];
        if (held_ < kHeaderBytes) continue;
        const std::uint32_t tuner = BigEndian(bytes_.data() + 4);
        header_.tuner = tuner < kTuners.size() ? static_cast<Tuner>(tuner) : Tuner::kUnknown;
        header_.gains = BigEndian(bytes_.data() + 8);
        state_ = State::kDone;
    }
    return taken;
}

CommandBytes Encode(Command command, std::uint32_t argument) {
    return {static_cast<std::uint8_t>(command), static_cast<std::uint8_t>(argument >> 24),
            static_cast<std::uint8_t>(argument >> 16), static_cast<std::uint8_t>(argument >> 8),
            static_cast<std::uint8_t>(argument)};
}

std::vector<std::uint8_t> Opening(const Settings& settings) {
    std::vector<std::uint8_t> bytes;
    const auto add = [&bytes](Command command, std::uint32_t argument) {
        const CommandBytes one = Encode(command, argument);
        bytes.insert(bytes.end(), one.begin(), one.end());
    };
    add(Command::kRate_Hz, settings.rate_Hz);
    add(Command::kManualGain, settings.gainIndex ? 1 : 0);
    add(Command::kChipGainControl, 0);
    if (settings.gainIndex) add(Command::kGainIndex, *settings.gainIndex);
    add(Command::kCorrection_ppm, static_cast<std::uint32_t>(settings.correction_ppm));
    add(Command::kBiasTee, settings.biasTee ? 1 : 0);
    add(Command::kFrequency_Hz, settings.frequency_Hz);
    return bytes;
}

bool RateIsPossible(std::uint32_t rate_Hz) {
    return std::any_of(kRates.begin(), kRates.end(), [rate_Hz](const Span& span) {
        return rate_Hz >= span.from_Hz && rate_Hz <= span.to_Hz;
    });
}

}  // namespace sdr::rtl_tcp
