// Myers 1999 in the form of Hyyrö 2003. Down a column of the matrix neighbouring cells differ by
// -1, 0 or 1, so a column is two bits a row: `rises` (the cell is one more than the one above it)
// and `falls` (one less). A machine word holds 64 rows, and a dozen operations turn the column of
// one unit of the text into the next one's. Between words a column passes on the difference along
// its last row.
//
//   first  =  beginning | pattern | end        the common beginning and end cost nothing
//   second =  beginning |   text    | end      the shorter one becomes the pattern
//
//   rows of the pattern:   0..255    strip 0 ──┐ carries along the last row,
//                        256..511    strip 1 <─┘ one byte for each unit of the text
//                        ...
//
// A strip is at most four words, so that all of its column stays in registers. The distance is the
// last cell of a row and all steps down the last column below it.
#include "compare/bit_parallel_distance.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <utility>
#include <vector>

namespace {

constexpr unsigned long kRowsPerWord = 64;

struct Run {
    unsigned short const* units;
    unsigned long length;
};

// For each unit of a strip of the pattern, the rows in which it stands. A small open table: any of
// the 65,536 units finds its place in a step or two, and a call clears some hundred bytes. At most
// half of the slots are ever taken.
template <unsigned kWords, unsigned kSlots>
class RowMasks {
public:
    using Masks = std::array<std::uint64_t, kWords>;

    explicit RowMasks(Run strip) {
        keys.fill(kFree);
        for (unsigned long row = 0; row < strip.length; ++row) {
            unsigned const slot = find(strip.units[row]);
            if (keys[slot] == kFree) {
                keys[slot] = strip.units[row];
                masks[slot] = Masks{};
            }
            masks[slot][row / kRowsPerWord] |= std::uint64_t{1} << (row % kRowsPerWord);
        }
    }

    Masks const& of(unsigned short unit) const {
        unsigned const slot = find(unit);
        return keys[slot] == kFree ? kNowhere : masks[slot];
    }

private:
    static constexpr std::uint32_t kFree = 0x10000;  // no unit
    static constexpr unsigned kSpread = 37;          // parts units with the same low bits
    static constexpr Masks kNowhere{};

    unsigned find(unsigned short unit) const {
        unsigned slot = (unit + kSpread * (unsigned{unit} >> 8U)) % kSlots;
        while (keys[slot] != unit && keys[slot] != kFree)
            slot = (slot + 1) % kSlots;
        return slot;
    }

    std::array<std::uint32_t, kSlots> keys;
    std::array<Masks, kSlots> masks;  // written where a key is
};

// The difference along a row from one unit of the text to the next, at the edge of a word.
struct Carry {
    std::uint64_t rises;  // 0 or 1
    std::uint64_t falls;
};

// One word of a column.
struct Column {
    std::uint64_t rises = ~std::uint64_t{0};
    std::uint64_t falls = 0;

    // Moves on by one unit, which stands in the rows of `same`. `above` is the difference along the
    // row above this word, and the result is that along its last row.
    Carry step(std::uint64_t same, Carry above) {
        std::uint64_t const seed = same | above.falls;
        std::uint64_t const diagonal = (((seed & rises) + rises) ^ rises) | seed | falls;
        std::uint64_t const alongRises = falls | ~(diagonal | rises);
        std::uint64_t const alongFalls = diagonal & rises;
        Carry const below{alongRises >> (kRowsPerWord - 1), alongFalls >> (kRowsPerWord - 1)};
        std::uint64_t const shiftedRises = (alongRises << 1) | above.rises;
        std::uint64_t const shiftedFalls = (alongFalls << 1) | above.falls;
        rises = shiftedFalls | ~(diagonal | shiftedRises);
        falls = diagonal & shiftedRises;
        return below;
    }

    // The sum of the steps down the first `rows` rows.
    long sum(unsigned long rows) const {
        std::uint64_t const mask =
            rows >= kRowsPerWord ? ~std::uint64_t{0} : (std::uint64_t{1} << rows) - 1;
        return std::popcount(rises & mask) - std::popcount(falls & mask);
    }
};

constexpr Carry kTopRow{1, 0};  // the top row goes up with every unit of the text

// Takes a strip through a text and returns the sum of the steps down its last column. For each unit
// of the text `carryAt(index, step)` is called, which gives `step` the difference above the strip
// and gets from it that along the strip's last row.
template <unsigned kWords, unsigned kSlots, class CarryAt>
long sumDownStrip(Run strip, Run text, CarryAt&& carryAt) {
    RowMasks<kWords, kSlots> const rowsOf(strip);
    std::array<Column, kWords> columns;
    for (unsigned long j = 0; j < text.length; ++j) {
        auto const& same = rowsOf.of(text.units[j]);
        carryAt(j, [&](Carry carry) {
            for (unsigned word = 0; word < kWords; ++word) {
                carry = columns[word].step(same[word], carry);
            }
            return carry;
        });
    }
    long sum = 0;
    for (unsigned long word = 0; word < kWords && strip.length > word * kRowsPerWord; ++word) {
        sum += columns[word].sum(strip.length - word * kRowsPerWord);
    }
    return sum;
}

template <unsigned kWords, unsigned kSlots>
unsigned long distanceInOneStrip(Run pattern, Run text) {
    auto const fromTop = [](unsigned long, auto&& step) { step(kTopRow); };
    long const sum = sumDownStrip<kWords, kSlots>(pattern, text, fromTop);
    return text.length + static_cast<unsigned long>(sum);
}

constexpr unsigned kStripWords = 4;
constexpr unsigned long kStripRows = kStripWords * kRowsPerWord;

// The differences along the row between two strips, one byte for each unit of the text: bit 0
// rises, bit 1 falls. Where no strip has written, the row goes up, as the top row does.
class Edge {
public:
    explicit Edge(unsigned long length) : bytes(length, kTopRow.rises) {}

