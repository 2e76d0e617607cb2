// How far apart two texts may be, worked out apart from the add-in and to the last bit as it does.
#pragma once

#include <cmath>

namespace reference {

// In 16-bit units, of which the longer text has `length`. A percentage above 100 demands as much as
// 100 does. Never falls as the length grows, nor as the percentage does.
inline unsigned long limitFor(unsigned long percent, unsigned long length) {
    if (percent > 100) return 0;
    // Halves depend on the rounding of each step, so the steps and their order are fixed.
    double const share = static_cast<double>(percent) / 100.0;
    double const tolerance = 1.0 - share;
    return static_cast<unsigned long>(std::round(tolerance * static_cast<double>(length)));
}

}  // namespace reference
