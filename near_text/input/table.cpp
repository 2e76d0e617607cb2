// libcsv is fed line by line, so that the line in which a row begins is known. It calls back when a
// field or a row is complete. A line that completes no row ended inside quotes.
#include "near_text/input/table.h"

#include <csv.h>

#include <algorithm>
#include <charconv>
#include <new>
#include <stdexcept>

#include "near_text/messages/messages.h"

namespace near_text {

namespace {

constexpr std::size_t kLongestRow = std::size_t{1} << 20;

int never(unsigned char) {
    return 0;
}

int isReturn(unsigned char c) {
    return c == CSV_CR ? 1 : 0;
}

int isLineFeed(unsigned char c) {
    return c == CSV_LF ? 1 : 0;
}

std::string fieldCount(std::size_t count) {
    return std::to_string(count) + (count == 1 ? " field" : " fields");
}

char likelyDelimiter(std::string const& line) {
    for (char const c : {'\t', ';'}) {
        if (line.find(c) != std::string::npos) return c;
    }
    return ',';
}

constexpr std::string_view kEscaped = "\\\t\n\r";
constexpr std::string_view kLetters = "\\tnr";

void unescape(std::vector<std::string>& fields) {
    for (std::string& field : fields) {
        for (std::size_t at = 0; (at = field.find('\\', at)) < field.size() - 1; ++at) {
            std::size_t const i = kLetters.find(field[at + 1]);
            if (i != std::string_view::npos) field.replace(at, 2, 1, kEscaped[i]);
        }
    }
}

}  // namespace

char delimiterOf(std::string const& name) {
    if (name == "tab" || name == "\\t" || name == "\t") return '\t';
    bool const isUsable = name.size() == 1 && name[0] >= ' ' && name[0] < 127 && name[0] != '"';
    if (!isUsable) {
        throw std::runtime_error('\'' + onOneLine(name) +
                                 "' is neither one ASCII character nor tab");
    }
    return name[0];
}

TableReader::TableReader(TextFile const& file, TableShape tableShape, int wakeDescriptor)
    : shape(tableShape), reader(file, kLongestRow, wakeDescriptor), parser(new csv_parser{}) {
    csv_init(parser.get(), CSV_STRICT);
    if (shape.delimiter != TableShape::kGuessed) separateBy(shape.delimiter);
    csv_set_space_func(parser.get(), never);
    csv_set_term_func(parser.get(), isLineFeed);
    hasFirst = read(first);
    if (!shape.hasHeader || reader.isWoken()) return;
    if (!hasFirst) throw std::runtime_error(shownName(file.name) + ": has no header");
    if (!first.fault.empty()) throw std::runtime_error(place(first) + first.fault);
    names = std::move(first.fields);
    hasFirst = false;
}

void TableReader::separateBy(char delimiter) {
    shape.delimiter = delimiter;
    csv_set_delim(parser.get(), static_cast<unsigned char>(delimiter));
    // Lines with a NUL are not fed.
    if (delimiter == '\t') csv_set_quote(parser.get(), '\0');
}

void TableReader::CloseParser::operator()(csv_parser* closed) const {
    csv_free(closed);
    delete closed;
}

std::size_t TableReader::column(std::string const& nameOrNumber) {
    std::size_t place = names.size();
    auto const found = std::find(names.begin(), names.end(), nameOrNumber);
    if (found != names.end()) {
        if (std::find(found + 1, names.end(), nameOrNumber) != names.end()) {
            throw std::runtime_error(reader.name() + ": several columns are called '" +
                                     nameOrNumber + "'; use a number, from 1");
        }
        place = static_cast<std::size_t>(found - names.begin());
    } else {
        std::size_t number = 0;
        char const* const end = nameOrNumber.data() + nameOrNumber.size();
        auto const parsed = std::from_chars(nameOrNumber.data(), end, number);
        bool const isNumber = parsed.ec == std::errc() && parsed.ptr == end && number > 0;
        std::size_t const most = shape.hasHeader                   ? names.size()
                                 : hasFirst && first.fault.empty() ? first.fields.size()
                                                                   : number;
        if (!isNumber || number > most) refuseColumn(nameOrNumber);
        place = number - 1;
    }
    needed = std::max(needed, place + 1);
    return place;
}

void TableReader::refuseColumn(std::string const& nameOrNumber) const {
    std::vector<std::string> const& columns = shape.hasHeader ? names : first.fields;
    std::string message = reader.name() + ": there is no column '" + nameOrNumber + "'; ";
    if (shape.hasHeader) {
        std::string list;
        for (std::string const& name : columns)
            list += (list.empty() ? "" : ", ") + onOneLine(name);
        message += "the header has " + list;
    } else if (nameOrNumber.find_first_not_of("0123456789") != std::string::npos) {
        message += "names need a table with a --header, else columns have numbers from 1";
    } else {
        message += "the first row has " + fieldCount(columns.size());
    }
    std::size_t const other =
        columns.size() == 1 ? columns[0].find_first_of(",;\t|") : std::string::npos;
    if (other != std::string::npos) {
        std::string const delimiter(1, columns[0][other]);
        message +=
            ". Is the --delimiter " + (delimiter == "\t" ? "tab" : '\'' + delimiter + '\'') + '?';
    }
    throw std::runtime_error(message);
}

bool TableReader::next(Row& row) {
    if (hasFirst) {
        row = std::move(first);
        hasFirst = false;
    } else if (!read(row)) {
        return false;
    }
    if (row.fault.empty() && row.fields.size() < needed) {
        row.fault = "has " + fieldCount(row.fields.size()) + ", but column " +
                    std::to_string(needed) + " is asked for";
    }
    return true;
}

std::string TableReader::place(Row const& row) const {
    return placeOf(reader.name(), row.line);
}

bool TableReader::read(Row& row) {
    row = {};
    for (Line line; !isOver && reader.next(line);) {
        if (row.line == 0 && line.text.empty()) continue;
        if (shape.delimiter == TableShape::kGuessed) separateBy(likelyDelimiter(line.text));
        if (row.line == 0) row.line = quoteLine = line.number;
        if (!take(line, row)) continue;
        if (row.fault.empty()) row.fields = std::move(fields);
        if (shape.delimiter == '\t') unescape(row.fields);
        reset();
        return true;
    }
    if (row.line == 0 || isOver || reader.isWoken()) return false;
    leaveOpen(row);
    return true;
}

// True when the row is complete or has a fault that ends it.
bool TableReader::take(Line const& line, Row& row) {
    bytes += line.text.size() + 1;
    bool const isFirst = line.number == row.line;
    if (bytes > kLongestRow) {
        row.fault = "is longer than 1 MiB";
        if (!isFirst) leaveOpen(row);
        return true;
    }
    std::string text = line.text;
    auto const blame = [&](std::string const& fault) {
        if (row.fault.empty())
            row.fault = (isFirst ? "" : "line " + std::to_string(line.number) + ": ") + fault;
    };
    try {
        requireText(line);
    } catch (NotText const& error) {
        blame(error.what());
        // Where the row ends still depends on its quotes.
        auto const isStray = [](char byte) { return byte <= 0; };
        std::replace_if(text.begin(), text.end(), isStray, '?');
    }
    std::size_t const before = fields.size();
    if (!feed(text)) {
        blame("has text after the quote that closes field " + std::to_string(fields.size() + 1));
        return true;
    }
    if (line.hadReturn) {
        csv_set_term_func(parser.get(), isReturn);
        feed("\r");
        csv_set_term_func(parser.get(), isLineFeed);
    }
    if (!isComplete) feed("\n");
    if (fields.size() > before) quoteLine = line.number;
    return isComplete;
}

// False at a byte behind a closing quote.
bool TableReader::feed(std::string_view text) {
    auto const onField = [](void* field, std::size_t size, void* self) {
        static_cast<TableReader*>(self)->fields.emplace_back(static_cast<char const*>(field), size);
    };
    auto const onRow = [](int, void* self) { static_cast<TableReader*>(self)->isComplete = true; };
    auto const parse = [&](std::size_t size) {
        text.remove_prefix(csv_parse(parser.get(), text.data(), size, onField, onRow, this));
    };
    while (true) {
        parse(text.size());
        if (text.empty()) return true;
        if (csv_error(parser.get()) != CSV_EPARSE) throw std::bad_alloc();
        if (text[0] != CSV_QUOTE) return false;
        // A quote inside a field that is not in quotes.
        csv_set_opts(parser.get(), 0);
        parse(1);
        csv_set_opts(parser.get(), CSV_STRICT);
    }
}

void TableReader::leaveOpen(Row& row) {
    row.fault = "the quote opened in line " + std::to_string(quoteLine) + " is not closed";
    if (bytes > kLongestRow) row.fault += " within 1 MiB; nothing after it is read";
    isOver = true;
}

void TableReader::reset() {
    csv_fini(parser.get(), nullptr, nullptr, nullptr);
    fields.clear();
    isComplete = false;
    bytes = 0;
}

std::string tsvRow(std::vector<std::string> const& fields) {
    std::string row;
    for (std::string const& field : fields) {
        for (char const c : field) {
            std::size_t const i = kEscaped.find(c);
            if (i != std::string_view::npos) row += '\\';
            row += i == std::string_view::npos ? c : kLetters[i];
        }
        row += '\t';
    }
    if (!row.empty()) row.pop_back();
    return row + '\n';
}

std::string csvRow(std::vector<std::string> const& fields, char delimiter) {
    std::string const special = std::string("\"\r\n") + delimiter;
    std::string row;
    for (std::string const& field : fields) {
        bool const isBlankAtEnd = field.starts_with(' ') || field.ends_with(' ');
        bool const isQuoted = isBlankAtEnd || field.find_first_of(special) != std::string::npos ||
                              (field.empty() && fields.size() == 1);
        if (isQuoted) {
            std::string quoted(2 * field.size() + 2, '\0');
            quoted.resize(csv_write(quoted.data(), quoted.size(), field.data(), field.size()));
            row += quoted;
        } else {
            row += field;
        }
        row += delimiter;
    }
    if (!row.empty()) row.pop_back();
    return row + '\n';
}

}  // namespace near_text
