#include "near_text/source.h"

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
    command.add_option("-t,--texts", texts.file, "Texts, one a line; - reads them in")
        ->type_name("FILE")
        ->required()
        ->group(kGroup);
    addColumns(command, "--text-column", "--keep", "the texts", texts, hasKeep);
}

void SourceOptions::addEntries(CLI::App& command, bool hasKeep) {
    command.add_option("-e,--entries", entries.file, "Entries, one a line; - reads them in")
        ->type_name("FILE")
        ->group(kGroup);
    addColumns(command, "--entry-column", "--keep-entry", "the entries", entries, hasKeep);
}

void SourceOptions::addFile(CLI::App& command) {
    command.add_option("FILE", entries.file, "Texts, one a line; - reads them in")
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
                    "What parts the columns of a table, \\t for a tab. Default: a tab in files "
                    "named .tsv, else a comma")
        ->type_name("C")
        ->group(kGroup);
    command
        .add_option("--encoding", reading.encoding,
                    "The encoding of the files, such as windows-1251, utf-16 or koi8-r. Default: "
                    "what a byte order mark tells, else UTF-8")
        ->type_name("NAME")
        ->group(kGroup);
}

void SourceOptions::settle() const {
    bool const hasTable = texts.isTable() || entries.isTable();
    std::string const noTable = "does nothing without a column to read (--text-column";
    if (!hasTable && reading.hasHeader) refuse("--header", noTable + " or --entry-column)");
    if (!hasTable && !reading.delimiter.empty()) {
        refuse("--delimiter", noTable + " or --entry-column)");
    }
    if (!texts.isTable() && !texts.keep.empty()) refuse("--keep", noTable + ')');
    if (!entries.isTable() && !entries.keep.empty()) {
        refuse("--keep-entry", "does nothing without --entry-column");
    }
}

RowReader::RowReader(Source const& source, Reading const& /*reading*/, std::size_t longest,
                     int wakeDescriptor)
    : lines(source.file, longest, wakeDescriptor) {}

bool RowReader::next(TextRow& row) {
    return lines.next(row);
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
    return {builder.take(shownName(source.file)), reader.keptNames()};
}

}  // namespace near_text
