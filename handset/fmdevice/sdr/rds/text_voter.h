// Puts a text together from pairs of letters that come again and again. Portable.
//
// A pair is believed when it was received beyond doubt or twice alike in a row. That all pairs belong to one
// text is another matter: a station may change its text while half of it is lost. So a text is whole only
// when its pairs came in order with nothing lost between, or when each has come again, alike, after all of
// them were known. A pair that contradicts what is believed makes a new text, of which nothing but this pair
// is known.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace sdr::rds {

class CTextVoter {
  public:
    static constexpr std::size_t kMostPairs = 32;
    // The mark after which nothing of a radio text follows (IEC 62106, 3.1.5.3).
    static constexpr char kEnd = 0x0D;

    // How many pairs a text has, at most or always.
    enum class Length { kFixed, kUpToEnd };
    // `sights`: how often all pairs are to be seen, each alike, when they do not come in order. A text that
    // may change without a sign, as the service name does, needs one more.
    CTextVoter(std::size_t pairs, Length length, int sights = 2)
        : pairs_(pairs), length_(length), sights_(sights) {}

    // Nothing is known.
    void Restart();
    // The number of pairs changes with the kind of group; another number starts anew.
    void SetPairs(std::size_t pairs);
    // A pair as received. True when the text has become whole or was seen whole again.
    bool Take(std::size_t pair, std::uint16_t letters, bool certain);
    // Something was lost that may have been a part of this text.
    void Lost() {
        inOrder_ = 0;
        orderKept_ = false;
    }

    // The codes of the whole text without what ends it; nothing while it is not whole.
    const std::optional<std::string>& Whole() const { return whole_; }
    // What is believed so far, blanks for the rest.
    [[nodiscard]] std::string Letters() const;

  private:
    struct Pair {
        std::uint16_t letters = 0;
        std::uint16_t candidate = 0;
        bool known = false;
        bool again = false;  // seen alike since all were seen last
        bool hasCandidate = false;
    };

    void BeginAnewAt(std::size_t place);
    bool Believe(std::size_t place, std::uint16_t letters, bool certain);
    void Order(std::size_t place, bool known);
    void NoteRound(std::size_t place);
    [[nodiscard]] std::optional<std::size_t> PairsToEnd() const;
    [[nodiscard]] std::string Codes(std::size_t pairs) const;
    bool Judge();

    std::size_t pairs_;
    Length length_;
    int sights_;
    std::array<Pair, kMostPairs> all_{};
    int seen_ = 0;  // how often all pairs were seen alike
    // The pairs from the first on that came in order without a loss.
    std::size_t inOrder_ = 0;
    // A text without an end is as long as the place at which it always begins anew.
    std::size_t last_ = 0;
    std::size_t highest_ = 0;
    int rounds_ = 0;
    bool orderKept_ = false;
    std::optional<std::string> whole_;
};

}  // namespace sdr::rds
