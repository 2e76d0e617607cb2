// Where texts and entries come from: files of one a line, or tables of which a column holds them.
#pragma once

#include <CLI/App.hpp>
#include <memory>
#include <string>
#include <vector>

#include "near_text/input/table.h"
#include "near_text/input/text_row.h"
#include "near_text/matching/entry_list.h"
#include "near_text/options/format_options.h"

namespace near_text {

struct Source {
    TextFile file{""};
    std::string column;             // a name, or a number from 1; empty for a file of lines
    std::vector<std::string> keep;  // columns to carry over, likewise
    std::string delimiter;          // empty if the file's name decides

    bool isTable() const { return !column.empty(); }
};

// How the files of a run are read.
struct Reading {
    bool hasHeader = false;  // even if no column is given by name
    std::string delimiter;   // of all tables but those that have their own
    std::string encoding;    // of all files but those that have their own
};

// The options of both.
struct SourceOptions {
    Source texts;
    Source entries;
    Reading reading;

    void addTexts(CLI::App& command, bool hasKeep = true);
    void addEntries(CLI::App& command, bool hasKeep = true);
    // After those.
    void addReading(CLI::App& command);
    // The one file of a command that has one, in place of all three.
    void addFile(CLI::App& command);
    // Once the command line is read; `format` is that of the output. Throws CLI::ValidationError.
    void settle(FormatOptions& format);
};

// The texts of a source, one at a time, each as soon as it is complete.
class RowReader {
public:
    // Of a text above `longest` bytes only so much is kept. Readiness of `wakeDescriptor` ends the
    // input. Throws std::runtime_error.
    explicit RowReader(Source const& source, Reading const& reading,
                       std::size_t longest = std::string::npos, int wakeDescriptor = -1);

    // False at the end.
    bool next(TextRow& row);
    // "FILE:LINE: ", of the row that was read last.
    std::string place() const;
    // Those of the header, else numbers.
    std::vector<std::string> const& keptNames() const { return names; }

private:
    std::unique_ptr<LineReader> lines;  // or else
    std::unique_ptr<TableReader> table;
    Row fields;
    std::size_t textColumn = 0;
    std::vector<std::size_t> keptColumns;
    std::vector<std::string> names;
};

struct EntryFile {
    EntryList list;
    std::vector<std::string> keptNames;
};

// `beginsWithSeparator` makes the first entry as long as it would be elsewhere. Throws
// std::runtime_error, with file and line if a line is not valid text, and if no entry has a word.
EntryFile readEntries(Source const& source, Reading const& reading, Preparation const& preparation,
                      bool beginsWithSeparator = false);

}  // namespace near_text
