// A format of the output: how a text and its matches are written, or any other table. Each has a
// file of its own; formats.cpp lists them.
#pragma once

#include <string>
#include <vector>

#include "near_text/input/text_row.h"
#include "near_text/matching/entry_list.h"
#include "near_text/matching/match.h"
#include "near_text/output/columns.h"
#include "near_text/output/row_layout.h"

namespace near_text {

// Any other table.
struct Table {
    struct Column {
        std::string name;
        bool isNumber;
    };

    std::vector<Column> columns;
    // As many cells as there are columns; that of a number that does not exist is empty.
    std::vector<Cells> rows;
};

// All texts that a format gives end with a line feed. The texts of rows and entries are valid
// UTF-8. A text that failed has the error in place of its text and its matches.
class Format {
public:
    char const* const name;
    bool const carriesColumns;  // that are kept
    // It shows pairs to be judged, with how their texts differ, and nothing else: in UTF-8, and in
    // one piece.
    bool const isPage;

    // Ahead of the first text.
    virtual std::string heading(RowLayout const& /*layout*/) const { return {}; }
    virtual std::string matches(RowLayout const& layout, TextRow const& row, EntryList const& list,
                                std::vector<Match> const& matches) const = 0;
    virtual std::string failure(RowLayout const& layout, TextRow const& row,
                                std::string const& error) const = 0;
    // Behind the last text, once all are there.
    virtual std::string ending() const { return {}; }
    virtual std::string table(char delimiter, Table const& table) const = 0;

protected:
    constexpr Format(char const* itsName, bool isCarryingColumns, bool isPageOne = false)
        : name(itsName), carriesColumns(isCarryingColumns), isPage(isPageOne) {}
    ~Format() = default;
};

// Throws std::out_of_range.
Format const& formatNamed(std::string const& name);
std::vector<std::string> formatNames();

}  // namespace near_text
