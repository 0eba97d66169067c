// The power manager: states and who is told of them, unattended mode, the idle timer.
#include "handset/state/power_manager.h"

#include <algorithm>
#include <cstring>
#include <cwchar>
#include <vector>

#include "handset/state/handset_clock.h"
#include "handset/state/handset_state.h"
#include "handset/state/message_queue.h"
#include "handset/state/power_board.h"
#include "handset/state/stored_value.h"

namespace handset {
namespace {

constexpr std::uint32_t kMillisecondsPerSecond = 1000;
// After a look that another program did not let happen.
constexpr DWORD kNextTry_ms = 1000;

// POWER_BROADCAST: three words, the name, a terminator.
std::vector<std::uint8_t> Broadcast(std::uint32_t kind, const PowerState& state) {
    const std::uint32_t words[] = {kind, state.flags,
                                   static_cast<std::uint32_t>(state.name.size() * sizeof(wchar_t))};
    std::vector<std::uint8_t> message(sizeof words + words[2] + sizeof(wchar_t));
    std::memcpy(message.data(), words, sizeof words);
    std::memcpy(message.data() + sizeof words, state.name.data(), words[2]);
    return message;
}

// A queue that is full or gone misses the message; its program cannot hold the phone up.
void Tell(const CPowerBoardAccess& board, std::uint32_t kind, const PowerState& state) {
    const std::vector<std::uint8_t> message = Broadcast(kind, state);
    for (const PowerListener& row : board->listeners) {
        if (row.program.id == 0 || (row.kinds & kind) == 0) continue;
        std::unique_ptr<CQueueEnd> end;
        if (CQueueEnd::Open(row.queueId, false, nullptr, &end) != ERROR_SUCCESS) continue;
        (void)end->Write(message.data(), static_cast<DWORD>(message.size()), 0, 0);
    }
}

DWORD Enter(const CPowerBoardAccess& board, const PowerState& state) {
    const PowerState before = CurrentPowerState();
    if (before == state) return ERROR_SUCCESS;
    // The flags first: with the old name they do not count, with the new one they must be there.
    if (!SetStateDword(L"PowerFlags", state.flags) || !SetStateString(L"PowerState", state.name)) {
        return ERROR_ACCESS_DENIED;
    }
    board->systemActivity_ms = board->userActivity_ms = GetTickCount64();
    if ((before.flags & kPowerSuspend) != 0) Tell(board, kPowerResume, {L"", state.flags});
    Tell(board, kPowerTransition, state);
    board.WakeFollowers();
    return ERROR_SUCCESS;
}

PowerState StateOf(const PowerStateRow& row) {
    return {row.name, row.flags};
}

// The state of a phone whose display has just been switched off; `otherwise` when nothing holds it awake.
PowerState Dark(const CPowerBoardAccess& board, std::uint32_t otherwise) {
    if (board.Holders() == 0) return StateOf(*PowerStateWithFlags(otherwise));
    return {PowerStateWithFlags(kPowerUnattended)->name, kPowerIdle | kPowerUnattended};
}

// The display is off, and nothing was known to hold the phone awake when it went off.
bool IsDarkAlone(const PowerState& state) {
    return (state.flags & (kPowerIdle | kPowerUnattended)) == kPowerIdle;
}

// A program holds the phone awake. The first one is told of the state that it finds as well: that of a phone
// which was woken for it, or left behind by a program before it. It is the one now that has to reset the idle
// timer.
void StayAwake(const CPowerBoardAccess& board, bool first) {
    const PowerState state = CurrentPowerState();
    if (IsDarkAlone(state)) {
        Enter(board, Dark(board, kPowerIdle));
    } else if (first && (state.flags & kPowerUnattended) != 0) {
        Tell(board, kPowerTransition, state);
    }
}

std::uint32_t Timeout_s(const wchar_t* value, std::uint32_t fallback) {
    const std::wstring key = DeviceRegistryRootPath(HKEY_LOCAL_MACHINE) + L"\\" + kTimeoutsKey;
    const auto stored = ReadStoredValue(key, value);
    return stored ? AsDword(*stored).value_or(fallback) : fallback;
}

// What is counted in a state, and where it leads.
struct Count {
    std::uint32_t length_s;  // 0 = nothing
    std::uint64_t began_ms;
    PowerState end;
};

Count CountIn(const CPowerBoardAccess& board, const PowerState& state) {
    if ((state.flags & kPowerOn) != 0) {
        return {Timeout_s(kUserIdleValue, kUserIdleDefault_s), board->userActivity_ms,
                Dark(board, kPowerIdle)};
    }
    if (IsDarkAlone(state)) {
        return {Timeout_s(kSuspendValue, kSuspendDefault_s), board->systemActivity_ms,
                Dark(board, kPowerSuspend)};
    }
    if ((state.flags & kPowerUnattended) != 0) {
        return {Timeout_s(kSuspendValue, kSuspendDefault_s), board->systemActivity_ms,
                StateOf(*PowerStateWithFlags(kPowerSuspend))};
    }
    return {0, 0, state};
}

}  // namespace

DWORD ChangePowerState(const std::wstring& name) {
    const PowerStateRow* row = PowerStateNamed(name);
    if (row == nullptr) return ERROR_INVALID_PARAMETER;
    const CPowerBoardAccess board;
    if (!board) return ERROR_BUSY;
    return Enter(board, StateOf(*row));
}

DWORD ChangePowerState(std::uint32_t flags) {
    const PowerStateRow* row = PowerStateWithFlags(flags);
    if (row == nullptr) return ERROR_INVALID_PARAMETER;
    const CPowerBoardAccess board;
    if (!board) return ERROR_BUSY;
    return Enter(board, flags == kPowerIdle ? Dark(board, kPowerIdle) : StateOf(*row));
}

DWORD PressPowerKey() {
    const CPowerBoardAccess board;
    if (!board) return ERROR_BUSY;
    const bool lit = DisplayLit(CurrentPowerState());
    return Enter(board, lit ? Dark(board, kPowerSuspend) : StateOf(*PowerStateWithFlags(kPowerOn)));
}

void WakePhone() {
    const CPowerBoardAccess board;
    if (!board) return;
    if ((CurrentPowerState().flags & kPowerSuspend) == 0) return;
    Enter(board, StateOf(*PowerStateWithFlags(kPowerOn)));
}

std::optional<std::uint32_t> AddPowerListener(const std::wstring& queueId, std::uint32_t kinds) {
    const CPowerBoardAccess board;
    if (!board) return std::nullopt;
    if (queueId.size() >= kLongestQueueId) return std::nullopt;
    for (PowerListener& row : board->listeners) {
        if (row.program.id != 0) continue;
        row = {ThisProgram(), ++board->lastNumber, kinds, L""};
        std::wmemcpy(row.queueId, queueId.c_str(), queueId.size() + 1);
        return row.number;
    }
    return std::nullopt;
}

bool RemovePowerListener(std::uint32_t number) {
    const CPowerBoardAccess board;
    if (!board) return false;
    for (PowerListener& row : board->listeners) {
        if (row.number != number || !(row.program == ThisProgram())) continue;
        row = {};
        return true;
    }
    return false;
}

bool HoldUnattended(bool hold) {
    const CPowerBoardAccess board;
    if (!board) return false;
    PowerProgram* const mine = board.Mine();
    if (mine == nullptr) return false;
    const bool alone = board.Holders() == 0;
    if (hold) ++mine->holds;
    if (!hold && mine->holds > 0) --mine->holds;
    board.ShowHolds();
    if (hold) StayAwake(board, alone);
    return true;
}

std::uint32_t UnattendedHolders() {
    return CPowerBoardAccess().Holders();
}

bool WantAllKeys(bool all) {
    const CPowerBoardAccess board;
    if (!board) return false;
    PowerProgram* const mine = board.Mine();
    if (mine == nullptr) return false;
    mine->allKeys = all ? 1 : 0;
    board.ShowAllKeys();
    return true;
}

bool AllKeysWanted() {
    return CPowerBoardAccess().AllKeys();
}

void ResetIdleTimer() {
    const CPowerBoardAccess board;
    if (!board) return;
    board->systemActivity_ms = GetTickCount64();
    SetStateDword(L"IdleTimerResets", StateDword(L"IdleTimerResets", 0) + 1);
}

void NoteUserActivity() {
    const CPowerBoardAccess board;
    if (!board) return;
    board->userActivity_ms = GetTickCount64();
}

DWORD StepIdleTimer() {
    const CPowerBoardAccess board;
    if (!board) return kNextTry_ms;
    const std::uint32_t clockRate = RateNow();
    // Twice at most: the state that a count leads to may have a count of its own, which then has just begun.
    for (;;) {
        const Count count = CountIn(board, CurrentPowerState());
        if (count.length_s == 0) return INFINITE;
        const std::uint64_t length_ms = std::max<std::uint64_t>(
            std::uint64_t{count.length_s} * kMillisecondsPerSecond / clockRate, kShortestCount_ms);
        const std::uint64_t passed_ms = GetTickCount64() - count.began_ms;
        if (passed_ms < length_ms) {
            return static_cast<DWORD>(std::min<std::uint64_t>(length_ms - passed_ms, INFINITE - 1));
        }
        if (Enter(board, count.end) != ERROR_SUCCESS) return kShortestCount_ms;
    }
}

void TellOfClockRate(std::uint32_t before, std::uint32_t now) {
    const CPowerBoardAccess board;
    if (!board) return;
    // What was counted at the old rate stays counted.
    const std::uint64_t real_ms = GetTickCount64();
    const auto rebased = [&](std::uint64_t began_ms) {
        if (began_ms == 0) return began_ms;
        const std::uint64_t passed_ms = (real_ms - std::min(began_ms, real_ms)) * before / now;
        return real_ms - std::min(passed_ms, real_ms - 1);
    };
    board->systemActivity_ms = rebased(board->systemActivity_ms);
    board->userActivity_ms = rebased(board->userActivity_ms);
    board.WakeFollowers();
}

CPowerFollower::CPowerFollower()
    : changed_(CreateEventW(nullptr, FALSE, FALSE, FollowerEventName(ThisProgram()).c_str())) {
    const CPowerBoardAccess board;
    if (!board) return;
    // A board without activity has just come into being, and the phone has been used a moment ago.
    const std::uint64_t now = GetTickCount64();
    if (board->systemActivity_ms == 0) board->systemActivity_ms = board->userActivity_ms = now;
    if (PowerProgram* const mine = board.Mine()) mine->follows = 1;
}

CPowerFollower::~CPowerFollower() {
    const CPowerBoardAccess board;
    if (!board) return;
    if (PowerProgram* const mine = board.Mine()) mine->follows = 0;
}

}  // namespace handset
