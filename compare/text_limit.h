// The longest text, in units, that is compared with others or searched for.
#pragma once

inline constexpr unsigned long kMaxTextLength = 1000;
