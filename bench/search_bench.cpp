// StringSearch: real lists, their corners, and entries of a million units.
#include <algorithm>

#include "bench/bench_texts.h"
#include "bench/cases.h"
#include "bench/colliding_words.h"
#include "bench/subjects.h"

namespace bench {

namespace {

constexpr std::size_t kEntries = 60'000;
constexpr std::size_t kSearchTexts = 8;

// What people search for, an entry, mistyped: of all entries, ordered by length, the one in the
// middle of each eighth.
std::vector<std::u16string> searchTexts() {
    auto all = entries(kEntries);
    std::stable_sort(all.begin(), all.end(),
                     [](auto const& a, auto const& b) { return a.size() < b.size(); });
    std::vector<std::u16string> texts;
    texts.reserve(kSearchTexts);
    for (unsigned i = 0; i < kSearchTexts; ++i)
        texts.push_back(mistyped(all[(2 * i + 1) * kEntries / (2 * kSearchTexts)], 30, i));
    return texts;
}

std::u16string searchText() {
    return searchTexts()[kSearchTexts / 2];
}

// Entries joined by a space and cut.
std::u16string longText(std::size_t length) {
    std::u16string text;
    for (std::size_t i = 5; text.size() < length; i += 5)
        text += entries(i).back() + u' ';
    text.resize(length);
    return text;
}

struct Search {
    std::u16string text;
    std::u16string dictionary;
    std::u16string exclusions;

