// Drawing: nothing is seen, but what is made has to be given back, and what is written is noted.
#include "tests/device/phone.h"

namespace device {
namespace {

std::uint32_t Make(Phone& phone) {
    const std::uint32_t handle = phone.NewHandle();
    phone.drawingObjects.insert(handle);
    return handle;
}

std::uint32_t GiveBack(Phone& phone, int argument) {
    return phone.drawingObjects.erase(phone.Argument(argument)) != 0 ? 1 : 0;
}

// Something was selected before: the object that a device context begins with.
std::uint32_t Select(Phone& phone) {
    return phone.Argument(1) != 0 ? 0x7000 : 0;
}

std::uint32_t FillRecord(Phone& phone) {
    const std::vector<std::uint8_t> zeroes(phone.Argument(1));
    if (phone.Argument(2) != 0) phone.Cpu().Write(phone.Argument(2), zeroes.data(), zeroes.size());
    return phone.Argument(1);
}

std::uint32_t BeginPaint(Phone& phone) {
    const std::uint32_t dc = Make(phone);
    phone.Cpu().Write32(phone.Argument(1), dc);
    return dc;
}

std::uint32_t EndPaint(Phone& phone) {
    return phone.drawingObjects.erase(phone.Cpu().Read32(phone.Argument(1))) != 0 ? 1 : 0;
}

std::uint32_t Write(Phone& phone) {
    phone.drawn.push_back(phone.Wide(1));
    return 1;
}

std::uint32_t LoadImage(Phone& phone) {
    if (phone.HasImage(phone.Argument(1))) return Make(phone);
    phone.imagesMissed.insert(phone.Argument(1));
    return 0;
}

}  // namespace

void AddDrawingCalls(SystemCalls& calls) {
    const SystemCalls mine = {
        {"GetDC", Make},
        {"ReleaseDC", [](Phone& p) { return GiveBack(p, 1); }},
        {"BeginPaint", BeginPaint},
        {"EndPaint", EndPaint},
        {"CreateCompatibleDC", Make},
        {"DeleteDC", [](Phone& p) { return GiveBack(p, 0); }},
        {"CreateCompatibleBitmap", Make},
        {"CreateFontIndirectW", Make},
        {"CreatePatternBrush", Make},
        {"CreatePen", Make},
        {"DeleteObject", [](Phone& p) { return GiveBack(p, 0); }},
        {"SelectObject", Select},
        {"GetObjectW", FillRecord},
        {"GetStockObject", One},
        {"BitBlt", One},
        {"PatBlt", One},
        {"TransparentImage", One},
        {"SetBkMode", One},
        {"SetBkColor", One},
        {"SetTextColor", One},
        {"SetBrushOrgEx", One},
        {"DrawTextW", Write},
        {"SHLoadImageResource", LoadImage},
    };
    calls.insert(mine.begin(), mine.end());
}

}  // namespace device
