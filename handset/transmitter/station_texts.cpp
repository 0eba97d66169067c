#include "handset/transmitter/station_texts.h"

#include <algorithm>
#include <cmath>
#include <memory>

#include "handset/transmitter/letters.h"

namespace transmitter {
namespace {

constexpr double kGroup_s = kGroupBits / 1187.5;
constexpr std::uint8_t kFiller = 205;
constexpr std::uint8_t kListOf = 224;  // and the number of frequencies
constexpr std::size_t kMostAlternatives = 25;
constexpr std::uint16_t kTextPlusId = 0x4BD7;
constexpr int kTextPlusGroup = 11;
constexpr std::size_t kTextLetters = 64;

std::uint16_t Pair(unsigned char high, unsigned char low) {
    return static_cast<std::uint16_t>(high << 8 | low);
}

// Two letters of a text, blanks behind its end.
std::uint16_t PairAt(const std::string& letters, std::size_t at) {
    const auto letter = [&](std::size_t i) {
        return static_cast<unsigned char>(i < letters.size() ? letters[i] : ' ');
    };
    return Pair(letter(at), letter(at + 1));
}

// The frequencies in the order in which their codes are sent, after the one that says how many there are.
std::vector<std::uint8_t> AlternativeCodes(const StationTexts& texts) {
    std::vector<std::uint8_t> codes;
    const bool methodB = texts.methodB && texts.tuned_MHz > 0;
    for (const double frequency : texts.alternatives_MHz) {
        if (codes.size() + (methodB ? 2 : 1) >= kMostAlternatives) break;
        const std::uint8_t code = FrequencyCode(frequency);
        if (methodB) {
            // The lower one first: both send the same programme (IEC 62106-2, 6.1.5).
            const std::uint8_t tuned = FrequencyCode(texts.tuned_MHz);
            codes.push_back(std::min(tuned, code));
            codes.push_back(std::max(tuned, code));
        } else {
            codes.push_back(code);
        }
    }
    if (methodB && !codes.empty()) codes.insert(codes.begin(), FrequencyCode(texts.tuned_MHz));
    if (!codes.empty()) codes.insert(codes.begin(), static_cast<std::uint8_t>(kListOf + codes.size()));
    if (codes.size() % 2 != 0) codes.push_back(kFiller);
    return codes;
}

}  // namespace

std::uint8_t FrequencyCode(double frequency_MHz) {
    const long code = std::lround((frequency_MHz - 87.5) * 10);
    return code < 1 || code > 204 ? kFiller : static_cast<std::uint8_t>(code);
}

CGroupScheduler::CGroupScheduler(StationTexts texts) : texts_(std::move(texts)) {
    if (texts_.extendedCountry) rare_.push_back(&CGroupScheduler::Country);
    if (!texts_.tags.empty()) {
        rare_.push_back(&CGroupScheduler::TextPlusAnnouncement);
        rare_.push_back(&CGroupScheduler::TextPlus);
    }
    if (!texts_.ptyName.empty()) rare_.push_back(&CGroupScheduler::TypeName);
    if (!texts_.longPs.empty()) rare_.push_back(&CGroupScheduler::LongName);
    if (!texts_.others.empty()) rare_.push_back(&CGroupScheduler::Other);
}

GroupSource CGroupScheduler::Source(StationTexts texts) {
    auto scheduler = std::make_shared<CGroupScheduler>(std::move(texts));
    return [scheduler] { return scheduler->Next(); };
}

double CGroupScheduler::Now_s() const {
    return static_cast<double>(sent_) * kGroup_s;
}

Group CGroupScheduler::Next() {
    constexpr Builder kTurn[] = {&CGroupScheduler::Named, &CGroupScheduler::Text,  &CGroupScheduler::Named,
                                 &CGroupScheduler::Text,  &CGroupScheduler::Named, &CGroupScheduler::Text,
                                 &CGroupScheduler::Named, &CGroupScheduler::Rare};
    const Builder builder = ClockIsDue() ? &CGroupScheduler::Clock : kTurn[sent_ % 8];
    const Group group = (this->*builder)();
    ++sent_;
    return group;
}

std::uint16_t CGroupScheduler::SecondBlock(int type, int lowBits) const {
    return static_cast<std::uint16_t>(type << 12 | (texts_.tp ? 1 : 0) << 10 | texts_.pty << 5 | lowBits);
}

Group CGroupScheduler::Named() {
    if (nameSegment_ == 0) name_ = static_cast<std::size_t>(Now_s() / texts_.ps_s);
    const std::string name = texts_.ps.empty() ? "" : ToLetters(texts_.ps[name_ % texts_.ps.size()]);
    const int segment = nameSegment_;
    nameSegment_ = (nameSegment_ + 1) % 4;
    const int decoderBit = texts_.decoder >> (3 - segment) & 1;
    const int low = (texts_.ta ? 1 : 0) << 4 | (texts_.music ? 1 : 0) << 3 | decoderBit << 2 | segment;
    const std::uint16_t letters = PairAt(name, 2 * static_cast<std::size_t>(segment));
    if (texts_.versionB) {
        return {{texts_.pi, static_cast<std::uint16_t>(SecondBlock(0, low) | 0x0800), texts_.pi, letters},
                {}};
    }
    const auto [first, second] = NextAlternatives();
    return {{texts_.pi, SecondBlock(0, low), Pair(first, second), letters}, {}};
}

std::pair<std::uint8_t, std::uint8_t> CGroupScheduler::NextAlternatives() {
    const std::vector<std::uint8_t> codes = AlternativeCodes(texts_);
    if (codes.empty()) return {static_cast<std::uint8_t>(kListOf), kFiller};
    const std::size_t at = alternative_ % codes.size();
    alternative_ = at + 2;
    return {codes[at], codes[at + 1]};
}

Group CGroupScheduler::Text() {
    if (texts_.texts.empty()) return Named();
    const std::size_t lettersInGroup = texts_.versionB ? 2 : 4;
    const std::size_t most = texts_.versionB ? kTextLetters / 2 : kTextLetters;
    if (textSegment_ == 0) {
        const auto now = static_cast<std::size_t>(Now_s() / texts_.text_s);
        if (now != text_) textFlag_ = !textFlag_;
        text_ = now;
    }
    std::string letters = ToLetters(texts_.texts[text_ % texts_.texts.size()]).substr(0, most);
    if (letters.size() < most && texts_.textEnd == TextEnd::kReturn) letters += '\r';
    if (texts_.textEnd == TextEnd::kBlanks) letters.resize(most, ' ');
    const std::size_t segment = textSegment_;
    const std::size_t at = segment * lettersInGroup;
    textSegment_ = at + lettersInGroup >= letters.size() ? 0 : segment + 1;
    const int low = (textFlag_ ? 1 : 0) << 4 | static_cast<int>(segment);
    if (texts_.versionB) {
        return {{texts_.pi, static_cast<std::uint16_t>(SecondBlock(2, low) | 0x0800), texts_.pi,
                 PairAt(letters, at)},
                {}};
    }
    return {{texts_.pi, SecondBlock(2, low), PairAt(letters, at), PairAt(letters, at + 2)}, {}};
}

Group CGroupScheduler::Rare() {
    if (rare_.empty()) return Text();
    return (this->*rare_[nextRare_++ % rare_.size()])();
}

Group CGroupScheduler::Country() {
    return {{texts_.pi, SecondBlock(1, 0), texts_.extendedCountry.value_or(0), 0}, {}};
}

bool CGroupScheduler::ClockIsDue() {
    if (!texts_.clock) return false;
    const auto minutes = static_cast<long>(std::floor((texts_.clock->second + Now_s()) / 60));
    if (minutes <= minutesTold_) return false;
    minutesTold_ = minutes;
    return true;
}

Group CGroupScheduler::Clock() {
    const ClockTime& clock = *texts_.clock;
    const long minutes = clock.hour * 60L + clock.minute + minutesTold_;
    const long mjd = clock.mjd + minutes / (24 * 60);
    const long hour = minutes / 60 % 24;
    const long offset = clock.halfHours < 0 ? 0x20 | -clock.halfHours : clock.halfHours;
    return {{texts_.pi, SecondBlock(4, static_cast<int>(mjd >> 15 & 3)),
             static_cast<std::uint16_t>((mjd & 0x7FFF) << 1 | hour >> 4),
             static_cast<std::uint16_t>((hour & 15) << 12 | minutes % 60 << 6 | offset)},
            {}};
}

Group CGroupScheduler::TextPlusAnnouncement() {
    return {{texts_.pi, SecondBlock(3, kTextPlusGroup << 1), 0, kTextPlusId}, {}};
}

Group CGroupScheduler::TextPlus() {
    const TextTag first = texts_.tags.empty() ? TextTag{} : texts_.tags[0];
    const TextTag second = texts_.tags.size() < 2 ? TextTag{} : texts_.tags[1];
    constexpr int kItemRuns = 8;
    return {{texts_.pi, SecondBlock(kTextPlusGroup, kItemRuns | first.type >> 3),
             static_cast<std::uint16_t>((first.type & 7) << 13 | first.start << 7 | first.lettersMore << 1 |
                                        second.type >> 5),
             static_cast<std::uint16_t>((second.type & 31) << 11 | second.start << 5 | second.lettersMore)},
            {}};
}

Group CGroupScheduler::TypeName() {
    const std::string name = ToLetters(texts_.ptyName);
    const int segment = typeNameSegment_;
    typeNameSegment_ = 1 - typeNameSegment_;
    const auto at = static_cast<std::size_t>(4 * segment);
    return {{texts_.pi, SecondBlock(10, segment), PairAt(name, at), PairAt(name, at + 2)}, {}};
}

Group CGroupScheduler::LongName() {
    // The long name alone is sent as UTF-8.
    std::string name = texts_.longPs.substr(0, 32);
    if (name.size() < 32) name += '\r';
    const int segment = longNameSegment_;
    const auto at = static_cast<std::size_t>(4 * segment);
    longNameSegment_ = at + 4 >= name.size() ? 0 : segment + 1;
    return {{texts_.pi, SecondBlock(15, segment), PairAt(name, at), PairAt(name, at + 2)}, {}};
}

Group CGroupScheduler::Other() {
    // Four parts of the name, the programme type, then one frequency after the other.
    const OtherNetwork& other =
        texts_.others[static_cast<std::size_t>(otherStep_ / 6) % texts_.others.size()];
    const int step = otherStep_++ % 6;
    constexpr int kVariants[] = {0, 1, 2, 3, 13, 4};
    const int variant = kVariants[step];
    const int low = (other.tp ? 1 : 0) << 4 | variant;
    std::uint16_t told = 0;
    if (variant < 4) {
        told = PairAt(ToLetters(other.ps), 2 * static_cast<std::size_t>(variant));
    } else if (variant == 13) {
        told = static_cast<std::uint16_t>(other.pty << 11 | (other.ta ? 1 : 0));
    } else {
        const std::uint8_t code =
            other.frequencies_MHz.empty() ? kFiller : FrequencyCode(other.frequencies_MHz[0]);
        told = Pair(static_cast<unsigned char>(kListOf + (other.frequencies_MHz.empty() ? 0 : 1)), code);
    }
    return {{texts_.pi, SecondBlock(14, low), told, other.pi}, {}};
}

}  // namespace transmitter