    SearchArguments arguments(int percent) const {
        return {text, dictionary, u';', 50, percent, percent, exclusions};
    }
};

void raceSearch(benchmark::State& state, Search const& search, int percent) {
    race(state, {searchCase(search.arguments(percent))}, 1);
}

void weighSearch(benchmark::State& state, Search const& search, int percent) {
    weigh(state, searchCase(search.arguments(percent)));
}

void addPercents() {
    for (int const percent : {100, 95, 90, 85, 80, 75, 70, 60, 50, 40, 20, 0}) {
        addCase("search_by_percent/" + std::to_string(percent), [percent](auto& state) {
            auto const dictionary = join(entries(kEntries));
            auto const texts = searchTexts();
            std::vector<Case> cases;
            for (auto const& text : texts) {
                SearchArguments const search{text, dictionary, u';', 50, percent, percent, {}};
                cases.push_back(searchCase(search));
                addScorers(cases.back(), search);
            }
            race(state, cases, kSearchTexts * kEntries);
        });
    }
}

void addSizes() {
    for (std::size_t const count : {1UL, 10UL, 1'000UL, 10'000UL, 100'000UL, 1'000'000UL}) {
        addCase("search_by_size/" + std::to_string(count), [count](auto& state) {
            raceSearch(state, {searchText(), join(entries(count)), {}}, 85);
        });
    }
}

using MakeSearch = Search (*)();

struct Corner {
    char const* name;
    MakeSearch make;
    std::vector<int> percents;
    int weighedAt = -1;
};

Search inList(std::u16string text, std::u16string exclusions) {
    return {std::move(text), join(entries(kEntries)), std::move(exclusions)};
}

std::u16string someExclusions() {
    return entries(2).back() + u";" + entries(9).back();
}

Search inMillion(std::u16string_view repeated, std::u16string text) {
    std::u16string entry;
    while (entry.size() < 1'000'000)
        entry += repeated;
    return {std::move(text), std::move(entry), {}};
}

// Different words of three units from `first` on.
Search inShortWords(char16_t first, std::u16string text) {
    constexpr unsigned kLetters = 60;
    std::u16string entry;
    for (unsigned i = 0; entry.size() < 1'000'000; ++i) {
        for (unsigned const letter : {i, i / kLetters, i / kLetters / kLetters})
            entry += static_cast<char16_t>(first + letter % kLetters);
        entry += u' ';
    }
    return {std::move(text), std::move(entry), {}};
}

Search inWords() {
    return {text(1000, false, 22), text(1'000'000, false, 21), {}};
}

std::u16string joined(std::vector<std::u16string> const& words, char16_t with) {
    std::u16string text;
    for (auto const& word : words)
        (text += word) += with;
    return text;
}

Search inCollidingWords() {
    return {u"bad cat", joined(collidingWords(110'000, 8), u' '), {}};
}

// A list that was made to be slow, and one of the same size and form that was not.
struct Attack {
    char const* name;
    int percent;
    Search (*make)(bool isAttack);
};

std::vector<std::u16string> eightUnits(std::size_t count, bool doCollide) {
    return doCollide ? collidingWords(count, 8) : randomWords(count, 8);
}

// Seventy of the exclusions collide.
Search withExclusions(bool isAttack) {
    auto exclusions = randomWords(30'000, 8);
    auto const few = eightUnits(70, isAttack);
    std::copy(few.begin(), few.end(), exclusions.begin());
    return {searchText(), join(entries(5'000)).substr(0, 300'000), joined(exclusions, u';')};
}

// All exclusions and all entries do.
Search withOnlyExclusions(bool isAttack) {
    auto const words = eightUnits(60'000, isAttack);
    return {searchText(), joined({words.begin() + 20'000, words.end()}, u';'),
            joined({words.begin(), words.begin() + 30'000}, u';')};
}

Search forManyWords(bool isAttack) {
    auto const words = isAttack ? collidingWords(66, 2) : randomWords(66, 2);
    std::u16string searched = joined(words, u' ');
    for (char16_t unit = 0x4E00; searched.size() < 937; ++unit)
        searched += {unit, u' '};
    return {searched, join(entries(5'000)).substr(0, 300'000), {}};
}

template <std::size_t kWords>
Search inOneEntry(bool isAttack) {
    return {u"bad cat", joined(eightUnits(kWords, isAttack), u' '), {}};
}

// Blanks let the limit rise to one less than the units of the long word, where lengths do not
// settle the distance of a short entry. Ordinary are the entries of a real list.
Search forLongWord(bool isAttack, std::size_t length, std::u16string const& shared,
                   std::u16string const& entry) {
    std::u16string searched = longText(1200);
    std::erase(searched, u' ');
    searched.resize(length);
    searched += shared;
    searched.resize(length + 9, u' ');
    std::u16string dictionary;
    while (dictionary.size() < 60'000)
        dictionary += entry;
    if (!isAttack) dictionary = join(entries(2'000)).substr(0, dictionary.size());
    return {searched, dictionary, {}};
}

// Units whose places in a table, by their low bits, are next to each other; the entries' unit,
// which the text does not have, has the first place.
template <std::size_t kUnits>
Search forUnitsInARow(bool isAttack) {
    Search search = forLongWord(isAttack, 980, u"", std::u16string(kUnits, u'\u9000') + u';');
    for (std::size_t i = 0; isAttack && i < 980; ++i)
        search.text[i] = static_cast<char16_t>(0x5000 + (i ^ i >> 3U ^ i >> 6U ^ i >> 9U));
    return search;
}

// A hundred units are left of each entry, too many to be aligned one by one.
Search forLongWordInPart(bool isAttack) {
    auto const rest = text(1000, false, 7);
    std::u16string entry = u"x " + rest.substr(0, 120);
    std::erase(entry, u' ');
    return forLongWord(isAttack, 978, u" x", u"x " + entry + u';');
}

constexpr Attack kAttacks[] = {
    {"exclusions", 85, withExclusions},
    {"exclusions_alone", 85, withOnlyExclusions},
    {"search_words", 60, forManyWords},
    {"one_entry", 85, inOneEntry<110'000>},
    {"one_entry", 60, inOneEntry<110'000>},
    {"one_entry", 20, inOneEntry<110'000>},
    {"shorter_entry", 20, inOneEntry<20'000>},
    {"one_unit_entries", 1, [](bool isAttack) { return forLongWord(isAttack, 980, u"", u"e;"); }},
    {"shared_words", 1, [](bool isAttack) { return forLongWord(isAttack, 981, u" x", u"x e;"); }},
    {"shared_and_more", 1, forLongWordInPart},
    {"units_in_a_row", 1, forUnitsInARow<1>},
    {"many_units_in_a_row", 1, forUnitsInARow<100>},
};

void addAttacks() {
    for (auto const& attack : kAttacks) {
        auto const name = std::string("search_corner/attack/") + attack.name + '/' +
                          std::to_string(attack.percent);
        addCase(name, [&attack](auto& state) {
            Search const slow = attack.make(true);
            Search const ordinary = attack.make(false);
            race(state,
                 {attackCase(slow.arguments(attack.percent), ordinary.arguments(attack.percent))},
                 1);
        });
    }
}

std::vector<Corner> const& corners() {
    static std::vector<Corner> const all{
        {"exclusions", [] { return inList(searchText(), someExclusions()); }, {85, 60}},
        {"3_units", [] { return inList(u"pro", {}); }, {85, 60}},
        {"3_units_exclusions", [] { return inList(u"pro", someExclusions()); }, {85, 60}},
        {"130_units", [] { return inList(longText(130), {}); }, {85, 60}},
        {"1000_units", [] { return inList(longText(1000), {}); }, {85, 60, 20}, 60},
        {"all_excluded", [] { return inList(searchText(), searchText()); }, {85, 60}},
        {"million/words", inWords, {85, 60, 0}, 60},
        {"million/one_word", [] { return inMillion(u"a", u"bab"); }, {85, 60, 0}, 0},
        {"million/repeated", [] { return inMillion(u"ball ", u"ball red"); }, {85, 60, 0}},
        {"million/short_words", [] { return inShortWords(u'A', u"bad cat"); }, {85, 60, 0}, 60},
        {"million/wide_words", [] { return inShortWords(u'а', u"кот пес"); }, {85, 60, 0}},
        {"million/colliding", inCollidingWords, {85, 60, 0}, 60},
    };
    return all;
}

void addCorners() {
    for (auto const& corner : corners()) {
        for (int const percent : corner.percents) {
            addCase(std::string("search_corner/") + corner.name + "/" + std::to_string(percent),
                    [&corner, percent](auto& state) { raceSearch(state, corner.make(), percent); });
        }
    }
}

void addMemory() {
    for (int const percent : {85, 60}) {
        addCase("memory/entries/" + std::to_string(percent),
                [percent](auto& state) { weighSearch(state, inList(searchText(), {}), percent); });
    }
    for (auto const& corner : corners()) {
        if (corner.weighedAt < 0) continue;
        addCase(std::string("memory/") + corner.name + "/" + std::to_string(corner.weighedAt),
                [&corner](auto& state) { weighSearch(state, corner.make(), corner.weighedAt); });
    }
}

}  // namespace

void addSearchCases() {
    addPercents();
    addSizes();
    addCorners();
    addAttacks();
    addMemory();
}

}  // namespace bench
