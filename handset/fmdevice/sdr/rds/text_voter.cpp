#include "handset/fmdevice/sdr/rds/text_voter.h"

#include <algorithm>

namespace sdr::rds {
namespace {

// A round in which nothing was lost counts double.
// Some stations send each group two or three times, which is no round.
constexpr int kEnoughRounds = 6;
// A text whose end is not marked is filled with blanks, or is sent only as far as it goes (IEC
// 62106, 3.1.5.3).
constexpr char kBlank = ' ';

char High(std::uint16_t letters) {
    return static_cast<char>(letters >> 8);
}
char Low(std::uint16_t letters) {
    return static_cast<char>(letters & 0xFFu);
}

}  // namespace

void CTextVoter::Restart() {
    all_.fill({});
    seen_ = 0;
    inOrder_ = 0;
    last_ = highest_ = 0;
    rounds_ = 0;
    orderKept_ = false;
    whole_.reset();
}

void CTextVoter::SetPairs(std::size_t pairs) {
    if (pairs == pairs_) return;
    pairs_ = pairs;
    Restart();
}

// Another text: what came in order just before this pair is its beginning, the rest was the old one's.
void CTextVoter::BeginAnewAt(std::size_t place) {
    const std::array<Pair, kMostPairs> old = all_;
    const std::size_t kept = inOrder_ == place ? inOrder_ : 0;
    Restart();
    std::copy_n(old.begin(), kept, all_.begin());
    inOrder_ = kept;
    if (kept > 0) last_ = highest_ = kept - 1;
}

// True when the pair is now known, with these letters.
bool CTextVoter::Believe(std::size_t place, std::uint16_t letters, bool certain) {
    Pair& pair = all_[place];
    if (pair.known && pair.letters == letters) {
        pair.hasCandidate = false;
        return true;
    }
    const bool twice = pair.hasCandidate && pair.candidate == letters;
    const bool otherwise = pair.known || (pair.hasCandidate && !twice);
    pair.hasCandidate = true;
    pair.candidate = letters;
    if (otherwise) {
        // Perhaps the first sign of another text: what was seen so far does not count any more.
        seen_ = rounds_ = 0;
        for (Pair& each : all_) each.again = false;
    }
    if (!certain && !twice) return false;
    if (pair.known) BeginAnewAt(place);
    Pair& fresh = all_[place];
    fresh.known = true;
    fresh.letters = letters;
    fresh.hasCandidate = false;
    return true;
}

void CTextVoter::Order(std::size_t place, bool known) {
    if (!known) {
        inOrder_ = 0;
        return;
    }
    if (place == 0) {
        inOrder_ = 1;
    } else if (place == inOrder_) {
        ++inOrder_;
    } else if (place > inOrder_) {
        inOrder_ = 0;
    }
}

// Where the text begins anew, its last pair was the one before.
void CTextVoter::NoteRound(std::size_t place) {
    if (place > highest_) {
        highest_ = place;
        rounds_ = 0;
    }
    if (place == 0 && last_ > 0) {
        rounds_ = last_ == highest_ ? rounds_ + (orderKept_ ? 2 : 1) : rounds_;
        orderKept_ = true;
    }
    if (place == 0 && last_ == 0) orderKept_ = true;
    last_ = place;
}

bool CTextVoter::Take(std::size_t place, std::uint16_t letters, bool certain) {
    if (place >= pairs_) return false;
    const bool known = Believe(place, letters, certain);
    Order(place, known);
    if (!known) return false;
    NoteRound(place);
    all_[place].again = true;
    return Judge();
}

std::optional<std::size_t> CTextVoter::PairsToEnd() const {
    if (length_ == Length::kFixed) return pairs_;
    for (std::size_t i = 0; i < pairs_ && all_[i].known; ++i) {
        if (High(all_[i].letters) == kEnd || Low(all_[i].letters) == kEnd) return i + 1;
    }
    if (highest_ + 1 == pairs_) return pairs_;
    if (rounds_ >= kEnoughRounds) return highest_ + 1;
    return std::nullopt;
}

std::string CTextVoter::Codes(std::size_t pairs) const {
    std::string codes;
    for (std::size_t i = 0; i < pairs; ++i) {
        codes += all_[i].known ? High(all_[i].letters) : kBlank;
        codes += all_[i].known ? Low(all_[i].letters) : kBlank;
    }
    if (length_ == Length::kUpToEnd) codes.resize(std::min(codes.size(), codes.find(kEnd)));
    return codes;
}

std::string CTextVoter::Letters() const {
    return Codes(pairs_);
}

bool CTextVoter::Judge() {
    const std::optional<std::size_t> pairs = PairsToEnd();
    if (!pairs) return false;
    const auto end = all_.begin() + static_cast<std::ptrdiff_t>(*pairs);
    if (!std::all_of(all_.begin(), end, [](const Pair& pair) { return pair.known; })) return false;
    const bool again = std::all_of(all_.begin(), end, [](const Pair& pair) { return pair.again; });
    if (again) {
        ++seen_;
        for (Pair& pair : all_) pair.again = false;
    }
    const bool inOrder = inOrder_ >= *pairs;
    const bool often = seen_ >= sights_ || (rounds_ >= kEnoughRounds && *pairs == highest_ + 1);
    if (!inOrder && !often && !whole_) return false;
    std::string codes = Codes(*pairs);
    const bool wholeAgain = inOrder || often || whole_ == codes;
    if (wholeAgain) whole_ = std::move(codes);
    return wholeAgain;
}

}  // namespace sdr::rds
