#include "near_text/input/source.h"

#include <algorithm>

#include "near_text/input/text_codec.h"
#include "near_text/options/search_options.h"

namespace near_text {

namespace {

constexpr char const* kGroup = "Files";

// With the name of the option, of which there are two.
CLI::Validator delimiterCheck() {
    return CLI::Validator(
        [](std::string const& name) {
            try {
                // That nothing is given is told of all options in one way.
                if (!name.empty()) delimiterOf(name);
            } catch (std::runtime_error const& error) {
                return std::string(error.what());
            }
            return std::string();
        },
        "");
}

void addColumns(CLI::App& command, std::string const& name, std::string const& keepName,
                std::string const& whose, Source& source, bool hasKeep) {
    command
        .add_option(name, source.column,
                    "The column of " + whose +
                        ", a name or a number from 1. The file is then a table, "
                        "whose quoted fields may span lines")
        ->type_name("COLUMN")
        ->group(kGroup);
    if (!hasKeep) return;
    addCommaList(
        command, keepName, [&source](auto const& columns) { source.keep = columns; },
        "Columns of " + whose + " to carry over into the output, separated by commas")
        .type_name("COLUMNS")
        ->group(kGroup);
}

}  // namespace

void SourceOptions::addTexts(CLI::App& command, bool hasKeep) {
    command
        .add_option("-t,--texts", texts.file.name,
                    "The texts, one on each line; - reads standard input")
        ->type_name("FILE")
        ->required()
        ->group(kGroup);
    addColumns(command, "--text-column", "--keep", "the texts", texts, hasKeep);
}

void SourceOptions::addEntries(CLI::App& command, bool hasKeep) {
    command
        .add_option("-e,--entries", entries.file.name,
                    "The entries, one on each line; - reads standard input")
        ->type_name("FILE")
        ->group(kGroup);
    addColumns(command, "--entry-column", "--keep-entry", "the entries", entries, hasKeep);
}

void SourceOptions::addFile(CLI::App& command) {
    command
        .add_option("FILE", entries.file.name,
                    "The texts, one on each line; - reads standard input")
        ->type_name("")
        ->required()
        ->group(kGroup);
    addColumns(command, "--text-column", "--keep", "the texts", entries, true);
    addReading(command);
}

void SourceOptions::addReading(CLI::App& command) {
    command
        .add_flag(
            "--header", reading.hasHeader,
            "The first row of a table names its columns, even if the options use numbers only")
        ->group(kGroup);
    command
        .add_option(
            "-d,--delimiter", reading.delimiter,
            "What separates the columns of a table, in the input and in the format csv: one "
            "character, or the word tab. Between tabs quotes have no meaning, and \\\\, \\t, \\n "
            "and \\r are read as the format tsv writes them. Default: a comma; tabs in files named "
            ".tsv")
        ->type_name("C")
        ->check(delimiterCheck())
        ->group(kGroup);
    command
        .add_option("--encoding", reading.encoding,
                    "The encoding of all files, such as windows-1251, utf-16 or koi8-r. Default: "
                    "UTF-8, unless a byte order mark says otherwise")
        ->type_name("NAME")
        ->group(kGroup);
    if (command.get_option_no_throw("--texts") == nullptr) return;
    command
        .add_option("--entry-delimiter", entries.delimiter,
                    "What separates the columns of the entries, if it differs")
        ->type_name("C")
        ->check(delimiterCheck())
        ->group(kGroup);
    command
        .add_option("--entry-encoding", entries.file.encoding,
                    "The encoding of the entries, if it differs")
        ->type_name("NAME")
        ->group(kGroup);
}

void SourceOptions::settle(FormatOptions& format) {
    bool const hasTable = texts.isTable() || entries.isTable();
    constexpr char const* kNoTable = "has no effect without --text-column or --entry-column";
    if (!hasTable && reading.hasHeader) refuse("--header", kNoTable);
    if (!hasTable && !reading.delimiter.empty() && !format.isCsv()) {
        refuse("--delimiter", kNoTable);
    }
    if (!entries.isTable() && !entries.delimiter.empty()) refuse("--entry-delimiter", kNoTable);
    if (!texts.isTable() && !texts.keep.empty()) refuse("--keep", kNoTable);
    if (!entries.isTable() && !entries.keep.empty()) refuse("--keep-entry", kNoTable);
    bool const isKeeping = !texts.keep.empty() || !entries.keep.empty();
    if (isKeeping && !format.format().carriesColumns) {
        refuse("--format", format.name + " does not show kept columns");
    }
    texts.file.encoding = reading.encoding;
    if (entries.file.encoding.empty()) entries.file.encoding = reading.encoding;
    texts.delimiter = reading.delimiter;
    if (entries.delimiter.empty()) entries.delimiter = reading.delimiter;
    if (!reading.delimiter.empty()) format.delimiter = delimiterOf(reading.delimiter);
}

RowReader::RowReader(Source const& source, Reading const& reading, std::size_t longest,
                     int wakeDescriptor) {
    if (!source.isTable()) {
        lines = std::make_unique<LineReader>(source.file, longest, wakeDescriptor);
        return;
    }
    auto const isName = [](std::string const& column) {
        return column.find_first_not_of("0123456789") != std::string::npos;
    };
    bool const hasName =
        isName(source.column) || std::any_of(source.keep.begin(), source.keep.end(), isName);
    TableShape shape;
    if (source.file.name.ends_with(".tsv")) shape.delimiter = '\t';
    if (!source.delimiter.empty()) shape.delimiter = delimiterOf(source.delimiter);
    shape.hasHeader = hasName || reading.hasHeader;
    table = std::make_unique<TableReader>(source.file, shape, wakeDescriptor);
    textColumn = table->column(source.column);
    for (std::string const& column : source.keep) {
        keptColumns.push_back(table->column(column));
        names.push_back(shape.hasHeader ? table->header()[keptColumns.back()]
                                        : std::to_string(keptColumns.back() + 1));
    }
}

bool RowReader::next(TextRow& row) {
    if (lines) return lines->next(row);
    if (!table->next(fields)) return false;
    row = {};
    row.number = fields.line;
    row.fault = fields.fault;
    if (!row.fault.empty()) return true;
    for (std::size_t const column : keptColumns)
        row.kept.push_back(fields.fields[column]);
    row.text = std::move(fields.fields[textColumn]);
    return true;
}

std::string RowReader::place() const {
    return lines ? lines->place() : table->place(fields);
}

EntryFile readEntries(Source const& source, Reading const& reading, Preparation const& preparation,
                      bool beginsWithSeparator) {
    RowReader reader(source, reading);
    EntryListBuilder builder(preparation, u'\0');
    if (beginsWithSeparator) builder.beginWithSeparator();
    for (TextRow row; reader.next(row);) {
        try {
            std::u16string const units = lineUnits(row);
            builder.add(row.number, units, std::move(row.text), std::move(row.kept));
        } catch (NotText const& error) {
            throw std::runtime_error(reader.place() + error.what());
        }
    }
    return {builder.take(shownName(source.file.name)), reader.keptNames()};
}

}  // namespace near_text
