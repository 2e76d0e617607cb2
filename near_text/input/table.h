// Tables: rows of fields, in text files of one row a line or more. Rows may differ in length; a
// blank line is none.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "near_text/input/line_reader.h"
#include "near_text/input/row_parser.h"

namespace near_text {

// The delimiter of that name: one ASCII character, or "tab". Throws std::runtime_error.
char delimiterOf(std::string const& name);

struct TableLayout {
    // A tab, a semicolon or a comma, the first of them that the first line has.
    static constexpr char kGuessed = '\0';

    char delimiter = ',';
    bool hasHeader = false;
    bool isPart = false;  // of a table: it may have no row, not even a header, but none cut short
    std::string delimiterOption = "--delimiter";  // that gives this file's, for messages
};

struct Row {
    std::size_t line = 0;             // in which it begins, from 1
    std::string fault;                // why it cannot be used as a whole; empty where it can
    std::vector<std::string> fields;  // of one with a fault, those ahead of it
};

// Rows one at a time, each as soon as its last line is complete. A row of more than 1 MiB has a
// fault, so that a quote left open does not take the rest of a long file into memory.
class TableReader {
public:
    // Waits for the first row. Throws as LineReader, and std::runtime_error when the header is
    // missing or has a fault.
    TableReader(TextFile const& file, TableLayout layout);
    TableReader(TableReader const&) = delete;
    TableReader& operator=(TableReader const&) = delete;

    // A part without a row, which has no columns to ask for.
    bool isEmpty() const { return !hasFirst_ && names_.empty(); }

    // Empty without one.
    std::vector<std::string> const& header() const { return names_; }

    // The place in `fields`, from 0, of the column of this name in the header, or else of this name
    // but for whitespace around it, or else of this number, from 1. From then on a row that does
    // not reach so far has a fault. Throws std::runtime_error when there is no such column, or
    // there are several.
    std::size_t column(std::string const& nameOrNumber);

    // False at the end. Behind a row in which a quote is left open nothing is read; in a part that
    // throws std::runtime_error.
    bool next(Row& row);

    // "FILE:LINE: ", of a row.
    std::string place(Row const& row) const;

    // How much of the file the rows so far are, as LineReader::share.
    std::optional<double> share() const { return reader_.share(); }

private:
    bool read(Row& row);
    bool take(Line const& line, Row& row);
    void leaveOpen(Row& row);
    std::size_t named(std::string const& name, std::string (*shown)(std::string const&)) const;
    std::size_t numbered(std::string const& text) const;
    [[noreturn]] void refuseColumn(std::string const& nameOrNumber) const;

    TableLayout layout_;
    LineReader reader_;
    std::optional<RowParser> parser_;  // once the delimiter is known
    std::size_t quoteLine_ = 0;        // in which the last field of its lines so far begins
    std::size_t bytes_ = 0;            // that its row has so far
    std::size_t lastLine_ = 0;         // of its row so far
    bool isOver_ = false;

    std::vector<std::string> names_;
    Row first_;  // the row that was read ahead, until it is handed out
    bool hasFirst_ = false;
    std::size_t needed_ = 0;  // fields
};

}  // namespace near_text
