// The edit distance of two texts, every edit at cost 1, many cells of the matrix in one step.
#pragma once

// Lengths are in 16-bit units; a pointer may be null when its length is 0. The work is about the
// longer length times the shorter one divided by 64. Beyond 256 units on both sides it takes a byte
// of memory for each unit of the longer text; shorter texts allocate nothing.
unsigned long bitParallelDistance(unsigned short const* first, unsigned long firstLength,
                                  unsigned short const* second, unsigned long secondLength);
