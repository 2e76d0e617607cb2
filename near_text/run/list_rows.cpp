#include "near_text/run/list_rows.h"

#include <algorithm>

namespace near_text {

bool ListRows::next(TextRow& row) {
    if (handedOut_ == list_.entries.size()) return false;
    Entry entry = list_.entry(handedOut_++);
    row.number = entry.place;
    row.text = std::move(entry.text);
    row.id = std::move(entry.id);
    row.kept = std::move(entry.kept);
    row.share = static_cast<double>(handedOut_) / static_cast<double>(list_.entries.size());
    return true;
}

unsigned long ListRows::indexOf(TextRow const& row) const {
    auto const entry =
        std::lower_bound(list_.entries.begin(), list_.entries.end(), row.number,
                         [](EntryUnits const& e, std::size_t place) { return e.place < place; });
    return static_cast<unsigned long>(entry - list_.entries.begin());
}

}  // namespace near_text
