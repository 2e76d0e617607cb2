// How many edits a percentage lets through.
#pragma once

// The share of `maximum` (a length in units) that may differ at `percent`, not rounded. `percent`
// is meant from 0 to 100; above that the share is negative.
//
// The steps and their order are part of the answer: at 90 percent of 5 units they give
// 0.4999999999999999, where (100 - percent) * maximum / 100 would give 0.5 and round up.
double toleratedShare(unsigned long percent, unsigned long maximum);

// The greatest distance at which two texts still count as alike: the tolerated share, rounded with
// halves away from zero. A percentage above 100 demands as much as 100 does: the limit is 0.
unsigned long distanceLimit(unsigned long percent, unsigned long maximum);
