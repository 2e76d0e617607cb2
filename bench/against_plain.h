// Measures one thing and, in the same run, its plain form.
#pragma once

#include <benchmark/benchmark.h>

#include <chrono>
#include <stdexcept>

namespace bench {

// Nanoseconds of one call, the mean of as many as fit into a quarter of a second, two at the least.
template <class Call>
double nanosecondsOf(Call&& call) {
    using Clock = std::chrono::steady_clock;
    constexpr std::chrono::milliseconds kLeast{250};
    auto const start = Clock::now();
    long calls = 0;
    do {
        call();
        ++calls;
    } while (calls < 2 || Clock::now() - start < kLeast);
    return std::chrono::duration<double, std::nano>(Clock::now() - start).count() /
           static_cast<double>(calls);
}

// Times `ours` as the benchmark; counts `plain_ns`, one call of the plain form, and `ratio`, how
// many times as long that takes. Both give the answer, which must be the same.
template <class Ours, class Plain>
void againstPlain(benchmark::State& state, Ours&& ours, Plain&& plain) {
    if (ours() != plain()) throw std::logic_error("the plain form answers otherwise");
    double const plainTime = nanosecondsOf([&] { benchmark::DoNotOptimize(plain()); });
    double const ourTime = nanosecondsOf([&] { benchmark::DoNotOptimize(ours()); });
    for (auto _ : state)
        benchmark::DoNotOptimize(ours());
    state.counters["plain_ns"] = plainTime;
    state.counters["ours_ns"] = ourTime;
    state.counters["ratio"] = plainTime / ourTime;
}

}  // namespace bench
