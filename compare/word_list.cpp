#include "compare/word_list.h"

#include <new>
#include <utility>

namespace comparer {

void WordList::reserve(unsigned long capacity) {
    if (capacity <= capacity_) return;
    capacity = std::min(std::max(capacity, 2UL * capacity_), kMaxCapacity);
    std::uint32_t const formerlyAppended = slotOfAppended();
    words_.enlarge(capacity, size_);
    slotOf_.enlarge(capacity, size_);
    slots_.enlarge(maskFor(capacity) + 2UL, 0);
    capacity_ = static_cast<std::uint32_t>(capacity);
    slotMask_ = maskFor(capacity);
    placeAll(formerlyAppended);
}

void WordList::placeAll(std::uint32_t formerlyAppended) {
    std::fill_n(slots_.data(), slotMask_ + 1UL, Slot{0, 0});
    for (std::uint32_t const size = std::exchange(size_, 0); size_ < size;) {
        Utf16View const word = words_[size_];
        if (slotOf_[size_] == formerlyAppended) {
            append(word);
        } else {
            findOrAdd(word);
        }
    }
}

void WordList::grow() {
    if (capacity_ == kMaxCapacity) throw std::bad_alloc();
    reserve(capacity_ + 1UL);
}

std::uint32_t WordList::find(Utf16View word) {
    static_assert(kNotFound == std::uint32_t{0} - 1);
    return probe(word).place - 1;
}

WordList::Found WordList::probeLongWay(Utf16View word, std::uint32_t mark) {
    constexpr unsigned long kSteps = 4;  // that a word takes as long as, besides its units
    std::uint32_t slot = mark & slotMask_;
    for (; slots_[slot].place != 0; slot = (slot + 1) & slotMask_) {
        ++longWays_;
        if (slots_[slot].mark != mark) continue;
        Utf16View const held = words_[slots_[slot].place - 1];
        if (held == word) break;
        longWays_ += kSteps + word.size() / kStride;
    }
    if (!isKeyWorthIt()) return {slots_[slot].place, mark, slot};
    key_ = keyOf(texts_);
    hasOwnKey_ = true;
    placeAll(slotOfAppended());
    return probe(word);
}

bool WordList::isKeyWorthIt() const {
    if (hasOwnKey_ || texts_.empty()) return false;
    unsigned long units = 0;
    for (Utf16View const text : texts_)
        units += text.size();
    constexpr unsigned long kStepsOfStride = 2;
    return longWays_ > units / kStride * kStepsOfStride;
}

}  // namespace comparer
