// An explanation as people read it.
#pragma once

#include <string>

#include "reference/explanation.h"

namespace near_text {

// Several lines, indented. The names stand for the two sides.
std::string explanationText(reference::SideBySide const& sides, std::string const& firstName,
                            std::string const& secondName);

// Throws std::runtime_error when the add-in's own answer is another one.
void requireAgreement(reference::SideBySide const& sides, bool isAlike);

}  // namespace near_text
