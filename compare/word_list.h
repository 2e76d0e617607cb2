// A list of distinct words, looked up by a hash. It copies no text, and can be cut back to what it
// held before.
//
// An open table with linear probing, at most half full. Words leave it only from the end of the
// list, the last one first; so no word ever stands behind a slot that was freed.
//
// Whoever chooses the words can choose them so that they all share their place in the table. Once
// long ways through it have cost about as much as reading all texts would, they are read, for a key
// (compare/hash_key.h), and the words are given other places by it.
#pragma once

#include <algorithm>
#include <bit>
#include <cassert>
#include <cstdint>
#include <cstring>
#include <span>

#include "compare/fixed_buffer.h"
#include "compare/hash_key.h"
#include "compare/utf16_string.h"

namespace comparer {

inline constexpr unsigned long kStride = sizeof(std::uint64_t) / sizeof(unsigned short);

inline std::uint64_t loadStride(unsigned short const* units) {
    std::uint64_t loaded;
    std::memcpy(&loaded, units, sizeof loaded);
    return loaded;
}

// Up to three units, as a number of their own for each length.
inline std::uint64_t loadFew(unsigned short const* units, unsigned long count) {
    return units[0] | std::uint64_t{units[count / 2]} << 16U |
           std::uint64_t{units[count - 1]} << 32U;
}

// Words of up to two strides, which most are, take the same way whatever their length: where a loop
// ends is hard to guess.
inline bool hasUnits(unsigned short const* units, Utf16View word) {
    unsigned long const length = word.size();
    unsigned short const* const other = word.data();
    if (length < kStride) return loadFew(units, length) == loadFew(other, length);
    for (unsigned long at = kStride; at + kStride < length; at += kStride) {
        if (loadStride(units + at) != loadStride(other + at)) return false;
    }
    unsigned long const last = length - kStride;
    return ((loadStride(units) ^ loadStride(other)) |
            (loadStride(units + last) ^ loadStride(other + last))) == 0;
}

// The halves of the product, folded.
inline std::uint64_t foldedProduct(std::uint64_t a, std::uint64_t b) {
    __extension__ using Product = unsigned __int128;
    Product const product = Product{a} * b;
    return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64U);
}

// Equal words have equal hashes; `word` is not empty. Every unit takes part, four at a time; the
// last four may overlap those before.
inline std::uint64_t hashOf(Utf16View word, HashKey const& key) {
    assert(!word.empty());
    unsigned short const* const units = word.data();
    unsigned long const length = word.size();
    if (length < kStride)
        return foldedProduct(loadFew(units, length) ^ key.first, length ^ key.second);
    std::uint64_t hash = key.first;
    for (unsigned long at = kStride; at + kStride < length; at += kStride)
        hash = foldedProduct(loadStride(units + at) ^ hash, key.second);
    return foldedProduct(loadStride(units) ^ hash,
                         loadStride(units + length - kStride) ^ length ^ key.second);
}

class WordList {
public:
    static constexpr std::uint32_t kNotFound = ~std::uint32_t{0};

    // So many need no memory of the heap.
    static constexpr unsigned long kFewWords = 32;

    // The most words that it can hold: every word has a slot and another one free.
    static constexpr unsigned long kMaxCapacity = 1UL << 30;

    // Allocates, unless the words are few. `capacity` is at most kMaxCapacity. `texts` are all that
    // words come from, or empty where nobody chooses them to collide; they outlive this.
    WordList(unsigned long capacity, std::span<Utf16View const> texts);

    std::uint32_t size() const { return size_; }

    // Makes room for so many words, unless there is: for twice as many as now at least, and for
    // kMaxCapacity at most.
    void reserve(unsigned long capacity);

    // The place of `word`, from 0, in the order in which words were added; the size before the call
    // when it is a new one. `word` is not empty, and its text outlives its stay in the list. Makes
    // room where there is none; beyond kMaxCapacity it throws std::bad_alloc.
    std::uint32_t findOrAdd(Utf16View word);

    // Adds a word that nobody looks up before it is cut off again, behind all others. Makes room
    // where there is none.
    void append(Utf16View word);

