// Room for a number of elements that is known when it is made: in place when they are few, so that
// a short comparison allocates nothing, else in one block of the heap.
#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <type_traits>

namespace comparer {

// Elements hold nothing until they are written, and nothing is spent on them before. An allocation
// that fails throws std::bad_alloc.
template <class Element, unsigned long kInPlace>
class FixedBuffer {
    static_assert(std::is_trivially_copyable_v<Element> &&
                  std::is_trivially_destructible_v<Element>);

public:
    explicit FixedBuffer(unsigned long capacity)
        : heap_(capacity > kInPlace ? blockFor(capacity) : nullptr),
          elements_(reinterpret_cast<Element*>(heap_ ? heap_.get() : place_)) {}
    FixedBuffer(FixedBuffer const&) = delete;
    FixedBuffer& operator=(FixedBuffer const&) = delete;

    // Makes room for more elements, and keeps the first `count`.
    void enlarge(unsigned long capacity, unsigned long count) {
        if (capacity <= kInPlace) return;
        auto block = blockFor(capacity);
        std::copy_n(elements_, count, reinterpret_cast<Element*>(block.get()));
        heap_ = std::move(block);
        elements_ = reinterpret_cast<Element*>(heap_.get());
    }

    Element& operator[](unsigned long index) { return elements_[index]; }
    Element const& operator[](unsigned long index) const { return elements_[index]; }
    Element* data() { return elements_; }
    Element const* data() const { return elements_; }

private:
    static auto blockFor(unsigned long capacity) {
        return std::make_unique_for_overwrite<std::byte[]>(capacity * sizeof(Element));
    }

    alignas(Element) std::byte place_[kInPlace * sizeof(Element)];
    std::unique_ptr<std::byte[]> heap_;
    Element* elements_;
};

}  // namespace comparer
