#include "near_text/source.h"

#include <algorithm>

#include "near_text/search_options.h"
#include "stand_in_host/text_codec.h"

namespace near_text {

namespace {

constexpr char const* kGroup = "Files";

void addColumns(CLI::App& command, std::string const& name, std::string const& keepName,
                std::string const& whose, Source& source, bool hasKeep) {
    command
        .add_option(name, source.column,
                    "The column that holds " + whose + ", by name or by number from 1: " + whose +
                        " are a table then, and quoted fields may span lines")
        ->type_name("COLUMN")
        ->group(kGroup);
    if (!hasKeep) return;
    command
        .add_option(keepName, source.keep,
                    "Columns of " + whose + " to carry over into the output, parted by commas")
        ->type_name("COLUMNS")
        ->delimiter(',')
        ->group(kGroup);
}

}  // namespace

void SourceOptions::addTexts(CLI::App& command, bool hasKeep) {
    command.add_option("-t,--texts", texts.file.name, "Texts, one a line; - reads them in")
        ->type_name("FILE")
        ->required()
        ->group(kGroup);
    addColumns(command, "--text-column", "--keep", "the texts", texts, hasKeep);
}

void SourceOptions::addEntries(CLI::App& command, bool hasKeep) {
    command.add_option("-e,--entries", entries.file.name, "Entries, one a line; - reads them in")
        ->type_name("FILE")
        ->group(kGroup);
    addColumns(command, "--entry-column", "--keep-entry", "the entries", entries, hasKeep);
}

void SourceOptions::addFile(CLI::App& command) {
    command.add_option("FILE", entries.file.name, "Texts, one a line; - reads them in")
        ->type_name("")
        ->required()
        ->group(kGroup);
    addColumns(command, "--text-column", "--keep", "the texts", entries, true);
    addReading(command);
}

void SourceOptions::addReading(CLI::App& command) {
    command
        .add_flag("--header", reading.hasHeader,
                  "The first row of a table names its columns, also where all are told by number")
        ->group(kGroup);
    command
        .add_option("-d,--delimiter", reading.delimiter,
                    "What parts the columns of a table, here and in the format csv: a character, "
                    "or tab, and then quotes are characters like any other. Default: tab in files "
                    "named .tsv, else a comma")
        ->type_name("C")
        ->group(kGroup);
    command
        .add_option("--encoding", texts.file.encoding,
                    "The encoding of the files, such as windows-1251, utf-16 or koi8-r. Default: "
                    "what a byte order mark tells, else UTF-8")
        ->type_name("NAME")
        ->group(kGroup);
    if (command.get_option_no_throw("--texts") == nullptr) return;
    command
        .add_option("--entry-encoding", entries.file.encoding,
                    "That of the entries, where it is another")
        ->type_name("NAME")
        ->group(kGroup);
}

void SourceOptions::settle(FormatOptions& format) {
    bool const hasTable = texts.isTable() || entries.isTable();
    constexpr char const* kNoTable = "does nothing while no column is told to hold the texts";
    if (!hasTable && reading.hasHeader) refuse("--header", kNoTable);
    if (!hasTable && !reading.delimiter.empty() && !format.isCsv()) {
        refuse("--delimiter", kNoTable);
    }
    if (!texts.isTable() && !texts.keep.empty()) refuse("--keep", kNoTable);
    if (!entries.isTable() && !entries.keep.empty()) refuse("--keep-entry", kNoTable);
    bool const isKeeping = !texts.keep.empty() || !entries.keep.empty();
    if (isKeeping && !format.format().carriesColumns) {
        refuse("--format", format.name + " shows no columns that are kept");
    }
    if (entries.file.encoding.empty()) entries.file.encoding = texts.file.encoding;
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
    bool const hasTabs = reading.delimiter.empty() ? source.file.name.ends_with(".tsv")
                                                   : delimiterOf(reading.delimiter) == '\t';
    TableShape shape;
    if (!reading.delimiter.empty()) shape.delimiter = delimiterOf(reading.delimiter);
    if (hasTabs) shape.delimiter = '\t';
    shape.hasQuotes = !hasTabs;
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
        } catch (stand_in_host::NotText const& error) {
            throw std::runtime_error(reader.place() + error.what());
        }
    }
    return {builder.take(shownName(source.file.name)), reader.keptNames()};
}

}  // namespace near_text
