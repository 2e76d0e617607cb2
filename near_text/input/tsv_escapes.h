// What a field between tabs cannot hold as it is, and the letter that stands for it behind a
// backslash.
#pragma once

#include <string_view>

namespace near_text {

constexpr std::string_view kEscaped = "\\\t\n\r";
constexpr std::string_view kEscapeLetters = "\\tnr";

}  // namespace near_text
