// Cells in columns, for eyes.
#pragma once

#include <string>
#include <vector>

namespace near_text {

using Cells = std::vector<std::string>;

// A line for each row, two blanks between columns, none at a line's end. Each column is as wide as
// its widest cell; those of `isRight` stand at its right edge. All rows have as many cells as the
// first, and there is a first.
std::string inColumns(std::vector<Cells> const& rows, std::vector<bool> const& isRight);

}  // namespace near_text
