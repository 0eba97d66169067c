// The power manager's shared memory.
#include "handset/state/power_board.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <memory>
#include <mutex>

#include "handset/state/handset_state.h"

namespace handset {
namespace {

// One board for each state key that this program has worked with, kept open from then on.
PowerBoard* OpenBoard() {
    static std::mutex& lock = *new std::mutex;  // guards `boards`
    static auto& boards = *new std::map<std::wstring, std::unique_ptr<CSharedMemory>>;
    static auto& own = *new PowerBoard{};
    const std::lock_guard<std::mutex> guard(lock);
    std::unique_ptr<CSharedMemory>& memory = boards[StateKeyPath()];
    if (!memory || !*memory) memory = std::make_unique<CSharedMemory>(L"power", sizeof(PowerBoard));
    return *memory ? static_cast<PowerBoard*>(memory->data()) : &own;
}

}  // namespace

std::wstring FollowerEventName(const ProgramMark& program) {
    return StateObjectName(L"power.changed." + std::to_wstring(program.id));
}

CPowerBoardAccess::CPowerBoardAccess() : lock_(StateObjectName(L"power.lock")), board_(OpenBoard()) {
    if (lock_) ClearAway();
}

void CPowerBoardAccess::ClearAway() const {
    bool held = false, allKeys = false;
    for (PowerProgram& row : board_->programs) {
        if (row.program.id == 0 || Runs(row.program)) continue;
        held = held || row.holds != 0;
        allKeys = allKeys || row.allKeys != 0;
        row = {};
    }
    for (PowerListener& row : board_->listeners) {
        if (row.program.id != 0 && !Runs(row.program)) row = {};
    }
    if (held) ShowHolds();
    if (allKeys) ShowAllKeys();
}

PowerProgram* CPowerBoardAccess::Mine() const {
    PowerProgram* free = nullptr;
    for (PowerProgram& row : board_->programs) {
        if (row.program == ThisProgram()) return &row;
        if (row.program.id == 0 && free == nullptr) free = &row;
    }
    if (free != nullptr) free->program = ThisProgram();
    return free;
}

std::uint32_t CPowerBoardAccess::Holders() const {
    std::uint32_t holds = 0;
    for (const PowerProgram& row : board_->programs) holds += row.holds;
    return holds;
}

void CPowerBoardAccess::ShowHolds() const {
    SetStateDword(L"UnattendedRequests", Holders());
}

bool CPowerBoardAccess::AllKeys() const {
    return std::any_of(std::begin(board_->programs), std::end(board_->programs),
                       [](const PowerProgram& row) { return row.allKeys != 0; });
}

void CPowerBoardAccess::ShowAllKeys() const {
    SetStateDword(L"AllKeys", AllKeys() ? 1 : 0);
}

void CPowerBoardAccess::WakeFollowers() const {
    for (const PowerProgram& row : board_->programs) {
        if (row.follows == 0) continue;
        const OwnedHandle event(
            OpenEventW(EVENT_MODIFY_STATE, FALSE, FollowerEventName(row.program).c_str()));
        if (event) SetEvent(event.get());
    }
}

}  // namespace handset
