// The host's second method: which entries of a list are similar to a text?
//
//   records -> plain values -> for each entry of the dictionary: percentage by its length -> limit
//       -> held against the search text
#include <algorithm>

#include "compare/limit.h"
#include "compare/text_limit.h"
#include "host/near_text_comparer.h"
#include "host/parameters.h"
#include "search/entry_matcher.h"
#include "search/section_scanner.h"
#include "search/unit_finder.h"

using namespace comparer;

namespace {

Utf16View textOf(_tVariant const& record) {
    return {record.value.wideString, record.length};
}

// The seven records as plain values.
struct SearchInput {
    Utf16View searchText;
    Utf16View dictionary;
    unsigned short separator;
    unsigned long lengthThreshold;
    unsigned long percentShort;
    unsigned long percentLong;
    Utf16View exclusions;
};

// The first fault decides: a bad parameter hides a long text, a long text an empty dictionary.
SearchInput decode(_tVariant const* params) {
    if (!haveTags(params, kStringSearchTags)) throw NearTextComparer::BadParameters;
    if (params[2].length != 1) throw NearTextComparer::BadParameters;
    SearchInput input{textOf(params[0]),      textOf(params[1]),      0,
                      params[3].value.uint32, params[4].value.uint32, params[5].value.uint32,
                      textOf(params[6])};
    if (input.percentShort > 100) throw NearTextComparer::BadParameters;
    if (input.searchText.size() > kMaxTextLength) throw NearTextComparer::StringTooLong;
    if (input.searchText.empty()) throw NearTextComparer::NothingToSearch;
    if (input.dictionary.empty()) throw NearTextComparer::NothingToSearch;
    input.separator = textOf(params[2])[0];  // read no sooner than it is needed
    return input;
}

Section searchSection(Utf16View searchText) {
    SectionScanner scanner(searchText, 0);
    Section section;
    if (!scanner.nextWithWord(section)) throw NearTextComparer::NothingToSearch;
    return section;
}

// Pieces of the dictionary, from its beginning to its end; none of a short one, which is searched
// sooner than it is learned from.
class Samples {
public:
    explicit Samples(Utf16View dictionary) {
        if (dictionary.size() < kShort) return;
        for (unsigned long i = 0; i < kCount; ++i)
            samples_[i] = dictionary.substr(i * (dictionary.size() / kCount), kUnits);
        count_ = kCount;
    }
    operator std::span<Utf16View const>() const { return {samples_.data(), count_}; }

private:
    static constexpr unsigned long kCount = 16;
    static constexpr unsigned long kUnits = 64;
    static constexpr unsigned long kShort = 16 * kCount * kUnits;

    std::array<Utf16View, kCount> samples_;
    unsigned long count_ = 0;
};

// The limits of entries at one percentage. Entries that are no longer than a long search text share
// one; with a short text, which entries are is hard to guess.
class Limits {
public:
    Limits(unsigned long percent, unsigned long searchLength)
        : tolerance_(percent),
          searchLength_(searchLength),
          sharedUpTo_(searchLength > kShort ? searchLength : 0),
          shared_(tolerance_.limit(searchLength)) {}

    unsigned long of(unsigned long length) const {
        if (length <= sharedUpTo_) return shared_;
        return tolerance_.limit(std::max(length, searchLength_));
    }

private:
    static constexpr unsigned long kShort = 256;

    Tolerance tolerance_;
    unsigned long searchLength_;
    unsigned long sharedUpTo_;
    unsigned long shared_;
};

// One entry at a time, so that nothing but the matches grows with the dictionary.
std::vector<unsigned long> findMatches(SearchInput const& in) {
    Section const search = searchSection(in.searchText);
    Samples const samples(in.dictionary);
    // An entry has at most half as many words as the dictionary has units, rounded up.
    EntryMatcher matcher(search.text, in.dictionary, in.exclusions, in.separator, samples,
                         std::min(EntryMatcher::kEntryWords, in.dictionary.size() / 2 + 1));
    Limits const ofShort(in.percentShort, search.length);
    Limits const ofLong(in.percentLong, search.length);
    std::vector<unsigned long> matches;
    unsigned long index = 0;
    // Other percentages hardly ever allow no edit at all.
    std::optional<UnitFinder> needed;
    if (std::max(in.percentShort, in.percentLong) >= 100) {
        if (auto const unit = matcher.neededUnit()) needed.emplace(in.dictionary, *unit);
    }
    SectionScanner scanner(in.dictionary, in.separator);
    for (Section entry; scanner.nextWithWord(entry); ++index) {
        bool const isLong = in.lengthThreshold < entry.length;
        unsigned long const limit = (isLong ? ofLong : ofShort).of(entry.length);
        if (limit == 0 && needed && !needed->isIn(entry.text)) continue;
        if (matcher.isMatch(entry.text, limit)) matches.push_back(index);
    }
    return matches;
}

}  // namespace

bool NearTextComparer::searchString(_tVariant const* params, _tVariant* ret) {
    try {
        auto const matches = findMatches(decode(params));
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
