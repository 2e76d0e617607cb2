// What is measured, by theme.
#pragma once

namespace bench {

void addSearchCases();
void addCompareCases();
void addDistanceCases();

}  // namespace bench
