#include "near_text/input/table_guess.h"

#include <algorithm>

#include "near_text/input/row_parser.h"

namespace near_text {

namespace {

// None where the line is no row, or one that people wrote as a sentence.
std::size_t fieldsOf(std::string_view line, char delimiter) {
    RowParser parser(delimiter);
    parser.begin();
    if (!parser.take(line) || !parser.endLine("\n")) return 0;
    std::vector<std::string> const fields = parser.takeFields();
    bool const isText = std::any_of(fields.begin() + 1, fields.end(), [](std::string const& field) {
        return field.starts_with(' ');
    });
    return isText ? 0 : fields.size();
}

}  // namespace

bool TableGuess::isTable(std::string_view line) {
    std::size_t const enough = isLikely_ ? 1 : 3;
    if (line.empty() || lines_ == enough) return false;
    ++lines_;
    bool isTable = false;
    for (std::size_t i = 0; i < sizeof kDelimiters; ++i) {
        std::size_t const fields = fieldsOf(line, kDelimiters[i]);
        if (lines_ == 1) fields_[i] = fields;
        if (fields_[i] != fields) fields_[i] = 0;
        isTable |= fields_[i] > (kDelimiters[i] == ',' && !isLikely_ ? 2 : 1);
    }
    return isTable && lines_ == enough;
}

}  // namespace near_text
