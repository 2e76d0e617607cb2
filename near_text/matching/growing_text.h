// A long text that is only added to. It grows where it is if the system can move its pages, so that
// it is not held twice while it grows.
#pragma once

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <new>
#include <string_view>

namespace near_text {

template <class Unit>
class GrowingText {
public:
    using View = std::basic_string_view<Unit>;

    // `text` is no part of this one. Throws std::bad_alloc.
    void append(View text) {
        if (text.size() > capacity_ - size_) grow(text.size());
        std::copy(text.begin(), text.end(), units_.get() + size_);
        size_ += text.size();
    }

    // Until it grows.
    operator View() const { return {units_.get(), size_}; }  // NOLINT(google-explicit-constructor)
    std::size_t size() const { return size_; }

private:
    struct Free {
        void operator()(Unit* units) const { std::free(units); }
    };

    void grow(std::size_t more) {
        std::size_t const wanted = size_ + more + size_ / 2;
        void* const grown = std::realloc(units_.get(), wanted * sizeof(Unit));
        if (grown == nullptr) throw std::bad_alloc();
        static_cast<void>(units_.release());
        units_.reset(static_cast<Unit*>(grown));
        capacity_ = wanted;
    }

    std::unique_ptr<Unit, Free> units_;
    std::size_t size_ = 0;
    std::size_t capacity_ = 0;
};

}  // namespace near_text
