#include "handset/fmdevice/sdr/rds/alternatives_reader.h"

#include <algorithm>

namespace sdr::rds {
namespace {

// The codes of frequencies end at 204 (table 10); fillers, counts and the mark of the long and medium waves
// are those of table 11, the codes behind that mark those of table 12.
constexpr std::uint8_t kLastFrequency = 204;
constexpr std::uint8_t kFiller = 205;
constexpr std::uint8_t kNone = 224;
constexpr std::uint8_t kMost = 249;
constexpr std::uint8_t kLongMediumFollows = 250;
constexpr std::uint8_t kLastLongWave = 15;
constexpr std::uint8_t kLastMediumWave = 135;
// A list announces 25 frequencies at most (3.2.1.6.3). A network of more frequencies than that has none of
// them forgotten that is used.
constexpr std::size_t kMostCollections = 25;
constexpr std::size_t kMostPairs = 26;

std::uint8_t First(std::uint16_t codes) {
    return static_cast<std::uint8_t>(codes >> 8);
}
std::uint8_t Second(std::uint16_t codes) {
    return static_cast<std::uint8_t>(codes & 0xFFu);
}

template <typename T>
void AddOnce(std::vector<T>& list, const std::optional<T>& value) {
    if (value && std::find(list.begin(), list.end(), *value) == list.end()) list.push_back(*value);
}

}  // namespace

std::optional<std::uint32_t> FrequencyOfCode(std::uint8_t code) {
    if (code < 1 || code > kLastFrequency) return std::nullopt;
    return 8750u + 10u * code;
}

std::optional<std::uint32_t> LongMediumOfCode_kHz(std::uint8_t code) {
    if (code < 1 || code > kLastMediumWave) return std::nullopt;
    return code <= kLastLongWave ? 144u + 9u * code : 531u + 9u * (code - 16u);
}

bool CPairsSeen::Note(std::uint16_t pair, bool certain) {
    const auto end = pairs_.begin() + static_cast<std::ptrdiff_t>(count_);
    const bool before = std::find(pairs_.begin(), end, pair) != end;
    if (!before) {
        pairs_[next_] = pair;
        next_ = (next_ + 1) % pairs_.size();
        count_ = std::min(count_ + 1, pairs_.size());
    }
    return before || certain;
}

// In method B the tuned frequency stands in every pair (3.2.1.6.4).
bool CAlternativesReader::Collection::IsMethodB() const {
    return !pairs.empty() && std::all_of(pairs.begin(), pairs.end(), [this](std::uint16_t codes) {
        return First(codes) == first || Second(codes) == first;
    });
}

// The count is of frequencies: fillers and the mark of the long and medium waves are none.
std::size_t CAlternativesReader::Collection::Codes() const {
    const auto isOne = [](std::uint8_t code) { return code >= 1 && code <= kLastFrequency ? 1u : 0u; };
    std::size_t codes = isOne(first);
    for (const std::uint16_t pair : pairs) codes += isOne(First(pair)) + isOne(Second(pair));
    return codes;
}

void CAlternativesReader::Restart() {
    seen_.Restart();
    collections_.clear();
    list_ = Alternatives{};
}

// The count and the first frequency begin a list (3.2.1.6.3); another list of the same beginning goes on with
// it.
void CAlternativesReader::Open(std::uint8_t count, std::uint8_t first) {
    const auto announced = static_cast<std::uint8_t>(count - kNone);
    const auto known = std::find_if(collections_.begin(), collections_.end(), [&](const Collection& c) {
        return c.first == first && c.announced == announced;
    });
    if (known == collections_.end()) {
        if (collections_.size() == kMostCollections) collections_.erase(collections_.begin());
        collections_.push_back({announced, first, {}});
        open_ = collections_.size() - 1;
    } else {
        open_ = static_cast<std::size_t>(known - collections_.begin());
    }
}

bool CAlternativesReader::Take(std::uint16_t codes, bool certain) {
    if (!seen_.Note(codes, certain)) return false;
    const std::uint8_t first = First(codes);
    if (first == kNone || first == kFiller) return false;
    if (first > kNone && first <= kMost) {
        Open(first, Second(codes));
        return Publish();
    }
    if (collections_.empty()) return false;
    std::vector<std::uint16_t>& pairs = collections_[open_].pairs;
    if (std::find(pairs.begin(), pairs.end(), codes) != pairs.end()) return false;
    if (pairs.size() == kMostPairs) return false;
    pairs.push_back(codes);
    return Publish();
}

// What all lists say together: by method B a pair in ascending order has the same programme, one in
// descending order a regional variant (3.2.1.6.4).
bool CAlternativesReader::Publish() {
    const Alternatives before = list_;
    list_ = Alternatives{};
    list_.whole = true;
    for (const Collection& c : collections_) {
        const bool methodB = c.IsMethodB();
        if (!c.pairs.empty()) list_.method = methodB ? AlternativesMethod::kB : AlternativesMethod::kA;
        AddOnce(list_.same_10kHz, FrequencyOfCode(c.first));
        list_.whole = list_.whole && c.Codes() >= c.announced;
        for (const std::uint16_t pair : c.pairs) {
            if (First(pair) == kLongMediumFollows) {
                AddOnce(list_.longMedium_kHz, LongMediumOfCode_kHz(Second(pair)));
                continue;
            }
            const bool regional = methodB && First(pair) > Second(pair);
            for (const std::uint8_t code : {First(pair), Second(pair)}) {
                if (methodB && code == c.first) continue;
                AddOnce(regional ? list_.regional_10kHz : list_.same_10kHz, FrequencyOfCode(code));
            }
        }
    }
    return before.same_10kHz != list_.same_10kHz || before.regional_10kHz != list_.regional_10kHz ||
           before.longMedium_kHz != list_.longMedium_kHz || before.whole != list_.whole;
}

}  // namespace sdr::rds
