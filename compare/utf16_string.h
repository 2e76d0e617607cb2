// The library's own text: 16-bit code units, taken as plain numbers. Nothing looks at surrogates.
#pragma once

#include <string>
#include <string_view>

using Utf16String = std::basic_string<unsigned short>;

// Text that somebody else owns and keeps alive: a pointer, which may be null when the length is 0,
// and a length in units. Signatures that are fixed take the two apart.
using Utf16View = std::basic_string_view<unsigned short>;
