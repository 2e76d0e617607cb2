// A text of the input on its way through a run, with what is carried over from beside it.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "near_text/input/line_reader.h"

namespace near_text {

struct TextRow : Line {
    TextRow() = default;
    TextRow(Line line)
        : Line(std::move(line)) {}  // NOLINT(google-explicit-constructor): a line is one

    std::string id;                 // the cell of the column of ids, where there is one
    std::vector<std::string> kept;  // cells of the columns that are kept
    std::optional<double> share;    // of the file, up to and with this text, where that is known
};

}  // namespace near_text
