#include "bench/plain_form.h"

#include <algorithm>
#include <list>
#include <map>
#include <memory>
#include <set>

#include "compare/limit.h"
#include "compare/weighted_distance.h"
#include "compare/white_space.h"

namespace plain {

namespace {

struct Word {
    unsigned short const* text;
    unsigned long length;
    int ordinal;
};

struct WordRef {
    std::shared_ptr<Word const> word;

    friend bool operator<(WordRef const& a, WordRef const& b) {
        if (a.word->length != b.word->length) return a.word->length < b.word->length;
        return std::lexicographical_compare(a.word->text, a.word->text + a.word->length,
                                            b.word->text, b.word->text + b.word->length);
    }
};

using WordSet = std::set<WordRef>;

struct Section {
    unsigned long length;
    WordSet words;
};

std::vector<std::shared_ptr<Section>> mark(unsigned short const* text, unsigned long length,
                                           unsigned short separator) {
    std::list<std::shared_ptr<Section>> sections;
    Section current{0, {}};
    unsigned long wordLength = 0;
    int ordinal = 0;
    auto const endWord = [&](unsigned long end) {
        if (wordLength == 0) return;
        current.words.insert(
            {std::make_shared<Word const>(Word{text + end - wordLength, wordLength, ordinal++})});
        wordLength = 0;
    };
    auto const endSection = [&](unsigned long end) {
        endWord(end);
        if (!current.words.empty()) {
            sections.push_back(std::make_shared<Section>(current));
        }
        current.words.clear();
        current.length = 1;
        ordinal = 0;
    };
    for (unsigned long i = 0; i < length; ++i) {
        if (isWhiteSpaceUnit(text[i])) {
            endWord(i);
            ++current.length;
        } else if (text[i] == separator || text[i] == 0) {
            endSection(i);
        } else {
            ++wordLength;
            ++current.length;
        }
    }
    endSection(length);
    return {sections.begin(), sections.end()};
}

void removeBy(WordSet& words, WordSet const& gone) {
    for (WordRef const& word : gone)
        words.erase(word);
}

void removeSame(WordSet& first, WordSet& second) {
    if (first.empty() || second.empty()) return;
    if (*first.rbegin() < *second.begin() || *second.rbegin() < *first.begin()) return;
    auto a = first.begin();
    auto b = second.begin();
    while (a != first.end() && b != second.end()) {
        if (*a < *b) {
            ++a;
        } else if (*b < *a) {
            ++b;
        } else {
            a = first.erase(a);
            b = second.erase(b);
        }
    }
}

Utf16String join(WordSet const& words) {
    std::map<int, WordRef> byOrdinal;
    for (WordRef const& ref : words)
        byOrdinal[ref.word->ordinal] = ref;
    Utf16String joined;
    for (auto const& [ordinal, ref] : byOrdinal)
        joined.append(ref.word->text, ref.word->length);
    return joined;
}

bool isNear(WordSet const& searchWords, WordSet& candidate, WordSet const& exclusions,
            unsigned long limit) {
    removeBy(candidate, exclusions);
    WordSet searchLeft = searchWords;
    removeSame(searchLeft, candidate);
    Utf16String const left = join(searchLeft);
    Utf16String const right = join(candidate);
    if (std::max(left.size(), right.size()) - std::min(left.size(), right.size()) > limit) {
        return false;
    }
    return distance(left, right) <= limit;
}

struct Words {
    std::vector<Utf16String> inOrder;
    unsigned long surplusSpace = 0;
    std::map<Utf16String, std::pair<unsigned long, unsigned long>> counted;
};

Words splitAndCount(unsigned short const* text, unsigned long length) {
    Words words;
    bool isInRun = false;
    for (unsigned long at = 0; at < length && text[at] != 0;) {
        if (isWhiteSpaceUnit(text[at])) {
            if (isInRun) ++words.surplusSpace;
            isInRun = true;
            ++at;
            continue;
        }
        unsigned long const start = at;
        while (at < length && text[at] != 0 && !isWhiteSpaceUnit(text[at]))
            ++at;
        words.inOrder.emplace_back(text + start, at - start);
        isInRun = false;
    }
    for (Utf16String const& word : words.inOrder) {
        auto& [count, unmatched] = words.counted[word];
        ++count;
        ++unmatched;
    }
    return words;
}

void cancel(Words& walked, Words& searched) {
    for (auto entry = walked.counted.begin(); entry != walked.counted.end();) {
        auto const found = searched.counted.find(entry->first);
        if (found == searched.counted.end()) {
            ++entry;
            continue;
        }
        unsigned long const shared = std::min(entry->second.second, found->second.second);
        found->second.second -= shared;
        entry->second.second -= shared;
        if (found->second.second == 0) searched.counted.erase(found);
        entry = entry->second.second == 0 ? walked.counted.erase(entry) : std::next(entry);
    }
}

Utf16String joinLeft(Words& words) {
    Utf16String joined;
    for (Utf16String const& word : words.inOrder) {
        auto const found = words.counted.find(word);
        if (found == words.counted.end()) continue;
        auto& [count, unmatched] = found->second;
        if (unmatched != 0 && unmatched <= count) {
            joined += word;
            --unmatched;
        } else {
            --count;
        }
    }
    return joined;
}

}  // namespace

unsigned long distance(Utf16String const& first, Utf16String const& second) {
    return weightedDistance(first, second, 1, 1, 1);
}

void Comparer::compareString(_tVariant const* params, _tVariant* ret) {
    Words first = splitAndCount(params[0].value.wideString, params[0].length);
    Words second = splitAndCount(params[1].value.wideString, params[1].length);
    cancel(first, second);
    unsigned long const limit = distanceLimit(
        params[2].value.uint32,
        std::max(params[0].length - first.surplusSpace, params[1].length - second.surplusSpace));
    ret->value.boolean = distance(joinLeft(first), joinLeft(second)) <= limit ? 1 : 0;
    ret->tag = TagBool;
}

void Comparer::searchString(_tVariant const* params, _tVariant* ret) {
    unsigned short const separator = params[2].value.wideString[0];
    auto const dictionary = mark(params[1].value.wideString, params[1].length, separator);
    WordSet exclusions;
    for (auto const& section : mark(params[6].value.wideString, params[6].length, separator)) {
        exclusions.insert(section->words.begin(), section->words.end());
    }
    auto const search = mark(params[0].value.wideString, params[0].length, 0).at(0);
    WordSet searchWords = search->words;
    removeBy(searchWords, exclusions);

    std::vector<unsigned long> matches;
    for (unsigned long index = 0; index < dictionary.size(); ++index) {
        unsigned long const length = dictionary[index]->length;
        bool const isLong = params[3].value.uint32 < length;
        unsigned long const limit = distanceLimit((isLong ? params[5] : params[4]).value.uint32,
                                                  std::max(length, search->length));
        WordSet candidate = dictionary[index]->words;
        if (isNear(searchWords, candidate, exclusions, limit)) matches.push_back(index);
    }
    ret->tag = TagWideString;
    if (!matches.empty()) createReturnString(ret, matches);
}

void Comparer::createReturnString(_tVariant* ret, std::vector<unsigned long> const& indices) {
    std::wstring digits;
    auto const readNumber = [&](unsigned long number) {
        numberStream << number;
        numberStream >> digits;
        numberStream.clear();
    };
    unsigned long total = 0;
    for (unsigned long const index : indices) {
        readNumber(index);
        total += digits.size() + 1;
    }
    memManager.allocate(reinterpret_cast<void**>(&ret->value.wideString), total * 2);
    unsigned short* const text = ret->value.wideString;
    unsigned long end = 0;
    for (unsigned long const index : indices) {
        if (end != 0) text[end - 1] = ',';
        readNumber(index);
        std::copy(digits.begin(), digits.end(), text + end);
        end += digits.size() + 1;
    }
    text[total - 1] = 0;
    ret->length = static_cast<std::uint32_t>(total - 1);
}

}  // namespace plain
