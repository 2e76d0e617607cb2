#include "near_text/options/file_options.h"

#include <algorithm>
#include <tuple>

#include "near_text/options/values.h"

namespace near_text {

namespace {

void addColumns(CLI::App& command, std::string const& name, std::string const& keepName,
                std::string const& whose, GivenSource& source, bool hasKeep) {
    addCommaList(command, name, source.columns,
                 "The column of " + whose +
                     ", a name or a number from 1, or several, separated by commas, whose cells "
                     "are joined by blanks. A name with a comma goes in double quotes. The file "
                     "is then a table, whose quoted fields may span lines")
        .type_name("COLUMNS")
        ->group(kFilesGroup);
    if (!hasKeep) return;
    addCommaList(command, keepName, source.keep,
                 "Columns of " + whose + " to carry over into the output, separated by commas")
        .type_name("COLUMNS")
        ->group(kFilesGroup);
}

bool isName(std::string const& column) {
    return column.find_first_not_of("0123456789") != std::string::npos;
}

}  // namespace

void FileOptions::addTexts(CLI::App& command, bool hasKeep) {
    command
        .add_option("-t,--texts", texts_.file,
                    "The texts, one on each line; - reads standard input")
        ->type_name("FILE")
        ->required()
        ->group(kFilesGroup);
    addColumns(command, "--text-column", "--keep", "the texts", texts_, hasKeep);
}

void FileOptions::addEntries(CLI::App& command, bool hasKeep) {
    command
        .add_option("-e,--entries", entries_.file,
                    "The entries, one on each line; - reads standard input")
        ->type_name("FILE")
        ->group(kFilesGroup);
    addColumns(command, "--entry-column", "--keep-entry", "the entries", entries_, hasKeep);
}

void FileOptions::addFile(CLI::App& command) {
    command.add_option("FILE", texts_.file, "The texts, one on each line; - reads standard input")
        ->type_name("")
        ->required()
        ->group(kFilesGroup);
    addColumns(command, "--text-column", "--keep", "the texts", texts_, true);
    addReading(command);
}

void FileOptions::addIds(CLI::App& command) {
    auto const add = [&](char const* name, GivenSource& source, std::string const& whose) {
        command
            .add_option(name, source.id,
                        "The column with the ids of the " + whose +
                            ", which name them in pairs instead of line numbers")
            ->type_name("COLUMN")
            ->group(kFilesGroup);
    };
    add("--text-id", texts_, "texts");
    add("--entry-id", entries_, "entries");
}

KnownPairs::Naming FileOptions::pairNaming(bool isWithin, bool hasDecisions) const {
    bool const hasTextIds = !texts_.id.empty();
    return {hasTextIds, isWithin ? hasTextIds : !entries_.id.empty(), hasHeader_, isWithin,
            hasDecisions};
}

void FileOptions::validateWithin() const {
    for (auto const& [option, isGiven] : {std::pair("--entries", !entries_.file.empty()),
                                          {"--entry-column", entries_.isTable()},
                                          {"--entry-id", !entries_.id.empty()},
                                          {"--entry-encoding", !entries_.encoding.empty()}}) {
        if (isGiven) refuse(option, "has no effect beside --duplicates");
    }
}

void FileOptions::validateIds(bool hasPairs, std::string const& users) const {
    for (auto const& [option, columnOption, source] :
         {std::tuple("--text-id", "--text-column", &texts_),
          {"--entry-id", "--entry-column", &entries_}}) {
        if (source->id.empty()) continue;
        if (!hasPairs) refuse(option, "has no effect without " + users);
        if (!source->isTable()) {
            refuse(option, std::string("has no effect without ") + columnOption);
        }
    }
}

void FileOptions::addReading(CLI::App& command) {
    command
        .add_flag(
            "--header", hasHeader_,
            "The first row of a table names its columns, even if the options use numbers only")
        ->group(kFilesGroup);
    command
        .add_option(
            "-d,--delimiter", delimiter_,
            "What separates the columns of a table, in the input and in the format csv: one "
            "character, or the word tab. Between tabs quotes have no meaning, and \\\\, \\t, \\n "
            "and \\r are read as the format tsv writes them. Default: a comma; tabs in files named "
            ".tsv")
        ->type_name("C")
        ->check(delimiterCheck())
        ->group(kFilesGroup);
    command
        .add_option("--encoding", encoding_,
                    "The encoding of all files, such as windows-1251, utf-16 or koi8-r. Default: "
                    "UTF-8, unless a byte order mark says otherwise")
        ->type_name("NAME")
        ->group(kFilesGroup);
    if (command.get_option_no_throw("--texts") == nullptr) return;
    command
        .add_option("--entry-delimiter", entries_.delimiter,
                    "What separates the columns of the entries, if it differs")
        ->type_name("C")
        ->check(delimiterCheck())
        ->group(kFilesGroup);
    command
        .add_option("--text-encoding", texts_.encoding, "The encoding of the texts, if it differs")
        ->type_name("NAME")
        ->group(kFilesGroup);
    entries_.delimiterOption = "--entry-delimiter";
    texts_.encodingOption = "--text-encoding";
    entries_.encodingOption = "--entry-encoding";
    command
        .add_option("--entry-encoding", entries_.encoding,
                    "The encoding of the entries, if it differs")
        ->type_name("NAME")
        ->group(kFilesGroup);
}

void FileOptions::validate(bool isCsvOutput) const {
    bool const hasTable = texts_.isTable() || entries_.isTable();
    constexpr char const* kNoTable = "has no effect without --text-column or --entry-column";
    if (!hasTable && hasHeader_) refuse("--header", kNoTable);
    if (!hasTable && !delimiter_.empty() && !isCsvOutput) refuse("--delimiter", kNoTable);
    if (!entries_.isTable() && !entries_.delimiter.empty())
        refuse("--entry-delimiter", "has no effect without --entry-column");
    if (!texts_.isTable() && !texts_.keep.empty()) refuse("--keep", kNoTable);
    if (!entries_.isTable() && !entries_.keep.empty()) refuse("--keep-entry", kNoTable);
}

char FileOptions::delimiter() const {
    return delimiter_.empty() ? ',' : delimiterOf(delimiter_);
}

Source FileOptions::texts(bool isPart) const {
    Source source = this->source(texts_, "--text-column", entries_);
    source.file.isPart = source.layout.isPart = isPart;
    return source;
}

Source FileOptions::source(GivenSource const& given, std::string const& columnOption,
                           GivenSource const& other) const {
    Source source{{given.file, given.encoding.empty() ? encoding_ : given.encoding},
                  given.columns,
                  given.keep,
                  {},
                  given.id,
                  columnOption,
                  other.isTable()};
    source.file.encodingOption = given.encodingOption;
    source.layout.delimiterOption = given.delimiterOption;
    if (hasEnding(given.file, ".tsv")) source.layout.delimiter = '\t';
    std::string const& delimiter = given.delimiter.empty() ? delimiter_ : given.delimiter;
    if (!delimiter.empty()) source.layout.delimiter = delimiterOf(delimiter);
    source.layout.hasHeader = hasHeader_ || std::ranges::any_of(given.columns, isName) ||
                              std::ranges::any_of(given.keep, isName);
    source.layout.hasHeader |= isName(given.id);
    return source;
}

}  // namespace near_text
