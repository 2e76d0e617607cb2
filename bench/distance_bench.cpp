// The edit distance alone, by length. Where edlib is installed, it is measured on the same texts,
// cut to 8 bits a unit.
#include "bench/against_plain.h"
#include "bench/bench_texts.h"
#include "bench/plain_form.h"
#include "compare/generalized_levenstein_distance.h"
#ifdef NEAR_TEXT_EDLIB
#include <edlib.h>
#endif

namespace {

struct Pair {
    Utf16String first;
    Utf16String second;
};

Pair pairOf(std::size_t length, bool isNear, bool isCyrillic) {
    auto const first = bench::text(length, isCyrillic, 3);
    auto const second = isNear ? bench::nearTo(first, 20, 5) : bench::text(length, isCyrillic, 4);
    return {Utf16String(first.begin(), first.end()), Utf16String(second.begin(), second.end())};
}

void distance(benchmark::State& state, bool isNear, bool isCyrillic) {
    Pair const pair = pairOf(static_cast<std::size_t>(state.range(0)), isNear, isCyrillic);
    bench::againstPlain(
        state, [&] { return GeneralizedLevensteinDistance(pair.first, pair.second, 1, 1, 1); },
        [&] { return plain::distance(pair.first, pair.second); });
}

#define LENGTHS Arg(8)->Arg(16)->Arg(32)->Arg(64)->Arg(128)->Arg(250)->Arg(500)->Arg(1000)
BENCHMARK_CAPTURE(distance, unlike_latin, false, false)->LENGTHS;
BENCHMARK_CAPTURE(distance, unlike_cyrillic, false, true)->LENGTHS;
BENCHMARK_CAPTURE(distance, near_latin, true, false)->LENGTHS;
BENCHMARK_CAPTURE(distance, near_cyrillic, true, true)->LENGTHS;

#ifdef NEAR_TEXT_EDLIB
void edlib(benchmark::State& state, bool isNear) {
    Pair const pair = pairOf(static_cast<std::size_t>(state.range(0)), isNear, false);
    std::string const a(pair.first.begin(), pair.first.end());
    std::string const b(pair.second.begin(), pair.second.end());
    auto const config = edlibNewAlignConfig(-1, EDLIB_MODE_NW, EDLIB_TASK_DISTANCE, nullptr, 0);
    for (auto _ : state) {
        auto const result = edlibAlign(a.data(), static_cast<int>(a.size()), b.data(),
                                       static_cast<int>(b.size()), config);
        benchmark::DoNotOptimize(result.editDistance);
        edlibFreeAlignResult(result);
    }
}
BENCHMARK_CAPTURE(edlib, unlike_latin, false)->LENGTHS;
BENCHMARK_CAPTURE(edlib, near_latin, true)->LENGTHS;
#endif

}  // namespace
