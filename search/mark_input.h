// The tokenizer of the search: cuts a text into sections at a separator, and each section into
// words at whitespace.
#pragma once

#include <list>
#include <vector>

#include "search/pstring_ref.h"

// The sections that hold a word, in the order of the text; a stretch without one makes no section,
// so a place in the result counts entries with words alone.
//
// The length of a section's reference is a counter, not a stretch that may be read: all units of
// the section, whitespace included, and one more for the unit that ended the section before it. Its
// text is the section's first word. Words take ordinals from 0 in their section, repeats counted
// though the set drops them; that leaves gaps, but never gives two words of a set one ordinal.
//
// The text of `input` is the caller's, not written, and kept alive as long as the result is used.
std::vector<PStringRefSection> markInput(PStringRef<unsigned short> const& input,
                                         unsigned short separator);

// The entries of `list`, in its order, sharing its records.
template <class Section>
std::vector<Section> list2vector(std::list<Section> const& list) {
    return {list.begin(), list.end()};
}
