// What all texts of a run are searched with.
#pragma once

#include <cstddef>
#include <limits>
#include <optional>
#include <string>

#include "near_text/input/text_input.h"
#include "near_text/preparation/preparation.h"

namespace near_text {

// How alike an entry must be: one no longer than the threshold, and a longer one.
struct Percentages {
    int forShort;
    int forLong;
};

// Which of the matches are kept.
struct Wanted {
    static constexpr std::size_t kAll = std::numeric_limits<std::size_t>::max();

    std::size_t most = kAll;   // so many of the nearest
    bool isBestAlone = false;  // the nearest, and those as near

    bool isAll() const { return most == kAll && !isBestAlone; }
};

// As the add-in is asked, and what is left out of its answer.
struct SearchTerms {
    Percentages percentages;
    int threshold;
    std::u16string exclusions;
    bool isSameNumbers = false;  // without matches whose numbers contradict each other
};

// As the user says it.
struct SearchSettings {
    Percentages percentages;
    int threshold;
    std::u16string exclusions;
    std::optional<TextFile> exclusionsFile;  // more of them
    Preparer preparer;                       // of texts, entries and exclusions
    std::optional<TextFile> dropWordsFile;   // of what goes from texts and entries
    bool isSameNumbers;
};

// Of texts and entries. Reads the words that it drops. Throws std::runtime_error.
Preparer readPreparer(SearchSettings const& settings);

// Reads the exclusions. Throws std::runtime_error.
SearchTerms readTerms(SearchSettings const& settings);

}  // namespace near_text
