// Whether ids tell the rows of a file apart.
#pragma once

#include <string>
#include <unordered_set>

#include "near_text/messages/messages.h"

namespace near_text {

class IdCheck {
public:
    // `place` is "FILE:LINE: ".
    void see(std::string const& id, std::string const& place) {
        if (!id.empty() && seen_.insert(id).second) return;
        if (count_++ == 0) first_ = place;
    }

    void noteThoseAlike() const {
        if (count_ == 0) return;
        complain("note: " + first_ + "the id is empty or was there before (" +
                 std::to_string(count_) + " in all); decisions on such rows cannot be told apart");
    }

private:
    std::unordered_set<std::string> seen_;
    std::string first_;
    std::size_t count_ = 0;
};

}  // namespace near_text
