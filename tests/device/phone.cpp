#include "tests/device/phone.h"

#include <stdexcept>

namespace device {
namespace {

constexpr std::uint32_t kWmKeyDown = 0x100;
constexpr std::uint32_t kStrings = 6;

const SystemCalls& AllCalls() {
    static const SystemCalls calls = [] {
        SystemCalls all;
        AddRuntimeCalls(all);
        AddKernelCalls(all);
        AddWindowCalls(all);
        AddDrawingCalls(all);
        AddStoreCalls(all);
        AddShellCalls(all);
        return all;
    }();
    return calls;
}

}  // namespace

Phone::Phone(const std::string& program, std::uint32_t base) : program_(program) {
    machine_ = std::make_unique<Machine>(program_, base != 0 ? base : program_.base,
                                         [this](std::uint32_t trap) { return Serve(trap); });
    numbers["HKLM\\System\\State\\Hardware:Headset"] = 1;
    for (const ImportSlot& slot : program_.imports) {
        const auto found = AllCalls().find(slot.function);
        machine_->Import(slot.rva, static_cast<std::uint32_t>(served_.size()));
        served_.emplace_back(slot.function, found != AllCalls().end() ? found->second : SystemCall());
    }
}

std::uint32_t Phone::Serve(std::uint32_t trap) {
    if (trap >= kTunerTrap && trap < kTunerTrap + kTunerSlots)
        return ServeTunerSlot(*this, trap - kTunerTrap);
    if (trap >= served_.size() && otherTraps) return otherTraps(*this, trap);
    const auto& [name, call] = served_.at(trap);
    calls.push_back(name);
    if (!call) throw std::runtime_error("the radio calls " + name + ", which is not served here");
    return call(*this);
}

std::uint32_t Phone::Start(const std::string& commandLine) {
    const std::uint32_t line = machine_->Allocate(static_cast<std::uint32_t>(2 * commandLine.size() + 2));
    machine_->WriteWide(line, commandLine);
    constexpr std::uint32_t kShow = 5;
    try {
        machine_->Call(machine_->Base() + program_.entry, {machine_->Base(), 0, line, kShow});
    } catch (const Ended& ended) {
        return ended.code;
    }
    throw std::runtime_error("the program's entry came back");
}

std::uint32_t Phone::MainWindow() const {
    for (const auto& [handle, window] : windows) {
        if (window.className == "Kora") return handle;
    }
    return 0;
}

std::uint32_t Phone::Send(std::uint32_t window, std::uint32_t message, std::uint32_t wParam,
                          std::uint32_t lParam) {
    const auto found = windows.find(window);
    if (found == windows.end() || found->second.procedure == 0) return 0;
    return machine_->Call(found->second.procedure, {window, message, wParam, lParam});
}

void Phone::Key(std::uint32_t virtualKey) {
    Post({MainWindow(), kWmKeyDown, virtualKey, 0});
}

void Phone::RunThread(std::uint32_t handle, int rounds) {
    const WaitObject thread = objects.at(handle);
    roundsLeft = rounds;
    try {
        machine_->CallAsThread(thread.threadProcedure, thread.threadArgument);
    } catch (const Blocked&) {
        // It waits now, and begins anew when it is waited for: its loop holds nothing from round to round.
        return;
    }
    throw std::runtime_error("the thread ended by itself");
}

bool Phone::NextMessage(Message& message) {
    constexpr std::uint32_t kPaint = 0x0F;
    for (;;) {
        if (!queue_.empty()) {
            message = queue_.front();
            queue_.pop_front();
            return true;
        }
        if (quit) return false;
        for (auto& [handle, window] : windows) {
            if (!window.dirty || window.procedure == 0) continue;
            message = {handle, kPaint, 0, 0};
            return true;
        }
        if (script.empty()) throw std::runtime_error("the radio waits for messages, and nothing is to come");
        const auto step = script.front();
        script.pop_front();
        step(*this);
    }
}

// String tables hold sixteen texts each, every one behind its length.
std::string Phone::Resource(std::uint32_t id) const {
    const auto block = program_.resources.find({kStrings, id / 16 + 1});
    if (block == program_.resources.end()) return {};
    std::uint32_t at = machine_->Base() + block->second.first;
    for (std::uint32_t i = 0; i < id % 16; ++i) at += 2U + 2U * machine_->Read16(at);
    const std::uint32_t length = machine_->Read16(at);
    std::string text;
    for (std::uint32_t i = 0; i < length; ++i) {
        const std::uint16_t unit = machine_->Read16(at + 2 + 2 * i);
        text.push_back(unit < 0x80 ? static_cast<char>(unit) : '?');
    }
    return text;
}

bool Phone::HasImage(std::uint32_t id) const {
    // The device's loader of images looks among resources of this type alone.
    return program_.HasNamed("GIF", id);
}

void AddLines(std::vector<std::string>& lines, std::string& partial, const std::string& text) {
    partial += text;
    for (std::size_t end; (end = partial.find('\n')) != std::string::npos; partial.erase(0, end + 1)) {
        std::string line = partial.substr(0, end);
        if (!line.empty() && line.back() == '\r') line.pop_back();
        lines.push_back(line);
    }
}

}  // namespace device
