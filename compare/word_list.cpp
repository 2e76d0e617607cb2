#include "compare/word_list.h"

#include <new>
#include <utility>

void WordList::reserve(unsigned long capacity) {
    if (capacity <= capacity_) return;
    // A tree takes longer to build anew.
    unsigned long const factor = tree_ ? 8 : 2;
    capacity = std::min(std::max(capacity, factor * capacity_), kMaxCapacity);
    std::uint32_t const formerlyAppended = slotOfAppended();
    words_.enlarge(capacity, size_);
    slotOf_.enlarge(capacity, size_);
    slots_.enlarge(maskFor(capacity) + 3UL, 0);
    capacity_ = static_cast<std::uint32_t>(capacity);
    slotMask_ = maskFor(capacity);
    clearSlots();
    tree_.reset();
    // Each word is added anew, in its old place.
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

std::uint32_t WordList::findOrAddInTree(Utf16View word) {
    if (!tree_) tree_ = std::make_unique<Tree>();
    auto const [found, isNew] = tree_->byText.try_emplace(word, size_);
    if (!isNew) return found->second;
    tree_->inOrder.push_back(found);
    words_[size_] = word;
    slotOf_[size_] = slotOfTree();
    return size_++;
}

std::uint32_t WordList::find(Utf16View word) {
    Slot const* const slot = probe(word, static_cast<std::uint32_t>(hashOf(word)));
    if (slot != nullptr) return slot->place != 0 ? slot->place - 1 : kNotFound;
    if (!tree_) return kNotFound;
    auto const found = tree_->byText.find(word);
    return found != tree_->byText.end() ? found->second : kNotFound;
}
