// Slow and plain on purpose: words in vectors that are searched from end to end, a matrix row by
// row for the distance. What is fast in the add-in must agree with what is obvious here.
#include "stand_in_host/explanation.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>

#include "stand_in_host/whitespace.h"

namespace stand_in_host {

namespace {

using Words = std::vector<std::u16string>;

std::size_t occurrences(Words const& words, std::u16string const& word) {
    return static_cast<std::size_t>(std::count(words.begin(), words.end(), word));
}

bool holds(Words const& words, std::u16string const& word) {
    return occurrences(words, word) > 0;
}

void addOnce(Words& words, std::u16string const& word) {
    if (!holds(words, word)) words.push_back(word);
}

std::u16string joined(Words const& words) {
    std::u16string text;
    for (std::u16string const& word : words)
        text += word;
    return text;
}

unsigned long distanceBetween(std::u16string_view first, std::u16string_view second) {
    std::vector<unsigned long> row(second.size() + 1);
    for (std::size_t j = 0; j <= second.size(); ++j)
        row[j] = j;
    for (std::size_t i = 1; i <= first.size(); ++i) {
        std::vector<unsigned long> const above = std::exchange(row, {i});
        for (std::size_t j = 1; j <= second.size(); ++j) {
            unsigned long const replaced = above[j - 1] + (first[i - 1] == second[j - 1] ? 0 : 1);
            row.push_back(std::min({above[j] + 1, row[j - 1] + 1, replaced}));
        }
    }
    return row.back();
}

unsigned long limitFor(unsigned long percent, unsigned long length) {
    if (percent > 100) return 0;
    // Halves depend on the rounding of each step, so the steps and their order are fixed.
    double const share = static_cast<double>(percent) / 100.0;
    double const tolerance = 1.0 - share;
    return static_cast<unsigned long>(std::round(tolerance * static_cast<double>(length)));
}

// Fills in what follows from the words and the length.
void judge(SideBySide& sides, Words const& first, Words const& second) {
    sides.firstLeft = joined(first);
    sides.secondLeft = joined(second);
    sides.limit = limitFor(sides.percent, sides.length);
    sides.distance = distanceBetween(sides.firstLeft, sides.secondLeft);
    sides.isAlike = sides.distance <= sides.limit;
}

// A whole text as a comparison of two reads it: up to the first NUL, every run of whitespace as if
// it were one unit long. What stands behind a NUL still counts in the length.
PlainSection readText(std::u16string_view text) {
    PlainSection read{{}, text.size()};
    bool wasSpace = false;
    bool wasWord = false;
    for (char16_t const unit : text) {
        if (unit == 0) break;
        bool const isWord = !isWhitespace(unit);
        if (isWord && !wasWord) read.words.emplace_back();
        if (isWord) read.words.back() += unit;
        if (!isWord && wasSpace) --read.length;
        wasSpace = !isWord;
        wasWord = isWord;
    }
    return read;
}

// The parts of a text that hold a word. Whitespace never separates; a NUL always does.
std::vector<PlainSection> readSections(std::u16string_view text, char16_t separator) {
    std::vector<PlainSection> sections;
    PlainSection current{{}, 0};
    std::u16string word;
    auto const endWord = [&] {
        if (!word.empty()) addOnce(current.words, word);
        word.clear();
    };
    auto const endSection = [&] {
        endWord();
        if (!current.words.empty()) sections.push_back(current);
        current = {{}, 1};
    };
    for (char16_t const unit : text) {
        if (!isWhitespace(unit) && (unit == separator || unit == 0)) {
            endSection();
            continue;
        }
        if (isWhitespace(unit)) {
            endWord();
        } else {
            word += unit;
        }
        ++current.length;
    }
    endSection();
    return sections;
}

// The occurrences in `words` for which `others` has no partner: the later ones are those that had.
Words withoutPartner(Words const& words, Words const& others) {
    Words left;
    Words seen;
    for (std::u16string const& word : words) {
        if (occurrences(seen, word) + occurrences(others, word) < occurrences(words, word)) {
            left.push_back(word);
        }
        seen.push_back(word);
    }
    return left;
}

Words withPartner(Words const& words, Words const& others) {
    Words common;
    for (std::u16string const& word : words) {
        if (occurrences(common, word) < occurrences(others, word)) common.push_back(word);
    }
    return common;
}

// Moves the excluded words out of `words`.
void exclude(Words& words, Words const& exclusions, Words& excluded) {
    for (std::u16string const& word : words) {
        if (holds(exclusions, word)) addOnce(excluded, word);
    }
    std::erase_if(words, [&](std::u16string const& word) { return holds(exclusions, word); });
}

}  // namespace

SideBySide explainCompare(std::u16string_view first, std::u16string_view second,
                          unsigned long percent, Words const& exclusions) {
    PlainSection const firstText = readText(first);
    PlainSection const secondText = readText(second);
    SideBySide sides{};
    sides.length = std::max(firstText.length, secondText.length);
    sides.percent = percent;
    sides.cancelled = withPartner(firstText.words, secondText.words);
    Words firstLeft = withoutPartner(firstText.words, secondText.words);
    Words secondLeft = withoutPartner(secondText.words, firstText.words);
    exclude(firstLeft, exclusions, sides.excluded);
    exclude(secondLeft, exclusions, sides.excluded);
    judge(sides, firstLeft, secondLeft);
    return sides;
}

SearchExplanation::SearchExplanation(SearchArguments const& arguments)
    : text{{}, 0},
      lengthThreshold(static_cast<std::uint32_t>(arguments.lengthThreshold)),
      percentShort(static_cast<std::uint32_t>(arguments.percentShort)),
      percentLong(static_cast<std::uint32_t>(arguments.percentLong)) {
    std::vector<PlainSection> const texts = readSections(arguments.text, 0);
    if (texts.empty()) return;
    text = texts.front();
    entries = readSections(arguments.dictionary, arguments.separator);
    for (PlainSection const& section : readSections(arguments.exclusions, arguments.separator)) {
        exclusions.insert(exclusions.end(), section.words.begin(), section.words.end());
    }
}

SideBySide SearchExplanation::entry(std::size_t index) const {
    PlainSection const& candidate = entries[index];
    SideBySide sides{};
    sides.length = std::max(candidate.length, text.length);
    sides.percent = candidate.length > lengthThreshold ? percentLong : percentShort;
    Words first = text.words;
    Words second = candidate.words;
    exclude(first, exclusions, sides.excluded);
    exclude(second, exclusions, sides.excluded);
    sides.cancelled = withPartner(first, second);
    judge(sides, withoutPartner(first, second), withoutPartner(second, first));
    return sides;
}

std::vector<SideBySide> explainSearch(SearchArguments const& arguments) {
    SearchExplanation const explanation(arguments);
    std::vector<SideBySide> entries;
    for (std::size_t i = 0; i < explanation.size(); ++i)
        entries.push_back(explanation.entry(i));
    return entries;
}

}  // namespace stand_in_host
