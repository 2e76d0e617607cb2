// The two widths of text. The library's own constants are wchar_t, 32 bits wide; the host's text is
// 16-bit units. Narrowing keeps the low 16 bits of each character, widening extends with zeros, and
// neither makes or reads surrogate pairs.
#pragma once

#include <cstddef>
#include <memory>

namespace comparer {

// Characters of `text` up to its terminator; as many units when it is narrowed.
std::size_t wideLength(wchar_t const* text);

// Writes `length` characters of `text` to `out`, which has room for as many units.
void narrowInto(unsigned short* out, wchar_t const* text, std::size_t length);

// Writes `text` and its terminator to `out`, which has room for wideLength(text) + 1 units.
void narrowWithTerminator(unsigned short* out, wchar_t const* text);

// `text` with its terminator, in an array of its own.
std::unique_ptr<unsigned short[]> narrow(wchar_t const* text);

// The text with its terminator, in an array of its own; null gives the empty text.
std::unique_ptr<wchar_t[]> widen(unsigned short const* text);

}  // namespace comparer
