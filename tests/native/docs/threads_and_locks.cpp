#include "tests/native/docs/threads_and_locks.h"

#include <iterator>
#include <regex>

#include "tests/native/docs/source_text.h"

namespace test {

int ThreadsIn(const std::string& source) {
    const std::string bare =
        LinesWith(WithoutComments(source, true), {"hread", "Timer", "Work", "Wait", "timeSet", "async"});
    // A thread that is assigned, or begun with its object, is one that was declared; one that is returned is
    // its caller's.
    static const std::regex kAssigned(
        R"((?:=|\breturn)\s*std::j?thread\s*[({]|[=(]\s*handset::WorkerThread\s*\()");
    static const std::regex kThread(
        R"(\b(?:CreateThread|CreateRemoteThread|_beginthread|_beginthreadex|CreateTimerQueueTimer|)"
        R"(QueueUserWorkItem|CreateThreadpool\w+|RegisterWaitForSingleObject|timeSetEvent|std::async)\s*\(|)"
        R"(\bhandset::WorkerThread\s*\(|\bstd::j?thread(?:\s+\w+\s*;|\s*[({]))");
    const std::string begun = std::regex_replace(bare, kAssigned, "");
    return static_cast<int>(
        std::distance(std::sregex_iterator(begun.begin(), begun.end(), kThread), std::sregex_iterator()));
}

std::vector<std::string> LocksIn(const std::string& source) {
    const std::string bare =
        LinesWith(WithoutComments(source, true), {"mutex", "Mutex", "Lock", "LOCK", "SECTION", "Semaphore"});
    static const std::regex kLock(
        R"((const\s+)?\b(?:std::(?:recursive_|timed_|shared_)*mutex|SRWLOCK|CRITICAL_SECTION|)"
        R"((?:handset::)?C(?:Recursive|Process)?Lock)\s*&?\s+(\w+)\s*[;={]|)"
        R"(\bclass (\w+) : public (?:handset::)?CProcessLock\b|\b(CreateMutexW|CreateSemaphoreW)\s*\()");
    std::vector<std::string> locks;
    for (std::sregex_iterator match(bare.begin(), bare.end(), kLock), end; match != end; ++match) {
        const std::string variable = (*match)[2];
        const bool taken = (*match)[1].matched || variable == "operator";
        if (!taken) locks.push_back(variable + (*match)[3].str() + (*match)[4].str());
    }
    return locks;
}

}  // namespace test
