#include "handset/fmdevice/antenna/server_name.h"

#include <cstring>
#include <memory>
#include <mutex>
#include <thread>

#include "handset/base/module_edge.h"
#include "handset/state/locks.h"

namespace fm {
namespace {

constexpr DWORD kLook_ms = 50;

std::vector<ServerAddress> Ask(const std::string& host, std::uint16_t port, int flags) {
    addrinfo hints{};
    hints.ai_family = AF_UNSPEC;
    hints.ai_socktype = SOCK_STREAM;
    hints.ai_flags = flags;
    addrinfo* found = nullptr;
    std::vector<ServerAddress> addresses;
    if (getaddrinfo(host.c_str(), std::to_string(port).c_str(), &hints, &found) != 0) return addresses;
    for (const addrinfo* one = found; one != nullptr; one = one->ai_next) {
        ServerAddress address;
        if (one->ai_addrlen > sizeof address.address) continue;
        std::memcpy(&address.address, one->ai_addr, one->ai_addrlen);
        address.length = static_cast<int>(one->ai_addrlen);
        addresses.push_back(address);
    }
    freeaddrinfo(found);
    return addresses;
}

struct Question {
    handset::CLock lock;  // guards the following
    handset::CCondition answered;
    bool waitedFor = true;
    bool done = false;
    std::vector<ServerAddress> addresses;
};

// The thread may outlast everything else here, so the module stays for as long as the process does.
void Pin() {
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_PIN,
                       reinterpret_cast<LPCWSTR>(&Pin), &module);
}

}  // namespace

std::vector<ServerAddress> AddressesOf(const std::string& host, std::uint16_t port,
                                       const std::function<bool()>& stop) {
    std::vector<ServerAddress> numeric = Ask(host, port, AI_NUMERICHOST);
    if (!numeric.empty()) return numeric;
    Pin();
    const auto question = std::make_shared<Question>();
    handset::WorkerThread(
        [question, host, port] {
            std::vector<ServerAddress> addresses = Ask(host, port, 0);
            const std::lock_guard<handset::CLock> guard(question->lock);
            question->addresses = std::move(addresses);
            question->done = true;
            question->answered.NotifyAll();
        },
        [question] {
            const std::lock_guard<handset::CLock> guard(question->lock);
            return question->waitedFor;
        })
        .detach();
    std::unique_lock<handset::CLock> lock(question->lock);
    while (!question->done && !stop()) question->answered.WaitFor(&lock, kLook_ms);
    question->waitedFor = false;
    return question->addresses;
}

}  // namespace fm
