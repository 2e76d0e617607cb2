// Texts and entries that belong together, as somebody knows them, from a file.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "near_text/input/table.h"
#include "near_text/matching/entry_list.h"

namespace near_text {

class KnownPairs {
public:
    // A table whose first two columns name a text and an entry, by their lines or by the ids that
    // their rows keep first.
    struct Naming {
        bool hasTextIds;
        bool hasEntryIds;
        bool hasHeader;  // in any case; else a first row that names nothing may be one
        bool isWithin;   // both are of one list, in either order
    };

    // None.
    KnownPairs() = default;
    // A pair that is there twice counts once. Throws std::runtime_error, with the line, for an
    // entry that does not exist or is to be a pair with itself, an id that is empty, a first row
    // that names ids where lines are read, and a file without pairs.
    KnownPairs(TextFile const& file, Naming naming, EntryList const& list);

    // What a row of the texts is called.
    std::string nameOf(TextRow const& row) const;

    bool contains(std::string const& text, unsigned long entry) const;
    // Of one list.
    bool containsWithin(unsigned long one, unsigned long other) const;

    // A row of the texts has come.
    void see(TextRow const& row);
    // Throws std::runtime_error when a text that the file names has not come.
    void requireAllSeen() const;

    std::size_t size() const { return size_; }
    std::size_t texts() const { return texts_.size(); }

private:
    struct Text {
        std::size_t line;      // of the file
        Indices entries;       // ascending
        std::size_t seen = 0;  // rows of that name
    };

    void read(TableReader& table, EntryList const& list);
    void add(std::string const& text, std::size_t line, Indices const& entries);

    Naming naming_{};
    std::string file_;  // for messages
    std::map<std::string, Text> texts_;
    std::size_t size_ = 0;
};

}  // namespace near_text
