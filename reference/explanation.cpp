// Slow and plain on purpose: words in vectors, counts of them in maps, a matrix for the distance.
// What is fast in the add-in must agree with what is obvious here.
#include "reference/explanation.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <numeric>
#include <utility>

#include "reference/limit.h"
#include "reference/whitespace.h"

namespace reference {

namespace {

using Word = std::u16string_view;

// Words, each once, in the order in which they came. A few are looked through; of more, a set knows
// which are there.
class DistinctWords {
public:
    void add(Word word) {
        constexpr std::size_t kFew = 32;
        if (words_.size() < kFew) {
            if (std::find(words_.begin(), words_.end(), word) != words_.end()) return;
        } else {
            if (known_.empty()) known_.insert(words_.begin(), words_.end());
            if (!known_.insert(word).second) return;
        }
        words_.push_back(word);
    }
    Words take() { return std::move(words_); }

private:
    Words words_;
    std::set<Word> known_;
};

using Counts = std::map<Word, std::size_t>;  // no choice of words makes it slow

Counts counted(Words const& words) {
    Counts counts;
    for (Word const word : words)
        ++counts[word];
    return counts;
}

// Whether there is one of it; it is taken away.
bool takeOne(Counts& counts, Word word) {
    auto const found = counts.find(word);
    bool const isThere = found != counts.end() && found->second > 0;
    if (isThere) --found->second;
    return isThere;
}

// A whole text as a comparison of two reads it: up to the first NUL, every run of whitespace as if
// it were one unit long. What stands behind a NUL still counts in the length.
PlainSection readText(std::u16string_view text) {
    PlainSection read{{}, text.size()};
    std::size_t wordStart = 0;
    std::size_t const end = std::min(text.find(u'\0'), text.size());
    for (std::size_t i = 0; i <= end; ++i) {
        if (i < end && !isWhitespace(text[i])) continue;
        if (i > wordStart) read.words.push_back(text.substr(wordStart, i - wordStart));
        if (i < end && i > 0 && isWhitespace(text[i - 1])) --read.length;
        wordStart = i + 1;
    }
    return read;
}

// The next part of `text`, which begins at `from` and becomes what is behind the part's end.
// Whitespace never separates; a NUL always does.
PlainSection readSection(std::u16string_view text, std::size_t& from, char16_t separator) {
    DistinctWords words;
    unsigned long length = from > 0 ? 1 : 0;
    std::size_t wordStart = from;
    for (;; ++from) {
        bool const isSpace = from < text.size() && isWhitespace(text[from]);
        bool const isEnd =
            from == text.size() || (!isSpace && (text[from] == separator || text[from] == 0));
        if ((isSpace || isEnd) && from > wordStart) {
            words.add(text.substr(wordStart, from - wordStart));
        }
        if (isSpace) wordStart = from + 1;
        if (isEnd) break;
        ++length;
    }
    ++from;
    return {words.take(), length};
}

// The parts of a text that hold a word.
std::vector<PlainSection> readSections(std::u16string_view text, char16_t separator) {
    std::vector<PlainSection> sections;
    for (std::size_t from = 0; from <= text.size();) {
        PlainSection section = readSection(text, from, separator);
        if (!section.words.empty()) sections.push_back(std::move(section));
    }
    return sections;
}

// The occurrences in `words` for which `others` has no partner: the later ones are those that had.
Words withoutPartner(Words const& words, Words const& others) {
    Counts partners = counted(others);
    Words left;
    for (std::size_t i = words.size(); i-- > 0;) {
        if (!takeOne(partners, words[i])) left.push_back(words[i]);
    }
    std::reverse(left.begin(), left.end());
    return left;
}

Words withPartner(Words const& words, Words const& others) {
    Counts partners = counted(others);
    Words common;
    for (Word const word : words) {
        if (takeOne(partners, word)) common.push_back(word);
    }
    return common;
}

void judge(Measure& sides, std::u16string_view firstLeft, std::u16string_view secondLeft) {
    sides.limit = limitFor(sides.percent, sides.length);
    sides.distance = distanceBetween(firstLeft, secondLeft);
    sides.isAlike = sides.distance <= sides.limit;
}

// Fills in what follows from the words that count and from the length.
void explainWords(SideBySide& sides, Words first, Words second) {
    sides.cancelled = withPartner(first, second);
    Words firstLeft = withoutPartner(first, second), secondLeft = withoutPartner(second, first);
    judge(sides, joined(firstLeft), joined(secondLeft));
    sides.first = {std::move(first), std::move(firstLeft)};
    sides.second = {std::move(second), std::move(secondLeft)};
}

// Moves the excluded words out of `words`.
void exclude(Words& words, ExcludedWords const& exclusions, DistinctWords& excluded) {
    if (exclusions.empty()) return;
    std::erase_if(words, [&](Word word) {
        bool const isExcluded = exclusions.count(word) > 0;
        if (isExcluded) excluded.add(word);
        return isExcluded;
    });
}

}  // namespace

std::u16string joined(Words const& words) {
    std::u16string text;
    for (Word const word : words)
        text += word;
    return text;
}

unsigned long distanceBetween(std::u16string_view first, std::u16string_view second) {
    std::vector<unsigned long> row(second.size() + 1);
    std::iota(row.begin(), row.end(), 0UL);
    for (char16_t const unit : first) {
        unsigned long corner = row[0]++;  // above and to the left of the cell in turn
        for (std::size_t j = 1; j < row.size(); ++j) {
            unsigned long const replaced = corner + (unit == second[j - 1] ? 0 : 1);
            corner = row[j];
            row[j] = std::min(std::min(row[j], row[j - 1]) + 1, replaced);
        }
    }
    return row.back();
}

int nearness(Measure const& sides) {
    int percent = 100;
    while (percent > 0 &&
           limitFor(static_cast<unsigned long>(percent), sides.length) < sides.distance) {
        --percent;
    }
    return percent;
}

SideBySide explainCompare(std::u16string_view first, std::u16string_view second,
                          unsigned long percent) {
    PlainSection const firstText = readText(first);
    PlainSection const secondText = readText(second);
    SideBySide sides{};
    sides.length = std::max(firstText.length, secondText.length);
    sides.percent = percent;
    explainWords(sides, firstText.words, secondText.words);
    return sides;
}

ExcludedWords readExclusions(std::u16string_view exclusions, char16_t separator) {
    ExcludedWords words;
    for (PlainSection const& section : readSections(exclusions, separator))
        words.insert(section.words.begin(), section.words.end());
    return words;
}

SearchExplanation::SearchExplanation(std::u16string_view searchText,
                                     ExcludedWords const& exclusions, int threshold,
                                     int shortPercent, int longPercent)
    : text_{readSections(searchText, 0).at(0)},
      excluded_(exclusions),
      lengthThreshold_(static_cast<std::uint32_t>(threshold)),
      percentShort_(static_cast<std::uint32_t>(shortPercent)),
      percentLong_(static_cast<std::uint32_t>(longPercent)) {}

PlainSection readEntry(std::u16string_view text, bool isBehindSeparator) {
    std::size_t from = 0;
    PlainSection entry = readSection(text, from, 0);
    if (isBehindSeparator) ++entry.length;
    return entry;
}

SearchExplanation::CountedWords SearchExplanation::countedWords(PlainSection const& entry) const {
    CountedWords words{text_.words, entry.words, {}};
    DistinctWords left;
    exclude(words.ofText, excluded_, left);
    exclude(words.ofEntry, excluded_, left);
    words.excluded = left.take();
    return words;
}

Measure SearchExplanation::unjudged(PlainSection const& entry) const {
    Measure sides{};
    sides.length = std::max(entry.length, text_.length);
    sides.percent = entry.length > lengthThreshold_ ? percentLong_ : percentShort_;
    return sides;
}

Measure SearchExplanation::measure(PlainSection const& entry) const {
    CountedWords const words = countedWords(entry);
    Measure sides = unjudged(entry);
    judge(sides, joined(withoutPartner(words.ofText, words.ofEntry)),
          joined(withoutPartner(words.ofEntry, words.ofText)));
    return sides;
}

SideBySide SearchExplanation::explain(PlainSection const& entry) const {
    CountedWords words = countedWords(entry);
    SideBySide sides{unjudged(entry), {}, std::move(words.excluded), {}, {}};
    explainWords(sides, std::move(words.ofText), std::move(words.ofEntry));
    return sides;
}

std::vector<SideBySide> explainSearch(host_client::SearchArguments const& arguments) {
    std::vector<SideBySide> entries;
    if (!holdsWord(arguments.text)) return entries;
    ExcludedWords const excluded = readExclusions(arguments.exclusions, arguments.separator);
    SearchExplanation const explanation(arguments.text, excluded, arguments.lengthThreshold,
                                        arguments.percentShort, arguments.percentLong);
    for (PlainSection const& entry : readSections(arguments.dictionary, arguments.separator))
        entries.push_back(explanation.explain(entry));
    return entries;
}

}  // namespace reference
