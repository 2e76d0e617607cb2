// Where texts and entries come from: files of one a line, or tables of which a column holds them,
// or several columns together.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "near_text/input/table.h"
#include "near_text/input/table_guess.h"
#include "near_text/input/text_row.h"

namespace near_text {

struct Source {
    TextFile file;
    // Names, or numbers from 1; none for a file of lines. Their cells are joined by blanks, without
    // those that are empty.
    std::vector<std::string> columns;
    std::vector<std::string> keep;  // columns to carry over, likewise
    TableLayout layout;             // of a table
    std::string id = {};            // the column that rows are known by; empty without one
    std::string columnOption = {};  // that asks for columns; empty where nothing does
    bool isBesideTable = false;     // the other file is one

    bool isTable() const { return !columns.empty(); }
};

// The texts of a source, one at a time, each as soon as it is complete.
class RowReader {
public:
    // Of a text above `longest` bytes only so much is kept. Notes on standard error when a file of
    // lines seems to be a table, by its name or its first lines: nothing would be found, in
    // silence. Throws as LineReader and TableReader.
    explicit RowReader(Source const& source, std::size_t longest = std::string::npos);

    // False at the end.
    bool next(TextRow& row);
    // "FILE:LINE: ", of the row that was read last.
    std::string place() const;
    // Those of the header, else numbers.
    std::vector<std::string> const& keptNames() const { return names_; }

private:
    void noteTable();
    std::string text() const;
    std::string readable(std::size_t column) const;

    std::unique_ptr<LineReader> lines_;  // or else
    std::unique_ptr<TableReader> table_;
    std::string columnOption_;
    std::optional<TableGuess> guess_;  // until it is known
    Row fields_;
    std::vector<std::size_t> textColumns_;
    std::vector<std::size_t> keptColumns_;
    std::optional<std::size_t> idColumn_;
    std::vector<std::string> names_;
};

}  // namespace near_text
