// The host's second method: which entries of a list are alike to a text?
//
//   exclusions, search text -> words -> exclusions leave the search words
//   for each entry of the dictionary: percentage by its length -> limit -> bound by its units
//       -> if that does not settle it: words -> compareStrings
#include <algorithm>
#include <utility>

#include "compare/limit.h"
#include "compare/text_limit.h"
#include "host/near_text_comparer.h"
#include "search/entry_bound.h"
#include "search/mark_input.h"
#include "search/word_sets.h"

namespace {

// The seven records by name.
struct SearchParams {
    _tVariant const& searchText;
    _tVariant const& dictionary;
    _tVariant const& separator;
    _tVariant const& lengthThreshold;
    _tVariant const& percentShort;
    _tVariant const& percentLong;
    _tVariant const& exclusions;
};

PStringRef<unsigned short> wholeText(_tVariant const& record) {
    return {record.value.wideString, record.length};
}

// The first fault decides: a bad parameter hides a long text, a long text an empty dictionary.
void testInput(SearchParams const& in) {
    for (_tVariant const* text : {&in.searchText, &in.dictionary, &in.separator, &in.exclusions}) {
        if (text->tag != TagWideString) throw NearTextComparer::BadParameters;
    }
    for (_tVariant const* number : {&in.lengthThreshold, &in.percentShort, &in.percentLong}) {
        if (number->tag != TagInt32) throw NearTextComparer::BadParameters;
    }
    if (in.separator.length != 1) throw NearTextComparer::BadParameters;
    if (in.percentShort.value.uint32 > 100) throw NearTextComparer::BadParameters;
    if (in.searchText.length > kMaxTextLength) throw NearTextComparer::StringTooLong;
    if (in.searchText.length == 0) throw NearTextComparer::NothingToSearch;
    if (in.dictionary.length == 0) throw NearTextComparer::NothingToSearch;
}

WordSet gatherWords(std::vector<PStringRefSection> const& sections) {
    WordSet words;
    for (auto const& section : sections) {
        words.insert(section.words().begin(), section.words().end());
    }
    return words;
}

WordSet wordsWithout(WordSet words, WordSet const& gone) {
    removeBy(words, gone);
    return words;
}

// What every entry is held against.
class EntryTest {
public:
    EntryTest(SearchParams const& params, PStringRefSection const& search, WordSet gone)
        : in(params),
          searchLength(search.reference().length()),
          exclusions(std::move(gone)),
          searchWords(wordsWithout(search.words(), exclusions)),
          bound(searchWords, exclusions) {}

    bool isMatch(Stretch const& entry) const {
        unsigned long const limit = limitOf(entry);
        switch (bound.judge(entry, limit)) {
            case EntryBound::Verdict::Near:
                return true;
            case EntryBound::Verdict::TooFar:
                return false;
            case EntryBound::Verdict::Unknown:
                break;
        }
        WordSet candidate = markWords(entry);
        return compareStrings(searchWords, candidate, exclusions, limit);
    }

private:
    unsigned long limitOf(Stretch const& entry) const {
        bool const isLong = in.lengthThreshold.value.uint32 < entry.length;
        unsigned long const percent = (isLong ? in.percentLong : in.percentShort).value.uint32;
        return distanceLimit(percent, std::max(entry.length, searchLength));
    }

    SearchParams const& in;
    unsigned long searchLength;
    WordSet exclusions;
    WordSet searchWords;
    EntryBound bound;
};

// One entry at a time, so that no memory grows with the dictionary.
std::vector<unsigned long> findMatches(SearchParams const& in) {
    unsigned short const separator = in.separator.value.wideString[0];
    WordSet exclusions = gatherWords(markInput(wholeText(in.exclusions), separator));
    auto const search = markInput(wholeText(in.searchText), 0);
    if (search.empty()) throw NearTextComparer::NothingToSearch;
    EntryTest const test(in, search.front(), std::move(exclusions));

    std::vector<unsigned long> matches;
    unsigned long index = 0;
    StretchReader reader(wholeText(in.dictionary), separator);
    for (Stretch entry; reader.next(entry);) {
        if (entry.wordUnits == 0) continue;  // no word, no index
        if (test.isMatch(entry)) matches.push_back(index);
        ++index;
    }
    return matches;
}

}  // namespace

bool NearTextComparer::searchString(_tVariant const* params, _tVariant* ret) {
    try {
        SearchParams const in{params[0], params[1], params[2], params[3],
                              params[4], params[5], params[6]};
        testInput(in);
        auto const matches = findMatches(in);
        ret->tag = TagWideString;
        return matches.empty() || createReturnString(ret, matches);
    } catch (Error error) {
        if (error <= InternalError) {
            reportFailure(error);
            return false;
        }
        ret->tag = TagWideString;
        ret->value.wideString = nullptr;
        ret->length = 0;
        return true;
    }
}
