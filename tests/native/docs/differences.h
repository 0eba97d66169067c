// What one list has and another one lacks, so that a failed comparison names it.
#pragma once

#include <algorithm>
#include <iterator>
#include <string>
#include <vector>

namespace test {

using Complaints = std::vector<std::string>;

// Both in order.
template <typename Left, typename Right>
Complaints In(const Left& those, const Right& notIn) {
    Complaints left;
    std::set_difference(those.begin(), those.end(), notIn.begin(), notIn.end(), std::back_inserter(left));
    return left;
}

}  // namespace test
