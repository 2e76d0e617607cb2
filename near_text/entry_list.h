// The entries to search in, and the way back from an index of the add-in to the entry.
//
// The add-in numbers only the entries that hold a word. A blank entry therefore shifts the index
// against the place that a person would count.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "near_text/input.h"

namespace near_text {

struct Entry {
    std::size_t place;  // from 1, blank entries counted: the line number in a file of lines
    std::string text;
};

struct EntryList {
    std::u16string dictionary;  // as the add-in gets it
    char16_t separator;
    std::vector<Entry> entries;  // by the add-in's index
    std::size_t places;          // blank entries counted
};

// One entry a line, joined by a unit that occurs neither in them nor in `exclusions`. Throws
// std::runtime_error, with file and line where a line is no text.
EntryList entriesFromLines(TextFile const& file, std::u16string_view exclusions);

// A list as it stands in a file, read as a whole. Throws as entriesFromLines.
EntryList entriesFromFile(TextFile const& file, char16_t separator);

// A list as it stands. A NUL separates whatever the separator is, whitespace never does.
EntryList entriesFromList(std::u16string dictionary, char16_t separator);

// The lines of a file, each ended by a line feed. Throws as entriesFromLines.
std::u16string readLines(TextFile const& file);

}  // namespace near_text
