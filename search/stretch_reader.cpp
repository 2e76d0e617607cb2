#include "search/stretch_reader.h"

#include <bit>
#include <cstddef>

#include "compare/white_space.h"

StretchReader::StretchReader(PStringRef<unsigned short> const& input, unsigned short sectionEnd)
    : position(input.text()),
      end(input.text() + input.length()),
      separator(isWhiteSpaceUnit(sectionEnd) ? 0 : sectionEnd) {}

bool StretchReader::next(Stretch& stretch) {
    if (isDone) return false;
    unsigned short const* const start = position;
    unsigned long const whiteSpace = passToSectionEnd();
    auto const units = static_cast<unsigned long>(position - start);
    stretch = {start, units, units - whiteSpace, units + opening};
    opening = 1;
    isDone = position == end;
    if (!isDone) ++position;
    return true;
}

unsigned long StretchReader::passToSectionEnd() {
    unsigned long whiteSpace = 0;
#if defined(__SSE2__)
    constexpr std::ptrdiff_t kLanes = 8;
    __m128i const ends = _mm_set1_epi16(static_cast<short>(separator));
    __m128i const ones = _mm_set1_epi16(1);
    __m128i const places = _mm_setr_epi16(0, 1, 2, 3, 4, 5, 6, 7);
    __m128i sums = _mm_setzero_si128();  // two numbers of 64 bits, which no text makes overflow
    auto const count = [&](__m128i whiteLanes) {
        __m128i const bytes = _mm_and_si128(whiteLanes, ones);
        sums = _mm_add_epi64(sums, _mm_sad_epu8(bytes, _mm_setzero_si128()));
    };
    bool isAtEnd = false;
    while (!isAtEnd && end - position >= kLanes) {
        __m128i const units = _mm_loadu_si128(reinterpret_cast<__m128i const*>(position));
        __m128i const endLanes =
            _mm_or_si128(_mm_cmpeq_epi16(units, ends), _mm_cmpeq_epi16(units, _mm_setzero_si128()));
        auto const endBits = static_cast<unsigned>(_mm_movemask_epi8(endLanes));
        if (endBits == 0) {
            count(whiteSpaceLanes(units));
            position += kLanes;
        } else {
            int const place = std::countr_zero(endBits) / 2;
            __m128i const before =
                _mm_cmplt_epi16(places, _mm_set1_epi16(static_cast<short>(place)));
            count(_mm_and_si128(whiteSpaceLanes(units), before));
            position += place;
            isAtEnd = true;
        }
    }
    whiteSpace = static_cast<unsigned long>(_mm_cvtsi128_si64(sums)) +
                 static_cast<unsigned long>(_mm_cvtsi128_si64(_mm_unpackhi_epi64(sums, sums)));
    if (isAtEnd) return whiteSpace;
#endif
    for (; position != end && *position != separator && *position != 0; ++position) {
        if (isWhiteSpaceUnit(*position)) ++whiteSpace;
    }
    return whiteSpace;
}
