#include "compare/limit.h"

#include <cmath>

double toleratedShare(unsigned long percent, unsigned long maximum) {
    double const quotient = static_cast<double>(percent) / 100.0;
    double const difference = 1.0 - quotient;
    return difference * static_cast<double>(maximum);
}

unsigned long distanceLimit(unsigned long percent, unsigned long maximum) {
    // A negative double has no value as an unsigned number, so it must not reach the conversion.
    if (percent > 100) return 0;
    return static_cast<unsigned long>(std::round(toleratedShare(percent, maximum)));
}
