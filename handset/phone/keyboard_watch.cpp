// The host's hook for the keyboard.
#include "handset/phone/keyboard_watch.h"

#include <algorithm>
#include <initializer_list>

#include "handset/base/module_edge.h"

namespace panel {
namespace {

// The host gives its callback no argument of ours.
std::atomic<CKeyboardWatch*> g_watch = nullptr;

}  // namespace

LRESULT CALLBACK CKeyboardWatch::KeyProc(int code, WPARAM message, LPARAM lParam) try {
    if (CKeyboardWatch* const watch = code == HC_ACTION ? g_watch.load() : nullptr) {
        const auto& key = *reinterpret_cast<const KBDLLHOOKSTRUCT*>(lParam);
        if (watch->Take(key, message == WM_KEYDOWN || message == WM_SYSKEYDOWN)) return 1;
    }
    return CallNextHookEx(nullptr, code, message, lParam);
} catch (...) {
    return handset::EdgeAnswer<LRESULT>();
}

bool CKeyboardWatch::Take(const KBDLLHOOKSTRUCT& key, bool down) {
    if (key.vkCode >= held_.size()) return false;
    held_.set(key.vkCode, down);
    const auto any = [this](std::initializer_list<int> keys) {
        return std::any_of(keys.begin(), keys.end(),
                           [this](int one) { return held_.test(static_cast<std::size_t>(one)); });
    };
    const bool alt = (key.flags & LLKHF_ALTDOWN) != 0;
    return taken_({static_cast<WORD>(key.vkCode), down, any({VK_SHIFT, VK_LSHIFT, VK_RSHIFT}),
                   any({VK_CONTROL, VK_LCONTROL, VK_RCONTROL}), alt || any({VK_LWIN, VK_RWIN})},
                  of_);
}

void CKeyboardWatch::Watch() {
    MSG message = {};
    // From here on the thread can be posted to.
    PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE);
    threadId_ = GetCurrentThreadId();
    SetEvent(watches_.get());
    const HHOOK hook = SetWindowsHookExW(WH_KEYBOARD_LL, KeyProc, GetModuleHandleW(nullptr), 0);
    while (!ends_ && GetMessageW(&message, nullptr, 0, 0) > 0) DispatchMessageW(&message);
    if (hook != nullptr) UnhookWindowsHookEx(hook);
}

CKeyboardWatch::CKeyboardWatch(Taken taken, void* of)
    : taken_(taken), of_(of), watches_(CreateEventW(nullptr, TRUE, FALSE, nullptr)) {
    g_watch = this;
    thread_ = handset::WorkerThread([this] { Watch(); }, [this] { return !ends_; });
}

CKeyboardWatch::~CKeyboardWatch() {
    g_watch = nullptr;
    ends_ = true;
    // Its queue is there by then, or it sees by itself that it is over.
    if (WaitForSingleObject(watches_.get(), INFINITE) == WAIT_OBJECT_0)
        PostThreadMessageW(threadId_, WM_QUIT, 0, 0);
    thread_.join();
}

}  // namespace panel
