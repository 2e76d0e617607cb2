// Only the nearest are wanted: what a search at a higher percentage finds is as near as that or
// nearer, and what it does not find is less near. So where it finds enough the nearest are among
// it, not counting those that are left out for another reason. That is asked first, since it is
// quick.
#include "near_text/matching/matches.h"

#include <algorithm>
#include <stdexcept>

#include "near_text/matching/numbers.h"
#include "near_text/messages/messages.h"

namespace near_text {

Matcher::Matcher(host_client::Component& component, EntryList const& searchedList,
                 SearchTerms const& searchTerms, reference::ExcludedWords const& excludedWords,
                 Wanted wantedMatches, Shortlist* shortlist)
    : search(component, searchedList, searchTerms.exclusions, searchTerms.threshold, shortlist),
      list_(searchedList),
      terms_(searchTerms),
      wanted_(wantedMatches),
      excluded_(excludedWords) {}

std::vector<Match> Matcher::matches(std::u16string_view text, IsRejected const& isRejected) {
    std::vector<Match> matches = measured(text, found(text, isRejected));
    if (!wanted_.isAll()) keepWanted(matches, wanted_);
    return matches;
}

Indices Matcher::found(std::u16string_view text, IsRejected const& isRejected) {
    Percentages const asked = terms_.percentages;
    for (int const high : {85, 75}) {
        Percentages const raised = {std::max(asked.forShort, high), std::max(asked.forLong, high)};
        bool const isRaised = raised.forShort > asked.forShort || raised.forLong > asked.forLong;
        if (wanted_.isAll() || !isRaised) continue;
        Indices indices = search.find(text, raised);
        if (isRejected) std::erase_if(indices, isRejected);
        std::size_t const before = leftOut_;
        leaveOut(text, indices);
        if (indices.size() >= (wanted_.isBestAlone ? 1 : wanted_.most)) return indices;
        leftOut_ = before;  // they will be found again
    }
    Indices indices = search.find(text, asked);
    if (isRejected) std::erase_if(indices, isRejected);
    leaveOut(text, indices);
    return indices;
}

void Matcher::leaveOut(std::u16string_view text, Indices& found, bool isCounted) {
    if (!terms_.isSameNumbers || found.empty()) return;
    Numbers const numbers(text);
    auto const count = std::erase_if(found, [&](unsigned long index) {
        return numbers.contradict(Numbers(list_.units(index)));
    });
    if (isCounted) leftOut_ += count;
}

std::vector<Match> Matcher::measured(std::u16string_view text, Indices const& indices) const {
    std::vector<Match> matches;
    if (indices.empty()) return matches;
    auto const against = explanation(text);
    matches.reserve(indices.size());
    for (unsigned long const index : indices) {
        auto const sides = measure(against, index);
        if (!sides.isAlike) {
            throw std::runtime_error("the plain computation and the add-in's answer disagree");
        }
        matches.push_back({index, reference::nearness(sides), sides.distance, sides.limit});
    }
    return matches;
}

void Matcher::markDifferences(std::vector<Match>& matches, std::string const& text,
                              std::u16string_view units, Preparer const& preparer) const {
    if (matches.empty()) return;
    PrintedText printed(text, preparer);
    // What is too long may have been cut.
    printed.units.resize(units.size());
    auto const against = explanation(printed.units);
    for (Match& match : matches) {
        PrintedText entry(list_.entry(match.index).text, preparer);
        entry.units.resize(list_.units(match.index).size());
        match.difference = differenceOf(printed, entry,
                                        against.explain(reference::readEntry(
                                            entry.units, list_.isBehindSeparator(match.index))));
    }
}

int Matcher::nearnessOf(std::u16string_view text, unsigned long index) const {
    return reference::nearness(measure(explanation(text), index));
}

bool Matcher::finds(Percentages percentages, unsigned long text, unsigned long entry) {
    try {
        return !search.findAmong(list_.units(text), percentages, {entry}).empty();
    } catch (Refused const&) {
        return false;
    }
}

reference::SearchExplanation Matcher::explanation(std::u16string_view text) const {
    return {text, excluded_, terms_.threshold, terms_.percentages.forShort,
            terms_.percentages.forLong};
}

reference::Measure Matcher::measure(reference::SearchExplanation const& against,
                                    unsigned long index) const {
    return against.measure(
        reference::readEntry(list_.units(index), list_.isBehindSeparator(index)));
}

void noteLeftOut(std::size_t matches) {
    if (matches == 0) return;
    complain("note: " + std::to_string(matches) + (matches == 1 ? " match" : " matches") +
             " left out: other numbers");
}

}  // namespace near_text
