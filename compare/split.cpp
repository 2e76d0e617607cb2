// Cuts a text at a separator. No method of the host's needs it; it is exported beside them.
#include "host/near_text_comparer.h"

void NearTextComparer::split(unsigned short const* text, unsigned short separator,
                             std::vector<Utf16String>& parts) {
    unsigned short const* start = text;
    for (unsigned short const* at = text;; ++at) {
        if (*at != separator && *at != 0) continue;
        if (at != start) parts.emplace_back(start, at);
        if (*at == 0) return;
        start = at + 1;
    }
}