    Carry at(unsigned long j) const {
        unsigned const byte = bytes[j];
        return {byte & 1U, byte >> 1U};
    }
    void set(unsigned long j, Carry carry) {
        bytes[j] = static_cast<unsigned char>(carry.rises | carry.falls << 1U);
    }

    // Walks from `from` to below `to` and tells `use` the value after each unit; returns the last.
    template <class Use>
    long walk(long value, unsigned long from, unsigned long to, Use&& use) const {
        for (unsigned long j = from; j < to; ++j) {
            value += (bytes[j] & 1) - (bytes[j] >> 1);
            use(value);
        }
        return value;
    }
    long walk(long value, unsigned long from, unsigned long to) const {
        return walk(value, from, to, [](long) {});
    }

private:
    std::vector<unsigned char> bytes;
};

// The distance, if it is at most `reach`; else a number above it. `reach` is at least the
// difference of the lengths. Cells further than `reach` off the diagonal take no part in a distance
// as small as that, so each strip goes only through the units of the text that lie within it, and
// what it would have to know of the cells outside is taken to be as high as it can be.
unsigned long distanceWithin(unsigned long reach, Run pattern, Run text) {
    Edge edge(text.length);
    unsigned long begin = 0;
    long corner = 0;  // the cell above the strip's first row, before its first unit
    for (unsigned long row = 0;; row += kStripRows) {
        unsigned long const rows = std::min(pattern.length - row, kStripRows);
        unsigned long const end = std::min(text.length, row + rows + reach);
        bool const isLast = row + rows == pattern.length;
        long const lastCellAbove = isLast ? edge.walk(corner, begin, end) : 0;
        long const sum = sumDownStrip<kStripWords, 2 * kStripRows>(
            {pattern.units + row, rows}, {text.units + begin, end - begin},
            [&edge, begin](unsigned long j, auto&& step) {
                edge.set(begin + j, step(edge.at(begin + j)));
            });
        if (isLast) return static_cast<unsigned long>(lastCellAbove + sum);

        corner += static_cast<long>(rows);
        if (reach < text.length) {
            long least = corner;
            edge.walk(corner, begin, end, [&least](long cell) { least = std::min(least, cell); });
            if (least > static_cast<long>(reach)) return reach + 1;  // no later row holds less
        }
        unsigned long const next = row + rows > reach ? row + rows - reach : 0;
        corner = edge.walk(corner, begin, next);
        begin = next;
    }
}

// Long texts that are near are done when a narrow band was. Texts that are unlike at their
// beginning are not tried that way.
unsigned long distanceInStrips(Run pattern, Run text) {
    constexpr unsigned long kSample = kRowsPerWord;
    unsigned long const narrow = text.length / 8;
    if (pattern.length > 2 * kStripRows && text.length - pattern.length <= narrow &&
        distanceInOneStrip<1, 128>({pattern.units, kSample}, {text.units, kSample}) < kSample / 2) {
        unsigned long const distance = distanceWithin(narrow, pattern, text);
        if (distance <= narrow) return distance;
    }
    return distanceWithin(text.length, pattern, text);
}

void stripCommonEnds(Run& a, Run& b) {
    while (a.length > 0 && b.length > 0 && *a.units == *b.units) {
        ++a.units, --a.length;
        ++b.units, --b.length;
    }
    while (a.length > 0 && b.length > 0 && a.units[a.length - 1] == b.units[b.length - 1]) {
        --a.length;
        --b.length;
    }
}

}  // namespace

unsigned long bitParallelDistance(unsigned short const* first, unsigned long firstLength,
                                  unsigned short const* second, unsigned long secondLength) {
    Run pattern{first, firstLength};
    Run text{second, secondLength};
    stripCommonEnds(pattern, text);
    if (text.length < pattern.length) std::swap(pattern, text);
    if (pattern.length == 0) return text.length;
    if (pattern.length <= 16) return distanceInOneStrip<1, 32>(pattern, text);
    if (pattern.length <= 64) return distanceInOneStrip<1, 128>(pattern, text);
    if (pattern.length <= 128) return distanceInOneStrip<2, 256>(pattern, text);
    if (pattern.length <= kStripRows) return distanceInOneStrip<4, 512>(pattern, text);
    return distanceInStrips(pattern, text);
}
