#include "handset/fmdevice/sdr/rds/decoder.h"

#include <utility>

namespace sdr::rds {

CDecoder::CDecoder(GroupHandler onGroup)
    : onGroup_(std::move(onGroup)),
      chain_([this](std::size_t place, const Block& block) { reader_.TakeBlock(place, block, Now_s()); },
             [this](const Group& group) {
                 reader_.TakeGroup(group, Now_s());
                 if (onGroup_) onGroup_(group);
             }) {}

void CDecoder::Restart() {
    reader_.Restart();
    chain_.Restart();
    samples_ = 0;
}

void CDecoder::Feed(const MpxBlock& block) {
    samples_ += block.count;
    chain_.Feed(block);
}

const Station& CDecoder::Current() {
    current_ = reader_.Current();
    current_.now_s = Now_s();
    current_.signal = chain_.Quality();
    return current_;
}

}  // namespace sdr::rds
