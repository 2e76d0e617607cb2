// A list of distinct words, looked up by a hash. It copies no text, and can be cut back to what it
// held before.
//
// An open table with linear probing, at most half full. Words leave it only from the end of the
// list, the last one first; so no word ever stands behind a slot that was freed.
//
// Whoever chooses the words can choose them so that they all share their place in the table. A word
// whose hash another one has, or that finds no slot near its place, therefore lies in a search
// tree, and costs itself a few comparisons more and others nothing.
#pragma once

#include <algorithm>
#include <bit>
#include <cassert>
#include <cstdint>
#include <cstring>
#include <map>
#include <memory>
#include <span>
#include <vector>

#include "compare/fixed_buffer.h"
#include "compare/utf16_string.h"

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

// Equal words have equal hashes; `word` is not empty. Every unit takes part, four at a time; the
// last four may overlap those before.
inline std::uint64_t hashOf(Utf16View word) {
    assert(!word.empty());
    constexpr std::uint64_t kMultiplier = 0x9E3779B97F4A7C15;  // odd, its bits well mixed
    unsigned short const* const units = word.data();
    unsigned long const length = word.size();
    std::uint64_t hash = length * kMultiplier;
    if (length < kStride) {
        hash = (hash ^ loadFew(units, length)) * kMultiplier;
        return hash ^ hash >> 32U;
    }
    auto const mix = [&hash](std::uint64_t stride) {
        hash = (hash ^ stride) * kMultiplier;
        hash ^= hash >> 32U;
    };
    mix(loadStride(units));
    for (unsigned long at = kStride; at + kStride < length; at += kStride)
        mix(loadStride(units + at));
    mix(loadStride(units + length - kStride));
    return hash;
}

class WordList {
public:
    static constexpr std::uint32_t kNotFound = ~std::uint32_t{0};

    // So many need no memory of the heap.
    static constexpr unsigned long kFewWords = 32;

    // The most words that it can hold: every word has a slot and another one free.
    static constexpr unsigned long kMaxCapacity = 1UL << 30;

    // Allocates, unless the words are few. `capacity` is at most kMaxCapacity.
    explicit WordList(unsigned long capacity);

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

    // Of these, the words that lie in the tree.
    unsigned long wordsInTree() const { return tree_ ? tree_->byText.size() : 0; }

    // Takes out the words from `size` on.
    void cutBackTo(std::uint32_t size);

private:
    struct Slot {
        std::uint32_t mark;   // a hash of the word
        std::uint32_t place;  // in the list, from 1; 0 is a free slot
    };
    // Words that are not made to collide need fewer, a quarter of a million of them included.
    static constexpr unsigned kMaxProbes = 64;

    // Any order will do. Four units at a time are much quicker than a call for each word.
    struct ShorterFirst {
        bool operator()(Utf16View a, Utf16View b) const {
            if (a.size() != b.size()) return a.size() < b.size();
            if (a.size() < kStride)
                return loadFew(a.data(), a.size()) < loadFew(b.data(), b.size());
            for (unsigned long at = 0; at + kStride < a.size(); at += kStride) {
                std::uint64_t const ofA = loadStride(a.data() + at);
                std::uint64_t const ofB = loadStride(b.data() + at);
                if (ofA != ofB) return ofA < ofB;
            }
            unsigned long const last = a.size() - kStride;
            return loadStride(a.data() + last) < loadStride(b.data() + last);
        }
    };
    struct Tree {
        using Places = std::map<Utf16View, std::uint32_t, ShorterFirst>;

        Places byText;
        std::vector<Places::iterator> inOrder;
    };

    // Slots behind the table, which are written and never read: what is in them takes no slot.
    std::uint32_t slotOfAppended() const { return slotMask_ + 1; }
    std::uint32_t slotOfTree() const { return slotMask_ + 2; }
    static std::uint32_t maskFor(unsigned long capacity) {
        return static_cast<std::uint32_t>(std::bit_ceil(2 * std::max(capacity, 1UL)) - 1);
    }

    void grow();
    void clearSlots() { std::fill_n(slots_.data(), slotMask_ + 1UL, Slot{0, 0}); }
    // The word's slot or the free one that it would take; null when only the tree can have it.
    Slot* probe(Utf16View word, std::uint32_t mark);
    std::uint32_t findOrAddInTree(Utf16View word);

    std::uint32_t capacity_;
    std::uint32_t size_ = 0;
    std::uint32_t slotMask_;  // the number of slots, a power of two, less 1
    FixedBuffer<Utf16View, kFewWords> words_;
    FixedBuffer<std::uint32_t, kFewWords> slotOf_;  // by place in the list
    FixedBuffer<Slot, 2 * kFewWords + 2> slots_;
    std::unique_ptr<Tree> tree_;
};

// Here, since they run for every word of every entry.

inline WordList::WordList(unsigned long capacity)
    : capacity_(static_cast<std::uint32_t>(capacity)),
      slotMask_(maskFor(capacity)),
      words_(capacity),
      slotOf_(capacity),
      slots_(slotMask_ + 3UL) {
    assert(capacity <= kMaxCapacity);
    clearSlots();
}

inline WordList::Slot* WordList::probe(Utf16View word, std::uint32_t mark) {
    std::uint32_t slot = mark & slotMask_;
    for (unsigned probes = 0; probes < kMaxProbes; ++probes) {
        Slot* const at = &slots_[slot];
        if (at->place == 0) return at;
        if (at->mark == mark) {
            Utf16View const held = words_[at->place - 1];
            return held.size() == word.size() && hasUnits(held.data(), word) ? at : nullptr;
        }
        slot = (slot + 1) & slotMask_;
    }
    return nullptr;
}

inline std::uint32_t WordList::findOrAdd(Utf16View word) {
    auto const mark = static_cast<std::uint32_t>(hashOf(word));
    if (size_ == capacity_) grow();
    Slot* const slot = probe(word, mark);
    if (slot == nullptr) return findOrAddInTree(word);
    if (slot->place != 0) return slot->place - 1;
    std::uint32_t const place = size_++;
    words_[place] = word;
    slotOf_[place] = static_cast<std::uint32_t>(slot - slots_.data());
    *slot = {mark, place + 1};
    return place;
}

inline void WordList::append(Utf16View word) {
    if (size_ == capacity_) grow();
    words_[size_] = word;
    slotOf_[size_++] = slotOfAppended();
}

inline void WordList::cutBackTo(std::uint32_t size) {
    assert(size <= size_);
    if (tree_) {
        auto& inOrder = tree_->inOrder;
        for (; !inOrder.empty() && inOrder.back()->second >= size; inOrder.pop_back())
            tree_->byText.erase(inOrder.back());
    }
    while (size_ > size)
        slots_[slotOf_[--size_]].place = 0;
}
