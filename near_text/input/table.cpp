#include "near_text/input/table.h"

#include <unicode/uchar.h>

#include <algorithm>
#include <limits>
#include <stdexcept>

#include "near_text/input/number.h"
#include "near_text/messages/messages.h"

namespace near_text {

namespace {

constexpr std::size_t kLongestRow = std::size_t{1} << 20;

std::string fieldCount(std::size_t count) {
    return std::to_string(count) + (count == 1 ? " field" : " fields");
}

char likelyDelimiter(std::string const& line) {
    for (char const c : {'\t', ';'}) {
        if (line.find(c) != std::string::npos) return c;
    }
    return ',';
}

std::string trimmed(std::string const& name) {
    std::u16string const units = toUnits(name);
    std::u16string_view rest = units;
    auto const isBlank = [](char16_t unit) { return u_isUWhiteSpace(unit) != 0; };
    while (!rest.empty() && isBlank(rest.front()))
        rest.remove_prefix(1);
    while (!rest.empty() && isBlank(rest.back()))
        rest.remove_suffix(1);
    return toUtf8(rest);
}

}  // namespace

char delimiterOf(std::string const& name) {
    if (name == "tab" || name == "\\t" || name == "\t") return '\t';
    bool const isUsable = name.size() == 1 && name[0] >= ' ' && name[0] < 127 && name[0] != '"';
    if (!isUsable) {
        throw std::runtime_error(
            '\'' + onOneLine(name) +
            "' is neither tab nor one printable ASCII character other than a double quote");
    }
    return name[0];
}

TableReader::TableReader(TextFile const& file, TableLayout layout)
    : layout_(std::move(layout)), reader_(file, kLongestRow) {
    hasFirst_ = read(first_);
    if (!layout_.hasHeader || (!hasFirst_ && layout_.isPart)) return;
    if (!hasFirst_) throw std::runtime_error(shownName(file.name) + ": has no header");
    if (!first_.fault.empty()) throw std::runtime_error(place(first_) + first_.fault);
    names_ = std::move(first_.fields);
    hasFirst_ = false;
}

std::size_t TableReader::column(std::string const& nameOrNumber) {
    std::size_t place = named(nameOrNumber, [](std::string const& name) { return name; });
    // As people see it, a name has no blanks around it.
    if (place == names_.size()) place = named(trimmed(nameOrNumber), trimmed);
    if (place == names_.size()) place = numbered(nameOrNumber);
    needed_ = std::max(needed_, place + 1);
    return place;
}

// As many as there are names when none is this, as `shown` has them.
std::size_t TableReader::named(std::string const& name,
                               std::string (*shown)(std::string const&)) const {
    auto const isIt = [&](std::string const& other) { return shown(other) == name; };
    auto const found = std::find_if(names_.begin(), names_.end(), isIt);
    if (found != names_.end() && std::find_if(found + 1, names_.end(), isIt) != names_.end()) {
        throw std::runtime_error(reader_.name() + ": several columns are called '" + name +
                                 "'; use a number, from 1");
    }
    return static_cast<std::size_t>(found - names_.begin());
}

std::size_t TableReader::numbered(std::string const& text) const {
    std::size_t most = std::numeric_limits<std::size_t>::max();
    if (layout_.hasHeader) {
        most = names_.size();
    } else if (hasFirst_ && first_.fault.empty()) {
        most = first_.fields.size();
    }
    auto const number = parseNumber<std::size_t>(text, 1, most);
    if (!number) refuseColumn(text);
    return *number - 1;
}

void TableReader::refuseColumn(std::string const& nameOrNumber) const {
    std::vector<std::string> const& columns = layout_.hasHeader ? names_ : first_.fields;
    std::string message = reader_.name() + ": there is no column '" + nameOrNumber + "'; ";
    if (layout_.hasHeader) {
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
    if (other != std::string::npos && layout_.delimiter != TableLayout::kGuessed) {
        std::string const delimiter(1, columns[0][other]);
        message += ". Is the " + layout_.delimiterOption + ' ' +
                   (delimiter == "\t" ? "tab" : '\'' + delimiter + '\'') + '?';
    }
    throw std::runtime_error(message);
}

bool TableReader::next(Row& row) {
    if (hasFirst_) {
        row = std::move(first_);
        hasFirst_ = false;
    } else if (!read(row)) {
        return false;
    }
    if (row.fault.empty() && row.fields.size() < needed_) {
        row.fault = "has " + fieldCount(row.fields.size()) + ", but column " +
                    std::to_string(needed_) + " is asked for";
    }
    return true;
}

std::string TableReader::place(Row const& row) const {
    return placeOf(reader_.name(), row.line);
}

bool TableReader::read(Row& row) {
    row = {};
    for (Line line; !isOver_ && reader_.next(line);) {
        if (row.line == 0 && line.text.empty()) continue;
        if (!parser_) {
            bool const isGuessed = layout_.delimiter == TableLayout::kGuessed;
            parser_.emplace(isGuessed ? likelyDelimiter(line.text) : layout_.delimiter);
        }
        if (row.line == 0) {
            row.line = quoteLine_ = line.number;
            bytes_ = 0;
            parser_->begin();
        }
        if (take(line, row)) return true;
    }
    if (row.line == 0 || isOver_) return false;
    leaveOpen(row);
    return true;
}

// True when the row is complete or has a fault that ends it.
bool TableReader::take(Line const& line, Row& row) {
    bytes_ += line.text.size() + 1;
    lastLine_ = line.number;
    bool const isFirst = line.number == row.line;
    if (bytes_ > kLongestRow) {
        if (isFirst) parser_->take(line.text);  // as far as it was read
        row.fault = "is longer than 1 MiB";
        row.fields = parser_->takeFields();
        if (!isFirst) leaveOpen(row);
        return true;
    }
    auto const blame = [&](std::string const& fault) {
        if (row.fault.empty())
            row.fault = (isFirst ? "" : "line " + std::to_string(line.number) + ": ") + fault;
    };
    try {
        requireText(line);
    } catch (NotText const& error) {
        blame(error.what());  // where the row ends still depends on its quotes
    }
    std::size_t const before = parser_->count();
    if (!parser_->take(line.text)) {
        blame("has text after the quote that closes field " + std::to_string(parser_->count() + 1));
        row.fields = parser_->takeFields();
        return true;
    }
    bool const isComplete = parser_->endLine(line.end);
    if (isComplete) {
        row.fields = parser_->takeFields();
    } else if (parser_->count() > before) {
        quoteLine_ = line.number;
    }
    return isComplete;
}

void TableReader::leaveOpen(Row& row) {
    row.fault = "the quote opened in line " + std::to_string(quoteLine_) + " is not closed";
    std::size_t const behind = lastLine_ - quoteLine_;
    if (bytes_ > kLongestRow) {
        row.fault += " within 1 MiB; nothing after it is read";
    } else {
        row.fields = parser_->takeFields();
        if (behind > 0) {
            row.fault += ", so no row is read in the " + std::to_string(behind) +
                         (behind == 1 ? " line behind it" : " lines behind it");
        }
    }
    isOver_ = true;
    if (layout_.isPart)
        throw std::runtime_error(place(row) + row.fault + ". Is a row cut between two parts?");
}

}  // namespace near_text
