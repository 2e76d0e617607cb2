#include "host/text_width.h"

#include <algorithm>
#include <cwchar>

namespace comparer {

std::size_t wideLength(wchar_t const* text) {
    return std::wcslen(text);
}

void narrowInto(unsigned short* out, wchar_t const* text, std::size_t length) {
    std::transform(text, text + length, out,
                   [](wchar_t character) { return static_cast<unsigned short>(character); });
}

void narrowWithTerminator(unsigned short* out, wchar_t const* text) {
    narrowInto(out, text, wideLength(text) + 1);
}

std::unique_ptr<unsigned short[]> narrow(wchar_t const* text) {
    auto units = std::make_unique<unsigned short[]>(wideLength(text) + 1);
    narrowWithTerminator(units.get(), text);
    return units;
}

std::unique_ptr<wchar_t[]> widen(unsigned short const* text) {
    std::size_t length = 0;
    if (text != nullptr) {
        while (text[length] != 0)
            ++length;
    }
    auto characters = std::make_unique<wchar_t[]>(length + 1);  // zeros, the terminator among them
    std::copy_n(text, length, characters.get());
    return characters;
}

}  // namespace comparer
