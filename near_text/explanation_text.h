// An explanation as people read it.
#pragma once

#include <string>

#include "stand_in_host/explanation.h"

namespace near_text {

// Several lines, indented. The names stand for the two sides.
std::string explanationText(stand_in_host::SideBySide const& sides, std::string const& firstName,
                            std::string const& secondName);

// Throws std::runtime_error when the add-in's own answer is another one.
void requireAgreement(stand_in_host::SideBySide const& sides, bool isAlike);

}  // namespace near_text
