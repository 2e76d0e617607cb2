// The edit distance alone, by length, against a single row of the matrix and, where they were there
// when this was built, edlib (on texts of 8 bits a unit) and RapidFuzz.
#include <memory>

#include "bench/bench_texts.h"
#include "bench/cases.h"
#include "bench/race.h"
#include "compare/generalized_levenstein_distance.h"
#ifdef NEAR_TEXT_EDLIB
#include <edlib.h>
#endif
#ifdef NEAR_TEXT_RAPIDFUZZ
#include <rapidfuzz/distance/Levenshtein.hpp>
#endif

namespace bench {

namespace {

template <class Distance>
void addDistance(Case& measured, char const* name, Distance const& distance) {
    auto const last = std::make_shared<unsigned long>();
    measured.push_back(
        {name, [last, distance] { *last = distance(); }, [last] { return Answer{*last}; }});
}

#ifdef NEAR_TEXT_EDLIB
unsigned long distanceOfEdlib(std::string const& a, std::string const& b) {
    auto const result =
        edlibAlign(a.data(), static_cast<int>(a.size()), b.data(), static_cast<int>(b.size()),
                   edlibNewAlignConfig(-1, EDLIB_MODE_NW, EDLIB_TASK_DISTANCE, nullptr, 0));
    auto const distance = static_cast<unsigned long>(result.editDistance);
    edlibFreeAlignResult(result);
    return distance;
}
#endif

void raceDistance(benchmark::State& state, std::size_t length, bool isNear, bool isCyrillic) {
    auto const first = text(length, isCyrillic, 3);
    auto const second = isNear ? mistyped(first, 20, 5) : text(length, isCyrillic, 4);
    Utf16String const a(first.begin(), first.end());
    Utf16String const b(second.begin(), second.end());
    Case measured;
    addDistance(measured, "ours", [&] { return GeneralizedLevensteinDistance(a, b, 1, 1, 1); });
    addDistance(measured, "plain", [&] { return comparer::weightedDistance(a, b, 1, 1, 1); });
#ifdef NEAR_TEXT_EDLIB
    std::string const narrowA(a.begin(), a.end());
    std::string const narrowB(b.begin(), b.end());
    if (!isCyrillic)
        addDistance(measured, "edlib", [&] { return distanceOfEdlib(narrowA, narrowB); });
#endif
#ifdef NEAR_TEXT_RAPIDFUZZ
    addDistance(measured, "levenshtein", [&] { return rapidfuzz::levenshtein_distance(a, b); });
#endif
    race(state, {measured}, 1);
}

}  // namespace

void addDistanceCases() {
    for (bool const isNear : {false, true}) {
        for (bool const isCyrillic : {false, true}) {
            std::string const name = std::string("distance/") + (isNear ? "near" : "unlike") +
                                     (isCyrillic ? "_cyrillic/" : "_latin/");
            for (std::size_t const length : {8UL, 16UL, 32UL, 64UL, 128UL, 250UL, 500UL, 1000UL}) {
                addCase(name + std::to_string(length),
                        [=](auto& state) { raceDistance(state, length, isNear, isCyrillic); });
            }
        }
    }
}

}  // namespace bench
