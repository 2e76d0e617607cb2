// The entries to search in, and the way back from an index of the add-in to the entry.
//
// The add-in numbers only the entries that hold a word. A blank entry therefore shifts the index
// against the place that a person would count.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "near_text/input/text_row.h"
#include "near_text/matching/growing_text.h"
#include "near_text/preparation/preparation.h"

namespace near_text {

// What people see of one.
struct Entry {
    std::size_t place = 0;          // from 1, blank entries counted: the line number in a file
    std::string text;               // as it came, in UTF-8
    std::vector<std::string> kept;  // cells of the columns that are kept
    std::string id;                 // the cell of the column of ids, where there is one
};

// What the add-in sees, in the dictionary.
struct EntryUnits {
    std::size_t place;  // as above
    std::uint32_t begin;
    std::uint32_t length;
};

// By the add-in's index in the whole list, ascending.
using Indices = std::vector<unsigned long>;

// Lists are long, so nothing is held twice: a text that is the same as its units is made of them.
struct EntryList {
    GrowingText<char16_t> dictionary;  // as the add-in gets it
    char16_t separator;
    std::vector<EntryUnits> entries;  // by the add-in's index
    std::size_t places = 0;           // the last one, blank entries counted

    // Throws std::out_of_range.
    Entry entry(std::size_t index) const;

    // Joins an entry to the list, with no separator.
    void add(std::size_t place, std::u16string_view units);

    std::u16string_view units(std::size_t index) const {
        return std::u16string_view(dictionary).substr(entries[index].begin, entries[index].length);
    }
    // Such an entry is a unit longer than the same at the start of the list.
    bool isBehindSeparator(std::size_t index) const { return entries[index].begin > 0; }

    // Of each entry as many: the text, where that differs from the units, its id, and what is kept.
    bool hasTexts = false;
    bool hasIds = false;
    std::size_t cellsOfEntry = 0;
    GrowingText<char> cells;
    std::vector<std::size_t> cellEnds;
};

// Makes a list of entries that come one at a time; the preparer is the caller's. A list that is
// taken as it stands is joined by what joined it; else NULs do, which no line holds.
class EntryListBuilder {
public:
    EntryListBuilder(Preparer const& entryPreparer, char16_t separator) : preparer_(entryPreparer) {
        list_.separator = separator;
        list_.hasTexts = !entryPreparer.isIdle();
    }

    // A separator ahead of the first entry makes that as long as it would be elsewhere.
    void beginWithSeparator() { list_.dictionary.append({u"\0", 1}); }

    // Before the first entry: all are cut as texts are that are too long for the add-in, or known
    // by ids.
    void cutEntries() { isCutting_ = list_.hasTexts = true; }
    void keepIds() { list_.hasIds = true; }

    // `text` is what people read and `units` the same before it is prepared. `joint` goes ahead of
    // it where it is not the first; its places ascend, and as many cells are kept of each. Throws
    // std::runtime_error where the list is longer than the add-in takes.
    void add(std::size_t place, std::u16string_view units, std::string_view text,
             std::vector<std::string> const& kept = {}, char16_t joint = u'\0',
             std::string_view id = {});

    // Throws std::runtime_error, which names `source`, when no entry holds a word.
    EntryList take(std::string const& source);

private:
    void addCells(std::string_view text, std::string_view id, std::vector<std::string> const& kept);

    Preparer const& preparer_;
    bool isCutting_ = false;
    EntryList list_;
};

// A list as it stands in a file.
struct WholeList {
    TextFile file;
    char16_t separator;
};

// Reads it as a whole and cuts it at the separator. A NUL separates whatever the separator is,
// whitespace never does. Throws std::runtime_error, with file and line where there is no text.
EntryList readWholeList(WholeList const& whole, Preparer const& preparer);

// The lines of a file, each ended by a line feed. Throws std::runtime_error.
std::u16string readLines(TextFile const& file);

}  // namespace near_text
