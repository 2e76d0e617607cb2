// Groups of the entries of a list that find each other. Equal entries find the same, and each
// other: so each text is searched for once, and in a list that holds it once, however often it
// stands there.
#pragma once

#include <deque>
#include <exception>
#include <mutex>
#include <vector>

#include "near_text/matching/groups.h"
#include "near_text/matching/matches.h"

namespace near_text {

class EntryGroups {
public:
    // Each entry of the list, which is the caller's, is behind a separator.
    explicit EntryGroups(EntryList const& list);

    // What the matchers below search in.
    EntryList const& distinct() const { return distinct_; }

    // Joins the entry at `index` to all that it finds. Whether it finds a later one, or an earlier
    // one that does not find it. From any number of threads, each with a matcher. Throws Refused.
    bool join(Matcher& matcher, Percentages percentages, unsigned long index);

    // Once all have been joined.
    std::vector<std::vector<std::size_t>> joined() { return groups_.joined(); }

private:
    struct Equal {
        std::vector<unsigned long> members;  // ascending
        std::once_flag isSearched;
        std::exception_ptr failure;  // of that search
        unsigned long last = 0;      // entry that one of them finds
        bool isOneSided = false;     // one finds an earlier entry that does not find it
        bool isJoined = false;       // guarded by mutex_
    };

    void search(Matcher& matcher, Percentages percentages, unsigned long number);
    void joinMembers(Equal& equal);

    EntryList distinct_;
    std::deque<Equal> equals_;            // of the entries of `distinct_`
    std::vector<unsigned long> numbers_;  // of each entry, in `equals_`
    std::mutex mutex_;
    Groups groups_;  // guarded by mutex_
};

}  // namespace near_text
