// The library's own string: 16-bit code units, taken as plain numbers. Nothing looks at surrogates.
#pragma once

#include <string>

using Utf16String = std::basic_string<unsigned short>;
