#include "near_text/matching/entry_groups.h"

#include <algorithm>
#include <map>

namespace near_text {

EntryGroups::EntryGroups(EntryList const& list) : groups_(list.entries.size()) {
    distinct_.separator = list.separator;
    std::map<std::u16string_view, unsigned long> known;
    for (std::size_t i = 0; i < list.entries.size(); ++i) {
        std::u16string_view const units = list.units(i);
        auto const [place, isNew] = known.emplace(units, equals_.size());
        if (isNew) {
            equals_.emplace_back();
            distinct_.dictionary.append({u"\0", 1});
            distinct_.add(list.entries[i].place, units);
        }
        equals_[place->second].members.push_back(i);
        numbers_.push_back(place->second);
    }
}

bool EntryGroups::join(Matcher& matcher, Percentages percentages, unsigned long index) {
    Equal& equal = equals_[numbers_[index]];
    std::call_once(equal.isSearched, [&] {
        // An exception that left the call would end the process where it finds no memory.
        try {
            search(matcher, percentages, numbers_[index]);
        } catch (...) {
            equal.failure = std::current_exception();
        }
    });
    if (equal.failure) std::rethrow_exception(equal.failure);
    return equal.last > index || equal.isOneSided;
}

void EntryGroups::search(Matcher& matcher, Percentages percentages, unsigned long number) {
    Equal& equal = equals_[number];
    Indices found = matcher.search.find(distinct_.units(number), percentages);
    matcher.leaveOut(distinct_.units(number), found);
    for (unsigned long const other : found)
        equal.last = std::max(equal.last, equals_[other].members.back());
    // Otherwise even the last of them finds a later one.
    if (equal.last <= equal.members.back()) {
        equal.isOneSided = std::any_of(found.begin(), found.end(), [&](unsigned long other) {
            return other != number && !matcher.finds(percentages, other, number);
        });
    }
    std::lock_guard const lock(mutex_);
    for (unsigned long const other : found) {
        joinMembers(equals_[other]);
        joinMembers(equal);
        groups_.join(equal.members[0], equals_[other].members[0]);
    }
}

void EntryGroups::joinMembers(Equal& equal) {
    if (equal.isJoined) return;
    equal.isJoined = true;
    for (unsigned long const member : equal.members)
        groups_.join(equal.members[0], member);
}

}  // namespace near_text
