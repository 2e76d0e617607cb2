// The entries of a file, with what is carried over from beside them.
#pragma once

#include <string>
#include <vector>

#include "near_text/input/source.h"
#include "near_text/matching/entry_list.h"

namespace near_text {

struct EntryFile {
    EntryList list;
    std::vector<std::string> keptNames;
};

// Both throw std::runtime_error, with file and line if a line is not valid text, and if no entry
// has a word.
EntryFile readEntries(Source const& source, Preparer const& preparer);

// Of a list whose entries are searched for in the list itself: the first is as long as it would be
// elsewhere, and where texts are cut, so are entries.
EntryFile readOneList(Source const& source, Preparer const& preparer, bool isTruncating);

}  // namespace near_text
