// Windows, messages, menus and resources.
#include <stdexcept>

#include "tests/device/phone.h"

namespace device {
namespace {

constexpr std::uint32_t kCreate = 1, kDestroy = 2, kSize = 5, kActivate = 6, kPaint = 0x0F, kClose = 0x10,
                        kQuit = 0x12, kTimer = 0x113;
constexpr std::uint32_t kWidth = 240, kHeight = 320;

// class name → window procedure
std::uint32_t RegisterClass(Phone& phone) {
    constexpr std::uint32_t kProcedureAt = 4, kNameAt = 36;
    const std::uint32_t record = phone.Argument(0);
    phone.texts["class"] = phone.Cpu().WideText(phone.Cpu().Read32(record + kNameAt));
    phone.numbers["class"] = phone.Cpu().Read32(record + kProcedureAt);
    return 0xC001;
}

// CREATESTRUCTW: param, instance, menu, parent, cy, cx, y, x, style, name, class, extended style.
std::uint32_t CreateRecord(Phone& phone) {
    constexpr int kFromArgument[] = {11, 10, 9, 8, 7, 6, 5, 4, 3, 2, 1, 0};
    const std::uint32_t record = phone.Cpu().Allocate(48);
    for (std::uint32_t i = 0; i < 12; ++i)
        phone.Cpu().Write32(record + 4 * i, phone.Argument(kFromArgument[i]));
    return record;
}

std::uint32_t CreateWindowEx(Phone& phone) {
    constexpr std::uint32_t kVisible = 0x10000000, kActive = 1;
    const std::uint32_t handle = phone.NewHandle();
    const bool own = phone.Wide(1) == phone.texts["class"];
    const bool visible = (phone.Argument(3) & kVisible) != 0;
    Window& window = phone.windows[handle];
    window.className = phone.Wide(1);
    window.title = phone.Wide(2);
    window.visible = visible;
    if (!own) return handle;
    window.procedure = phone.numbers["class"];
    window.dirty = true;
    if (phone.Send(handle, kCreate, 0, CreateRecord(phone)) == 0xFFFFFFFF) {
        phone.windows.erase(handle);
        return 0;
    }
    if (!visible) return handle;
    phone.Send(handle, kActivate, kActive, 0);
    phone.Send(handle, kSize, 0, kHeight << 16 | kWidth);
    return handle;
}

std::uint32_t SetLong(Phone& phone) {
    constexpr std::int32_t kProcedure = -4;
    Window& window = phone.windows.at(phone.Argument(0));
    const auto index = static_cast<std::int32_t>(phone.Argument(1));
    std::uint32_t& place = window.longs[index];
    const std::uint32_t before = index == kProcedure ? window.procedure : place;
    place = phone.Argument(2);
    return before;
}

std::uint32_t DestroyWindow(Phone& phone) {
    phone.Send(phone.Argument(0), kDestroy, 0, 0);
    phone.windows.erase(phone.Argument(0));
    return 1;
}

std::uint32_t DefaultProcedure(Phone& phone) {
    if (phone.Argument(1) == kClose) DestroyWindow(phone);
    return 0;
}

void WriteMessage(Phone& phone, std::uint32_t record, const Message& message) {
    const std::uint32_t words[] = {
        message.window, message.message, message.wParam, message.lParam, phone.ticks, 0, 0};
    phone.Cpu().Write(record, words, sizeof words);
}

std::uint32_t GetMessage(Phone& phone) {
    Message message;
    const bool more = phone.NextMessage(message);
    if (!more) message = {0, kQuit, phone.quitCode, 0};
    WriteMessage(phone, phone.Argument(0), message);
    return more ? 1 : 0;
}

std::uint32_t Dispatch(Phone& phone) {
    const std::uint32_t record = phone.Argument(0);
    const auto field = [&](std::uint32_t i) { return phone.Cpu().Read32(record + 4 * i); };
    if (field(1) == kPaint) phone.windows.at(field(0)).dirty = false;
    if (field(1) == kTimer && field(3) != 0)
        return phone.Cpu().Call(field(3), {field(0), kTimer, field(2), phone.ticks});
    return phone.Send(field(0), field(1), field(2), field(3));
}

// The soft keys' menus are asked for by the record that a toolbar fills (TBBUTTONINFOW, its lParam).
std::uint32_t SendControl(Phone& phone, const Window& window) {
    constexpr std::uint32_t kButtonInfo = 0x400 + 63, kButtonInfoParam = 20;
    if (window.className == "menu bar" && phone.Argument(1) == kButtonInfo) {
        phone.Cpu().Write32(phone.Argument(3) + kButtonInfoParam, 0x5000 + phone.Argument(2));
        return phone.Argument(2);
    }
    return 0;  // an empty list
}

std::uint32_t SendMessage(Phone& phone) {
    const auto window = phone.windows.find(phone.Argument(0));
    if (window == phone.windows.end()) return 0;
    if (window->second.procedure == 0) return SendControl(phone, window->second);
    return phone.Send(phone.Argument(0), phone.Argument(1), phone.Argument(2), phone.Argument(3));
}

std::uint32_t LoadText(Phone& phone) {
    std::string text = phone.Resource(phone.Argument(1));
    const std::uint32_t room = phone.Argument(3);
    if (room == 0) throw std::runtime_error("LoadStringW without room");
    if (text.size() >= room) text.resize(room - 1);
    phone.Cpu().WriteWide(phone.Argument(2), text);
    return static_cast<std::uint32_t>(text.size());
}

std::uint32_t ClientRect(Phone& phone) {
    const std::uint32_t rect[] = {0, 0, kWidth, kHeight};
    phone.Cpu().Write(phone.Argument(1), rect, sizeof rect);
    return 1;
}

std::uint32_t IsEmptyRect(Phone& phone) {
    const auto side = [&](std::uint32_t i) {
        return static_cast<std::int32_t>(phone.Cpu().Read32(phone.Argument(0) + 4 * i));
    };
    return side(0) >= side(2) || side(1) >= side(3) ? 1 : 0;
}

std::uint32_t Invalidate(Phone& phone) {
    const auto window = phone.windows.find(phone.Argument(0));
    if (window != phone.windows.end()) window->second.dirty = true;
    return 1;
}

std::uint32_t Update(Phone& phone) {
    Window& window = phone.windows.at(phone.Argument(0));
    if (!window.dirty) return 1;
    window.dirty = false;
    phone.Send(phone.Argument(0), kPaint, 0, 0);
    return 1;
}

std::uint32_t Box(Phone& phone) {
    phone.boxes.push_back(phone.Wide(2) + ": " + phone.Wide(1));
    return 1;
}

}  // namespace

void AddWindowCalls(SystemCalls& calls) {
    const SystemCalls mine = {
        {"FindWindowW", Nothing},
        {"RegisterClassW", RegisterClass},
        {"CreateWindowExW", CreateWindowEx},
        {"DestroyWindow", DestroyWindow},
        {"DefWindowProcW", DefaultProcedure},
        {"GetWindowLongW",
         [](Phone& p) {
             return p.windows.at(p.Argument(0)).longs[static_cast<std::int32_t>(p.Argument(1))];
         }},
        {"SetWindowLongW", SetLong},
        {"ShowWindow", One},
        {"UpdateWindow", Update},
        {"InvalidateRect", Invalidate},
        {"RedrawWindow", Invalidate},
        {"IsWindowVisible", [](Phone& p) { return p.windows.at(p.Argument(0)).visible ? 1U : 0U; }},
        {"IsWindowEnabled", [](Phone& p) { return p.windows.at(p.Argument(0)).enabled ? 1U : 0U; }},
        {"EnableWindow",
         [](Phone& p) {
             p.windows.at(p.Argument(0)).enabled = p.Argument(1) != 0;
             return 0U;
         }},
        {"SetWindowPos", One},
        {"SetFocus", Nothing},
        {"SetForegroundWindow", One},
        {"GetParent", Nothing},
        {"SetCapture", Nothing},
        {"ReleaseCapture", One},
        {"GetClientRect", ClientRect},
        {"IsRectEmpty", IsEmptyRect},
        {"GetMessageW", GetMessage},
        {"PeekMessageW", Nothing},
        {"TranslateMessage", One},
        {"TranslateAcceleratorW", Nothing},
        {"DispatchMessageW", Dispatch},
        {"SendMessageW", SendMessage},
        {"PostMessageW",
         [](Phone& p) {
             p.Post({p.Argument(0), p.Argument(1), p.Argument(2), p.Argument(3)});
             return 1U;
         }},
        {"PostQuitMessage",
         [](Phone& p) {
             p.quit = true;
             p.quitCode = p.Argument(0);
             return 0U;
         }},
        {"SetTimer",
         [](Phone& p) {
             p.timers[p.Argument(1)] = p.Argument(3);
             return p.Argument(1);
         }},
        {"KillTimer", [](Phone& p) { return p.timers.erase(p.Argument(1)) != 0 ? 1U : 0U; }},
        {"LoadAcceleratorsW", One},
        {"LoadCursorW", One},
        {"SetCursor", Nothing},
        {"LoadIconW", One},
        {"LoadStringW", LoadText},
        {"MessageBoxW", Box},
        {"CheckMenuItem", Nothing},
        {"EnableMenuItem", Nothing},
        {"GetSystemMetrics", [](Phone& p) { return p.Argument(0) == 0 ? kWidth : kHeight; }},
        {"AllKeys", One},
    };
    calls.insert(mine.begin(), mine.end());
}

}  // namespace device
