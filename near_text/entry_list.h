// The entries to search in, and the way back from an index of the add-in to the entry.
//
// The add-in numbers only the entries that hold a word. A blank entry therefore shifts the index
// against the place that a person would count.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace near_text {

struct Entry {
    std::size_t place;  // from 1, blank entries counted: the line number in a file of lines
    std::string text;   // as people read it
    std::size_t begin;  // of what the add-in compares, in the dictionary
    std::size_t length;
};

// By the add-in's index in the whole list, ascending.
using Indices = std::vector<unsigned long>;

struct EntryList {
    std::u16string dictionary;  // as the add-in gets it
    char16_t separator;
    std::vector<Entry> entries;  // by the add-in's index
    std::size_t places;          // blank entries counted

    std::u16string_view units(std::size_t index) const {
        return std::u16string_view(dictionary).substr(entries[index].begin, entries[index].length);
    }
    // Such an entry is a unit longer than the same at the start of the list.
    bool isBehindSeparator(std::size_t index) const { return entries[index].begin > 0; }
};

// One entry a line, joined by NULs, which no line holds. Throws std::runtime_error, with file and
// line where a line is no text.
EntryList entriesFromLines(std::string const& file);

// A list as it stands in a file, read as a whole. Throws as entriesFromLines.
EntryList entriesFromFile(std::string const& file, char16_t separator);

// A list as it stands. A NUL separates whatever the separator is, whitespace never does.
EntryList entriesFromList(std::u16string dictionary, char16_t separator);

// The lines of a file, each ended by a line feed. Throws as entriesFromLines.
std::u16string readLines(std::string const& file);

}  // namespace near_text
