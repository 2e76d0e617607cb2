// Scorers of the field beside a search. Each takes the percentage as its cut-off.
#include <algorithm>
#include <memory>

#include "bench/subjects.h"
#include "compare/limit.h"
#ifdef NEAR_TEXT_RAPIDFUZZ
#include <rapidfuzz/distance/Levenshtein.hpp>
#include <rapidfuzz/fuzz.hpp>
#endif

namespace bench {

#ifdef NEAR_TEXT_RAPIDFUZZ

namespace {

using Entries = std::vector<std::u16string_view>;

Entries cut(SearchArguments const& arguments) {
    Entries entries;
    std::u16string_view rest = arguments.dictionary;
    while (!rest.empty()) {
        entries.push_back(rest.substr(0, rest.find(arguments.separator)));
        rest.remove_prefix(std::min(entries.back().size() + 1, rest.size()));
    }
    return entries;
}

template <class IsMatch>
void addScorer(Case& measured, char const* name, std::shared_ptr<Entries const> const& entries,
               IsMatch const& isMatch) {
    measured.push_back({name,
                        [entries, isMatch] {
                            auto const matches =
                                std::count_if(entries->begin(), entries->end(), isMatch);
                            benchmark::DoNotOptimize(matches);
                        },
                        nullptr, true});
}

template <class Ratio>
void addRatio(Case& measured, char const* name, std::shared_ptr<Entries const> const& entries,
              SearchArguments const& arguments) {
    // Shared, since a subject is copied.
    auto const scorer = std::make_shared<Ratio>(arguments.text);
    double const percent = arguments.percentLong;
    addScorer(measured, name, entries, [scorer, percent](std::u16string_view entry) {
        return scorer->similarity(entry, percent) >= percent;
    });
}

}  // namespace

void addScorers(Case& measured, SearchArguments const& arguments) {
    namespace fuzz = rapidfuzz::fuzz;
    auto const entries = std::make_shared<Entries const>(cut(arguments));
    addRatio<fuzz::CachedTokenSortRatio<char16_t>>(measured, "token_sort_ratio", entries,
                                                   arguments);
    addRatio<fuzz::CachedTokenSetRatio<char16_t>>(measured, "token_set_ratio", entries, arguments);
    addRatio<fuzz::CachedRatio<char16_t>>(measured, "ratio", entries, arguments);

    using Levenshtein = rapidfuzz::CachedLevenshtein<char16_t>;
    auto const scorer = std::make_shared<Levenshtein>(arguments.text);
    comparer::Tolerance const tolerance(static_cast<unsigned long>(arguments.percentLong));
    addScorer(measured, "levenshtein", entries,
              [scorer, tolerance, length = arguments.text.size()](std::u16string_view entry) {
                  unsigned long const limit = tolerance.limit(std::max(entry.size(), length));
                  return scorer->distance(entry, limit) <= limit;
              });
}

#else

void addScorers(Case&, SearchArguments const&) {}

#endif

}  // namespace bench
