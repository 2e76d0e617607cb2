// Tables that are read as if they were lists of lines.
#pragma once

#include <cstddef>
#include <string_view>

namespace near_text {

// Guesses from the first lines of a file whether they are rows of a table: as many fields in each,
// and more than one, between tabs, semicolons or commas. Texts contain those too, so three lines
// have to agree, commas have to make three fields, and no field begins with a blank.
class TableGuess {
public:
    // The first line with fields is enough where a table is likely.
    explicit TableGuess(bool isLikely = false) : isLikely_(isLikely) {}

    // The next line. True if the lines so far are enough and seem to be a table, which is told
    // once.
    bool isTable(std::string_view line);

private:
    static constexpr char kDelimiters[] = {'\t', ';', ','};

    bool isLikely_;
    std::size_t lines_ = 0;
    std::size_t fields_[sizeof kDelimiters] = {};  // in each line so far; 0 if they differ
};

}  // namespace near_text
