// The entries of a list as the texts of a run.
#pragma once

#include "near_text/input/text_row.h"
#include "near_text/matching/entry_list.h"

namespace near_text {

class ListRows {
public:
    // The list is the caller's.
    explicit ListRows(EntryList const& list) : list_(list) {}

    // False at the end.
    bool next(TextRow& row);

    // Of the entry that a row is. From any number of threads.
    unsigned long indexOf(TextRow const& row) const;

private:
    EntryList const& list_;
    std::size_t handedOut_ = 0;
};

}  // namespace near_text
