// An explanation as people read it.
#pragma once

#include <string>

#include "near_text/matching/numbers.h"
#include "reference/explanation.h"

namespace near_text {

// Several lines, indented. The names stand for the two sides. What cancelled, what is left and how
// that differs may be marked for a terminal.
std::string explanationText(reference::SideBySide const& sides, std::string const& firstName,
                            std::string const& secondName, bool isMarked);

// Of numbers that contradict each other: another line of it, that they are the reason.
std::string numbersText(Numbers const& ofText, Numbers const& ofEntry);

// Throws std::runtime_error when the add-in's own answer is another one.
void requireAgreement(reference::SideBySide const& sides, bool isAlike);

}  // namespace near_text
