#include "near_text/matching/longest_text.h"

#include "near_text/text/code_points.h"
#include "reference/whitespace.h"

namespace near_text {

bool truncate(std::u16string& text) {
    if (text.size() <= kMostUnits) return false;
    std::size_t end = kMostUnits;
    while (end > 0 && !reference::isWhitespace(text[end]))
        --end;
    if (!reference::holdsWord(std::u16string_view(text).substr(0, end)))
        end = U16_IS_TRAIL(text[kMostUnits]) ? kMostUnits - 1 : kMostUnits;
    text.resize(end);
    return true;
}

}  // namespace near_text
