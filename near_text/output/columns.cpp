#include "near_text/output/columns.h"

#include <algorithm>

#include "near_text/input/text_codec.h"

namespace near_text {

namespace {

std::size_t shownWidth(std::string const& cell) {
    return toUnits(cell).size();
}

}  // namespace

std::string inColumns(std::vector<Cells> const& rows, std::vector<bool> const& isRight) {
    std::vector<std::size_t> widths(rows.front().size());
    for (Cells const& cells : rows) {
        for (std::size_t i = 0; i < cells.size(); ++i)
            widths[i] = std::max(widths[i], shownWidth(cells[i]));
    }
    std::string text;
    for (Cells const& cells : rows) {
        std::string line;
        for (std::size_t i = 0; i < cells.size(); ++i) {
            std::string const blanks(widths[i] - shownWidth(cells[i]), ' ');
            line += (i == 0 ? "" : "  ") + (isRight[i] ? blanks + cells[i] : cells[i] + blanks);
        }
        text += line.substr(0, line.find_last_not_of(' ') + 1) + '\n';
    }
    return text;
}

}  // namespace near_text
