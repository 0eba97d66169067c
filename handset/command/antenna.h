// The antenna as it is chosen and what comes of it, in a line each.
#pragma once

#include <string>

namespace panel {

std::wstring AntennaText();
// What the running radio tells of its reception.
std::wstring ReceptionText();

}  // namespace panel
