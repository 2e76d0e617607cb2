// The fast path of the comparison of two texts: their words in one list, looked up by a hash, each
// with a balance.
#pragma once

#include <optional>
#include <span>

#include "compare/text_measures.h"
#include "compare/utf16_string.h"

namespace comparer {

// True when what is left of the two texts is within `limit` edits. Words of `exclusions` count on
// neither side. Nothing when there are more words than a list can take. Allocates for more than a
// few words, and where the distance of what is left does.
std::optional<bool> compareByWordList(TextMeasures const& first, TextMeasures const& second,
                                      unsigned long limit, std::span<Utf16String const> exclusions);

}  // namespace comparer
