#include "bench/peak_memory.h"

#include <malloc.h>

#include <algorithm>
#include <cstdlib>
#include <new>

namespace {

bool isCounting = false;  // what is timed pays no more than a look at this
long held = 0;
long least = 0;  // a call may begin by freeing what the one before it left
long peak = 0;   // above the least

}  // namespace

void* operator new(std::size_t size) {
    void* const block = std::malloc(size);
    if (block == nullptr) throw std::bad_alloc();
    if (isCounting) {
        held += static_cast<long>(malloc_usable_size(block));
        peak = std::max(peak, held - least);
    }
    return block;
}
void* operator new[](std::size_t size) {
    return operator new(size);
}
void operator delete(void* block) noexcept {
    if (isCounting) {
        held -= static_cast<long>(malloc_usable_size(block));
        least = std::min(least, held);
    }
    std::free(block);
}
void operator delete[](void* block) noexcept {
    operator delete(block);
}
void operator delete(void* block, std::size_t) noexcept {
    operator delete(block);
}
void operator delete[](void* block, std::size_t) noexcept {
    operator delete(block);
}

namespace bench {

long peakBytesOf(std::function<void()> const& run) {
    held = least = peak = 0;
    isCounting = true;
    run();
    isCounting = false;
    return peak;
}

}  // namespace bench
