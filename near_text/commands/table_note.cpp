#include "near_text/commands/table_note.h"

#include <filesystem>
#include <fstream>

#include "near_text/messages/messages.h"

namespace near_text {

namespace {

// What a text has: commas with a blank behind them.
bool hasFields(std::string const& line) {
    if (line.find_first_of("\t;") != std::string::npos) return true;
    std::size_t const comma = line.find(',');
    return comma != std::string::npos && line.find(", ") == std::string::npos;
}

// As bytes, and no more of it than tells; empty where the file cannot be read twice.
std::string firstLine(std::string const& file) {
    std::error_code ignored;
    if (!std::filesystem::is_regular_file(file, ignored)) return {};
    char line[4096] = {};
    std::ifstream(file, std::ios::binary).getline(line, sizeof line);
    return line;
}

}  // namespace

void noteTable(Source const& source, std::string const& option, bool isOtherTable) {
    std::string const& name = source.file.name;
    bool const isNamedSo = hasEnding(name, ".csv") || hasEnding(name, ".tsv");
    if (source.isTable() || (!isNamedSo && !(isOtherTable && hasFields(firstLine(name))))) return;
    complain("note: " + name + " seems to be a table, but whole lines of it are compared; " +
             option + " COLUMN takes a column");
}

void noteTables(Source const& texts, Source const& entries) {
    noteTable(texts, "--text-column", entries.isTable());
    noteTable(entries, "--entry-column", texts.isTable());
}

}  // namespace near_text
