// The channel database object.
#pragma once

#include <windows.h>

class CChannelDB {
  public:
    CChannelDB() = default;
};