    // The place, or kNotFound.
    std::uint32_t find(Utf16View word);

    // All words, in the order in which they were added.
    std::span<Utf16View const> words() const { return {words_.data(), size_}; }

    // Of a word, in the list or not. It is another one from when the list takes a key of its own.
    std::uint64_t hash(Utf16View word) const { return hashOf(word, key_); }

    // False until words have collided more than by chance.
    bool hasOwnKey() const { return hasOwnKey_; }

    // Takes out the words from `size` on.
    void cutBackTo(std::uint32_t size);

private:
    struct Slot {
        std::uint32_t mark;   // a hash of the word
        std::uint32_t place;  // in the list, from 1; 0 is a free slot
    };
    struct Found {
        std::uint32_t place;  // as in the slot
        std::uint32_t mark;
        std::uint32_t slot;  // the word's or, free, the one that it would take
    };
    // A longer way through the table is long: few words have one that are not made to collide.
    static constexpr unsigned kLongWay = 32;

    // A slot behind the table, which is written and never read: what is in it takes no slot.
    std::uint32_t slotOfAppended() const { return slotMask_ + 1; }
    static std::uint32_t maskFor(unsigned long capacity) {
        return static_cast<std::uint32_t>(std::bit_ceil(2 * std::max(capacity, 1UL)) - 1);
    }

    void grow();
    // Gives each word a place in the table anew. `formerlyAppended` is the slot of those that have
    // none.
    void placeAll(std::uint32_t formerlyAppended);
    Found probe(Utf16View word);
    Found probeLongWay(Utf16View word, std::uint32_t mark);
    bool isKeyWorthIt() const;

    std::uint32_t capacity_;
    std::uint32_t size_ = 0;
    std::uint32_t slotMask_;  // the number of slots, a power of two, less 1
    FixedBuffer<Utf16View, kFewWords> words_;
    FixedBuffer<std::uint32_t, kFewWords> slotOf_;  // by place in the list
    FixedBuffer<Slot, 2 * kFewWords + 1> slots_;
    std::span<Utf16View const> texts_;
    HashKey key_;
    bool hasOwnKey_ = false;
    unsigned long longWays_ = 0;  // as many steps as all of them took
};

// Here, since they run for every word of every entry.

inline WordList::WordList(unsigned long capacity, std::span<Utf16View const> texts)
    : capacity_(static_cast<std::uint32_t>(capacity)),
      slotMask_(maskFor(capacity)),
      words_(capacity),
      slotOf_(capacity),
      slots_(slotMask_ + 2UL),
      texts_(texts) {
    assert(capacity <= kMaxCapacity);
    std::fill_n(slots_.data(), slotMask_ + 1UL, Slot{0, 0});
}

inline WordList::Found WordList::probe(Utf16View word) {
    auto const mark = static_cast<std::uint32_t>(hashOf(word, key_));
    std::uint32_t slot = mark & slotMask_;
    for (unsigned probes = 0; probes < kLongWay; ++probes) {
        Slot const at = slots_[slot];
        if (at.place == 0) return {0, mark, slot};
        if (at.mark == mark) {
            Utf16View const held = words_[at.place - 1];
            if (held.size() == word.size() && hasUnits(held.data(), word))
                return {at.place, mark, slot};
            break;
        }
        slot = (slot + 1) & slotMask_;
    }
    return probeLongWay(word, mark);
}

inline std::uint32_t WordList::findOrAdd(Utf16View word) {
    if (size_ == capacity_) grow();
    Found const found = probe(word);
    if (found.place != 0) return found.place - 1;
    std::uint32_t const place = size_++;
    words_[place] = word;
    slotOf_[place] = found.slot;
    slots_[found.slot] = {found.mark, place + 1};
    return place;
}

inline void WordList::append(Utf16View word) {
    if (size_ == capacity_) grow();
    words_[size_] = word;
    slotOf_[size_++] = slotOfAppended();
}

inline void WordList::cutBackTo(std::uint32_t size) {
    assert(size <= size_);
    while (size_ > size)
        slots_[slotOf_[--size_]].place = 0;
}

}  // namespace comparer
