#include "tests/bench/reception/scored_groups.h"

#include <algorithm>

namespace bench {
namespace {

struct Pair {
    int right = 0;
    int wrong = 0;
    // A block that agrees outweighs every one that does not.
    int Worth() const { return 8 * right - wrong; }
};

Pair Beside(const SentGroup& sent, const GivenGroup& given) {
    Pair pair;
    for (std::size_t i = 0; i < 4; ++i) {
        if (!given[i]) continue;
        ++(*given[i] == sent[i] ? pair.right : pair.wrong);
    }
    return pair;
}

int Claimed(const GivenGroup& given) {
    return static_cast<int>(
        std::count_if(given.begin(), given.end(), [](const auto& block) { return block.has_value(); }));
}

// The best way to lay given groups 0 to i - 1 beside sent ones 0 to j - 1; rows by i.
std::vector<std::vector<int>> BestWays(const std::vector<SentGroup>& sent,
                                       const std::vector<GivenGroup>& given) {
    std::vector<std::vector<int>> best(given.size() + 1, std::vector<int>(sent.size() + 1, 0));
    for (std::size_t i = 1; i <= given.size(); ++i) {
        best[i][0] = best[i - 1][0] - Claimed(given[i - 1]);
        for (std::size_t j = 1; j <= sent.size(); ++j) {
            const int beside = best[i - 1][j - 1] + Beside(sent[j - 1], given[i - 1]).Worth();
            const int alone = best[i - 1][j] - Claimed(given[i - 1]);
            best[i][j] = std::max({beside, alone, best[i][j - 1]});
        }
    }
    return best;
}

}  // namespace

Score Compare(const std::vector<SentGroup>& sent, const std::vector<GivenGroup>& given, std::size_t first,
              std::size_t end) {
    Score score;
    end = std::min(end, sent.size());
    if (first >= end) return score;
    score.sentGroups = static_cast<long>(end - first);
    score.sent = 4 * score.sentGroups;
    const auto best = BestWays(sent, given);
    for (std::size_t i = given.size(), j = sent.size(); i > 0;) {
        const Pair pair = j > 0 ? Beside(sent[j - 1], given[i - 1]) : Pair{};
        if (j > 0 && best[i][j] == best[i][j - 1]) {
            --j;
        } else if (j > 0 && best[i][j] == best[i - 1][j - 1] + pair.Worth()) {
            --i, --j;
            if (j < first || j >= end) continue;
            score.right += pair.right;
            score.wrong += pair.wrong;
            score.wholeGroups += pair.right == 4 ? 1 : 0;
        } else {
            --i;
            if (j > first && j <= end) score.wrong += Claimed(given[i]);
        }
    }
    return score;
}

}  // namespace bench
