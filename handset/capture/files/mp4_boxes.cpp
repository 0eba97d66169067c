// A box's size is put in when it is complete.
#include "handset/capture/files/mp4_boxes.h"

namespace capture {

void CBoxBytes::Number(std::uint64_t value, int bytes) {
    for (int i = bytes - 1; i >= 0; --i) bytes_.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
}

void CBoxBytes::Type(const char* fourLetters) {
    for (int i = 0; i < 4; ++i) bytes_.push_back(static_cast<std::uint8_t>(fourLetters[i]));
}

CBox::CBox(CBoxBytes* bytes, const char* type) : bytes_(bytes), begin_(bytes->Size()) {
    bytes_->U32(0);
    bytes_->Type(type);
}

CBox::CBox(CBoxBytes* bytes, const char* type, std::uint32_t version, std::uint32_t flags)
    : CBox(bytes, type) {
    bytes_->U8(version);
    bytes_->Number(flags, 3);
}

CBox::~CBox() {
    const std::size_t size = bytes_->Size() - begin_;
    for (std::size_t i = 0; i < 4; ++i)
        bytes_->bytes_[begin_ + i] = static_cast<std::uint8_t>(size >> (8 * (3 - i)));
}

}  // namespace capture
