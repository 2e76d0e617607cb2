// The longest text, in units, that is compared with others or searched for.
#pragma once

namespace comparer {

inline constexpr unsigned long kMaxTextLength = 1000;

}  // namespace comparer
