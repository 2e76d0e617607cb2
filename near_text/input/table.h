// Tables: rows of fields, in text files of one row a line or more.
//
// They are read as RFC 4180 describes them, with any ASCII character between the fields. A field in
// quotes may hold the delimiter, line feeds and doubled quotes. Beyond the RFC, a row may end with
// a line feed alone, rows may differ in length, a quote inside a field that is not in quotes stands
// for itself, and blanks at a field's ends are part of it. A blank line is no row. Between tabs
// quotes have no meaning, and escapes as tsvRow writes them stand for what they are there; any
// other backslash stands for itself.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "near_text/input/input.h"

struct csv_parser;

namespace near_text {

// The delimiter of that name: one ASCII character, or "tab". Throws std::runtime_error.
char delimiterOf(std::string const& name);

struct TableShape {
    // A tab, a semicolon or a comma, the first of them that the first line has.
    static constexpr char kGuessed = '\0';

    char delimiter = ',';
    bool hasHeader = false;
};

struct Row {
    std::size_t line = 0;  // in which it begins, from 1
    std::vector<std::string> fields;
    std::string fault;  // why the fields are not to be used; empty where they are
};

// Rows one at a time, each as soon as its last line is complete. A row of more than 1 MiB has a
// fault, so that a quote left open does not take the rest of a long file into memory.
class TableReader {
public:
    // Waits for the first row. Throws as LineReader, and std::runtime_error when the header is
    // missing or has a fault.
    TableReader(TextFile const& file, TableShape tableShape, int wakeDescriptor = -1);
    TableReader(TableReader const&) = delete;
    TableReader& operator=(TableReader const&) = delete;

    // Empty without one.
    std::vector<std::string> const& header() const { return names; }

    // The place in `fields`, from 0, of the column of this name in the header, or else of this
    // number, from 1. From then on a row that does not reach so far has a fault. Throws
    // std::runtime_error when there is no such column, or there are several.
    std::size_t column(std::string const& nameOrNumber);

    // False at the end. Behind a row in which a quote is left open nothing is read. A row that is
    // unfinished when the reader is woken is dropped.
    bool next(Row& row);

    // "FILE:LINE: ", of a row.
    std::string place(Row const& row) const;

private:
    struct CloseParser {
        void operator()(csv_parser* closed) const;
    };

    void separateBy(char delimiter);
    bool read(Row& row);
    bool take(Line const& line, Row& row);
    bool feed(std::string_view text);
    void leaveOpen(Row& row);
    void reset();
    [[noreturn]] void refuseColumn(std::string const& nameOrNumber) const;

    TableShape shape;
    LineReader reader;
    std::unique_ptr<csv_parser, CloseParser> parser;
    std::vector<std::string> fields;  // of the row that is being read
    bool isComplete = false;          // that row
    std::size_t quoteLine = 0;        // where its field that is not complete begins
    std::size_t bytes = 0;            // that it has so far
    bool isOver = false;

    std::vector<std::string> names;
    Row first;  // the row that was read ahead, until it is handed out
    bool hasFirst = false;
    std::size_t needed = 0;  // fields
};

// Rows as they are written, with a line feed at the end.
//
// In tsv a backslash, a tab, a line feed and a carriage return become \\, \t, \n and \r, so that
// each row is a line. In csv a field is quoted where it has to be: for a delimiter, a quote, a line
// feed, a carriage return or a blank at an end; so is the only field of a row when it is empty.
std::string tsvRow(std::vector<std::string> const& fields);
std::string csvRow(std::vector<std::string> const& fields, char delimiter = ',');

}  // namespace near_text
