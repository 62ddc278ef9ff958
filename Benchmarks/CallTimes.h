#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <ctime>
#include <string>
#include <vector>

namespace orvu {

inline double threadCpuMilliseconds() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

/// Times single calls by hand, so that the slowest ones can be reported too: a person feels
/// those, not the mean. Beside the clock's time stands the processor's, which other programs on
/// the machine disturb far less.
class CallTimes {
public:
    template <class Call>
    void measure(benchmark::State& state, const Call& call) {
        const double cpuBegin = threadCpuMilliseconds();
        const auto begin = std::chrono::steady_clock::now();
        call();
        const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - begin;
        cpu_.push_back(threadCpuMilliseconds() - cpuBegin);
        clock_.push_back(elapsed.count() * 1e3);
        state.SetIterationTime(elapsed.count());
    }
    void report(benchmark::State& state) {
        const auto reportOne = [&](std::vector<double>& times, const std::string& name) {
            std::ranges::sort(times);
            const auto last = static_cast<double>(times.size() - 1);
            state.counters[name + "_median_ms"] = times[static_cast<std::size_t>(last * 0.5)];
            state.counters[name + "_p99_ms"] = times[static_cast<std::size_t>(last * 0.99)];
            state.counters[name + "_max_ms"] = times.back();
        };
        reportOne(clock_, "clock");
        reportOne(cpu_, "cpu");
    }

private:
    std::vector<double> clock_;
    std::vector<double> cpu_;
};

}  // namespace orvu
