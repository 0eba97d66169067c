#include "tests/bench/reception/listening.h"

namespace bench {

CListening::CListening(const sdr::ReceiverOptions& options)
    : rds_([this](const sdr::rds::Group& group) { Take(group); }), receiver_(options) {
    receiver_.SetListener(&rds_);
    receiver_.Tune(0);
}

void CListening::Take(const sdr::rds::Group& group) {
    GivenGroup given;
    for (std::size_t i = 0; i < given.size(); ++i) {
        if (group.blocks[i].Received()) given[i] = group.blocks[i].information;
    }
    groups_.push_back(given);
}

}  // namespace bench
