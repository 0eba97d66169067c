// A small Windows CE around the processor: as much of the system as the radio's start, a few keys and its end
// ask for, served by plain code. What the radio does with it is written down. Only one thread runs at a time:
// a thread that the radio makes runs when it is waited for.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "tests/device/machine.h"

namespace device {

class Phone;

// One call of the system. Arguments are read from the phone's machine; the result is the call's.
using SystemCall = std::function<std::uint32_t(Phone&)>;

struct Window {
    std::uint32_t procedure = 0;  // 0: a control of the system's own
    std::map<std::int32_t, std::uint32_t> longs;
    std::string className, title;
    bool enabled = true, visible = false, dirty = false;
};

struct Message {
    std::uint32_t window = 0, message = 0, wParam = 0, lParam = 0;
};

struct WaitObject {
    bool signalled = false, manualReset = false;
    // A thread that has not run yet.
    std::uint32_t threadProcedure = 0, threadArgument = 0;
};

class Phone {
  public:
    // The program, loaded at its own address or at another.
    explicit Phone(const std::string& program, std::uint32_t base = 0);

    // Runs it from its entry with this command line, until it ends; its exit code.
    std::uint32_t Start(const std::string& commandLine);

    // --- The world around it, set before the start
    // -------------------------------------------------------------- "HKLM\System\State\Hardware:Headset" and
    // so on.
    std::map<std::string, std::uint32_t> numbers;
    std::map<std::string, std::string> texts;
    // What happens once the radio waits for messages, one step each time its queue is empty. After the last
    // one the radio waiting again is an error.
    std::deque<std::function<void(Phone&)>> script;
    std::int32_t signal = 45;
    std::uint32_t channel = 8750;
    bool receiver = true;  // CoCreateInstance finds one
    // The phone's database: what it holds is forgotten with the phone; a volume that was never made has no
    // databases.
    std::set<std::string> databases;

    // --- What was seen
    // -----------------------------------------------------------------------------------------
    std::vector<std::string> trace;    // lines of NKDbgPrintfW
    std::vector<std::string> console;  // lines of printf
    std::vector<std::string> tuner;    // "SetChannel 9850 -> 0"
    std::vector<std::string> calls;    // names of the system's functions, in order
    std::vector<std::string> drawn;    // texts
    std::vector<std::string> boxes;    // "caption: text"
    std::map<std::uint32_t, Window> windows;
    std::set<std::uint32_t> drawingObjects;  // made and not deleted
    std::set<std::uint32_t> imagesMissed;    // asked of the image loader, which did not find them
    [[nodiscard]] std::uint32_t MainWindow() const;

    // --- For the calls
    // -----------------------------------------------------------------------------------------
    Machine& Cpu() { return *machine_; }
    [[nodiscard]] std::uint32_t Argument(int index) const { return machine_->Argument(index); }
    [[nodiscard]] std::string Wide(int index) const { return machine_->WideText(Argument(index)); }
    std::uint32_t NewHandle() { return nextHandle_ += 4; }
    std::uint32_t Send(std::uint32_t window, std::uint32_t message, std::uint32_t wParam,
                       std::uint32_t lParam);
    void Post(const Message& message) { queue_.push_back(message); }
    // A stylus tap or key from outside.
    void Key(std::uint32_t virtualKey);
    // Runs the thread that was made last with this procedure's neighbour for `rounds` waits, as the monitor
    // does.
    void RunThread(std::uint32_t handle, int rounds);
    bool NextMessage(Message& message);
    [[nodiscard]] std::string Resource(std::uint32_t id) const;  // a string of the program
    [[nodiscard]] bool HasImage(std::uint32_t id) const;

    std::map<std::uint32_t, WaitObject> objects;
    std::vector<std::uint32_t> threads;  // in the order of their making
    std::uint32_t lastError = 0;
    std::uint32_t ticks = 1000;
    int roundsLeft = 0;
    bool quit = false;
    std::uint32_t quitCode = 0;
    std::map<std::uint32_t, std::uint32_t> timers;  // id → procedure
    std::map<std::uint32_t, std::uint32_t> threadValues;
    std::string partialTrace, partialConsole;

    // Called for traps that are neither the system's nor the tuner's.
    std::function<std::uint32_t(Phone&, std::uint32_t trap)> otherTraps;
    [[nodiscard]] const ProgramFile& Program() const { return program_; }

    // Thrown by a wait that would not end; a thread that RunThread runs is left there.
    struct Blocked {};
    // Thrown by TerminateProcess.
    struct Ended {
        std::uint32_t code;
    };

  private:
    std::uint32_t Serve(std::uint32_t trap);
    std::uint32_t ServeTuner(std::uint32_t slot);

    ProgramFile program_;
    std::unique_ptr<Machine> machine_;
    std::vector<std::pair<std::string, SystemCall>> served_;  // by trap
    std::deque<Message> queue_;
    std::uint32_t nextHandle_ = 0x100;
};

// The functions that are served, by name; each family has a file of its own.
using SystemCalls = std::map<std::string, SystemCall>;
// Calls that nothing follows from.
inline std::uint32_t One(Phone&) {
    return 1;
}
inline std::uint32_t Nothing(Phone&) {
    return 0;
}
void AddRuntimeCalls(SystemCalls& calls);
void AddKernelCalls(SystemCalls& calls);
void AddWindowCalls(SystemCalls& calls);
void AddDrawingCalls(SystemCalls& calls);
void AddStoreCalls(SystemCalls& calls);
void AddShellCalls(SystemCalls& calls);

// The tuner's operations, by slot behind those of IUnknown.
constexpr std::uint32_t kTunerTrap = 0x800, kTunerSlots = 22;
std::uint32_t MakeTuner(Phone& phone);
std::uint32_t ServeTunerSlot(Phone& phone, std::uint32_t slot);

// printf by the Microsoft rules, arguments from `first` on: %d %u %x %c %s %S and their widths. `wide` says
// which kind of text %s is.
[[nodiscard]] std::string Format(const Phone& phone, const std::string& format, int first, bool wide);

// Cuts what was written into lines; the rest waits for its end.
void AddLines(std::vector<std::string>& lines, std::string& partial, const std::string& text);

}  // namespace device
