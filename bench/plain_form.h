// Both methods in their plain form: each step done for every entry, in order, with nothing judged
// early and nothing shared. What the add-in does faster is measured against it, with the same
// answers.
#pragma once

#include <sstream>
#include <vector>

#include "compare/utf16_string.h"
#include "host/component_base.h"

namespace plain {

// Reads and writes the records of one call as the add-in does. The input must be without fault, and
// the memory manager must give what it is asked for.
class Comparer {
public:
    explicit Comparer(HostMemoryManager& manager) : memManager(manager) {}

    void compareString(_tVariant const* params, _tVariant* ret);
    void searchString(_tVariant const* params, _tVariant* ret);

private:
    void createReturnString(_tVariant* ret, std::vector<unsigned long> const& indices);

    HostMemoryManager& memManager;
    std::basic_stringstream<wchar_t> numberStream;
};

// The edit distance in a single row, all costs 1.
unsigned long distance(Utf16String const& first, Utf16String const& second);

}  // namespace plain
