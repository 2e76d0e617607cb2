// Files that people take for text, and that are none.
#pragma once

#include <string>
#include <string_view>

namespace near_text {

// What a file is that begins so, and what to do about it; empty where it may be text.
std::string notTextHint(std::string_view start);

}  // namespace near_text
