// The words of a text that count in a search: each once, however often the text has it, and no
// excluded one.
#pragma once

#include <string_view>
#include <vector>

#include "reference/explanation.h"

namespace near_text {

// Puts the words between whitespace into `words` instead of what is there, in no order of meaning.
// They are views into `text`.
void distinctWords(std::u16string_view text, reference::ExcludedWords const& excluded,
                   std::vector<std::u16string_view>& words);

}  // namespace near_text
