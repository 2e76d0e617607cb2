// Memory that runs out. That is told even where the code between swallows the exception, as streams
// do, or lets it meet a noexcept.
#pragma once

namespace near_text {

// To be called once, before anything else.
void watchMemory();

// Throws std::bad_alloc if an allocation has failed since, on any thread: for where that may have
// been swallowed.
void requireMemory();

}  // namespace near_text
