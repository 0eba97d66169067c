#include "tests/bench/reception/tasks.h"

#include <atomic>
#include <chrono>
#include <cstdio>
#include <mutex>
#include <thread>

namespace bench {

void RunAll(const std::vector<Task>& tasks) {
    const auto begin = std::chrono::steady_clock::now();
    std::atomic<std::size_t> next{0};
    std::mutex line;  // guards `done` and the screen
    std::size_t done = 0;
    const auto work = [&] {
        for (std::size_t i = next++; i < tasks.size(); i = next++) {
            tasks[i].run();
            const std::lock_guard<std::mutex> guard(line);
            const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - begin;
            std::fprintf(stderr, "   %zu of %zu, %.0f s: %s\n", ++done, tasks.size(), passed.count(),
                         tasks[i].what.c_str());
        }
    };
    std::vector<std::thread> threads;
    for (unsigned i = 0; i < std::max(1u, std::thread::hardware_concurrency()); ++i)
        threads.emplace_back(work);
    for (std::thread& thread : threads) thread.join();
}

}  // namespace bench
