// What a call holds at its peak in blocks of the allocation functions. The program replaces them,
// and a library that it loads then uses them too.
#pragma once

#include <functional>

namespace bench {

// In bytes that the blocks have room for, which is a little more than was asked: the most that is
// held above what was held at any moment before. Not for several threads.
long peakBytesOf(std::function<void()> const& run);

}  // namespace bench
