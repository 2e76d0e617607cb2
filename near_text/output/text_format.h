// The format for eyes.
#pragma once

#include <string>

#include "near_text/matching/entry_list.h"
#include "near_text/matching/match.h"

namespace near_text {

// A match on one line, with the marks of its entry where it has a difference.
std::string shownMatch(Match const& match, Entry const& entry);

}  // namespace near_text
