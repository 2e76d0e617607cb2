// What somebody has said of texts and entries, in files: that they belong together, or do not.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "near_text/input/table.h"
#include "near_text/matching/entry_list.h"

namespace near_text {

class KnownPairs {
public:
    // A table whose first two columns name a text and an entry, by their lines or by their ids. In
    // a column with the word "decision" in its heading stands "accepted", or "rejected" where they
    // do not belong together, or nothing where nobody knows; without that column all are accepted.
    // Where decisions are wanted, only a table of two columns without a heading may lack it.
    struct Naming {
        bool hasTextIds;
        bool hasEntryIds;
        bool hasHeader;  // in any case; else a first row that names nothing may be one
        bool isWithin;   // both are of one list, in either order
        bool hasDecisions = false;
    };

    // None.
    KnownPairs() = default;
    // What the last row of the last file says about a pair is what counts. Throws
    // std::runtime_error, with the line, for an entry that does not exist or is to be a pair with
    // itself, an id that is empty, a first row that names ids where lines are read, the
    // reverse, or entries ahead of texts, another decision or a rejection outside of that column,
    // and a file without pairs.
    KnownPairs(std::vector<TextFile> const& files, Naming naming, EntryList const& list);

    // What a row of the texts is called.
    std::string nameOf(TextRow const& row) const;

    bool isAccepted(std::string const& text, unsigned long entry) const;
    bool isRejected(std::string const& text, unsigned long entry) const;
    // Of one list.
    bool isAcceptedWithin(unsigned long one, unsigned long other) const;
    // Whether an entry is rejected for this row; empty where none is. Refers to this object.
    std::function<bool(unsigned long entry)> rejectedOf(TextRow const& row) const;

    // A row of the texts has come.
    void see(TextRow const& row);
    // Throws std::runtime_error when a text that the files name has not come.
    void requireAllSeen() const;

    // Those that are accepted, and the texts that have one.
    std::size_t size() const { return size_; }
    std::size_t texts() const { return textsInPairs_; }

private:
    struct Text {
        std::size_t row;                          // the first that names it, of all files
        std::string place;                        // of that
        std::map<unsigned long, bool> decisions;  // by the entry's index: whether it is accepted
        std::size_t seen = 0;                     // rows of that name
    };
    class Reading;

    bool isDecided(std::string const& text, unsigned long entry, bool isAccepted) const;

    Naming naming_{};
    std::map<std::string, Text> texts_;
    std::size_t size_ = 0;
    std::size_t textsInPairs_ = 0;
};

}  // namespace near_text
