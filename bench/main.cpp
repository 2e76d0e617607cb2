// Benchmarks of the add-in. scripts/bench runs them.
#include <benchmark/benchmark.h>

#include <iostream>

#include "bench/cases.h"

int main(int count, char** arguments) try {
    benchmark::Initialize(&count, arguments);
    if (benchmark::ReportUnrecognizedArguments(count, arguments)) return 2;
    bench::addSearchCases();
    bench::addCompareCases();
    bench::addDistanceCases();
    benchmark::RunSpecifiedBenchmarks();
    return 0;
} catch (std::exception const& error) {
    std::cerr << "near_text_bench: " << error.what() << '\n';
    return 1;
}
