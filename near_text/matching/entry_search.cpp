// A shorter list has the entries in the order of the file, so the add-in's n-th match in it is the
// n-th of those handed over. It begins with the separator unless it begins with the entry that
// opens the whole list, so that each entry has the length that it has there: on that the limit and
// the choice of the percentage depend. The add-in gets it in portions that stay in the processor's
// cache, so that it takes no memory to speak of.
#include "near_text/matching/entry_search.h"

#include "near_text/matching/longest_text.h"

namespace near_text {

std::string refusal(std::string const& report, std::size_t units) {
    constexpr std::size_t kMostTold = 5000;  // of a longer line only a part may have been read
    if (units <= kMostUnits) return report;
    return report + " (this has " +
           (units > kMostTold ? "more than " + std::to_string(kMostTold) : std::to_string(units)) +
           ')';
}

Indices EntrySearch::find(std::u16string_view text, Percentages percentages) {
    if (shortlist_ != nullptr) {
        if (auto const entries = shortlist_->entriesFor(text, percentages))
            return findAmong(text, percentages, *entries);
    }
    return ask(text, percentages, list_.dictionary);
}

Indices EntrySearch::findAmong(std::u16string_view text, Percentages percentages,
                               Indices const& among) {
    constexpr std::size_t kEnough = std::size_t{1} << 17;
    Indices found;
    std::size_t at = 0;
    // Nothing to look at is asked for too: it is the add-in that refuses a text.
    do {
        std::size_t const begin = at;
        shorterList_.clear();
        for (; at < among.size() && shorterList_.size() < kEnough; ++at) {
            // A NUL separates whatever the separator is, even where that is whitespace.
            if (list_.isBehindSeparator(among[at])) shorterList_ += u'\0';
            shorterList_ += list_.units(among[at]);
        }
        for (unsigned long const index : ask(text, percentages, shorterList_))
            found.push_back(among[begin + index]);
    } while (at < among.size());
    return found;
}

Indices EntrySearch::ask(std::u16string_view text, Percentages percentages,
                         std::u16string_view dictionary) {
    auto const answer = component_.search({text, dictionary, list_.separator, threshold_,
                                           percentages.forShort, percentages.forLong, exclusions_});
    if (!answer) throw Refused(refusal(toUtf8(component_.lastReport()), text.size()));
    return host_client::parseIndexList(*answer);
}

}  // namespace near_text
