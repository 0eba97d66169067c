// Text in the order of a Windows locale.
#pragma once

#include "handset/coredll/cedb/engine/sort_order.h"

namespace cedb {

class CWindowsCollator : public CCollator {
  public:
    std::string TextKey(std::uint32_t lcid, std::uint32_t flags, const std::u16string& text) const override;
    bool Knows(std::uint32_t lcid) const override;
};

}  // namespace cedb
