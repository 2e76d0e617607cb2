#include "near_text/output/match_format.h"

#include <algorithm>
#include <cstdio>
#include <stdexcept>

#include "near_text/input/table.h"
#include "near_text/input/text_codec.h"
#include "near_text/messages/messages.h"
#include "near_text/output/columns.h"

namespace near_text {

namespace {

constexpr char const* kColumns[] = {"line",  "text",       "percent", "distance", "limit",
                                    "index", "entry_line", "entry",   "error"};

std::string dumped(Json const& value) {
    return value.dump(-1, ' ', false, Json::error_handler_t::replace);
}

std::string cellOf(Json const& value) {
    if (value.is_null()) return {};
    return value.is_string() ? value.get<std::string>() : dumped(value);
}

Cells cellsOf(Json const& object) {
    Cells cells;
    for (auto const& value : object)
        cells.push_back(cellOf(value));
    return cells;
}

Cells keysOf(Json const& object) {
    Cells keys;
    for (auto const& item : object.items())
        keys.push_back(item.key());
    return keys;
}

// For eyes.

std::string noHeading(Shape const& /*shape*/) {
    return {};
}

std::string number(Shape const& shape, TextRow const& row) {
    return shape.isNumbered ? std::to_string(row.number) + "  " : std::string();
}

std::string textMatches(Shape const& shape, TextRow const& row, EntryList const& list,
                        std::vector<Match> const& matches) {
    std::string text = number(shape, row) + onOneLine(row.text) + '\n';
    std::vector<Match> nearestFirst = matches;
    sortByNearness(nearestFirst);
    for (Match const& match : nearestFirst)
        text += "    " + shownMatch(match, list.entries.at(match.index)) + '\n';
    if (matches.empty()) text += "       -\n";
    return text;
}

std::string textFailure(Shape const& shape, TextRow const& row, std::string const& error) {
    return number(shape, row) + "error: " + error + '\n';
}

// Numbers to the right, words to the left.
std::string textTable(Shape const& /*shape*/, Json const& like, std::vector<Json> const& rows) {
    if (rows.empty()) return {};
    std::vector<bool> isRight;
    for (auto const& value : like)
        isRight.push_back(!value.is_string());
    std::vector<Cells> lines = {keysOf(like)};
    for (Json const& row : rows) {
        lines.push_back(cellsOf(row));
        for (std::string& cell : lines.back())
            cell = onOneLine(cell);
    }
    return inColumns(lines, isRight);
}

// Tables.

std::string tsvText(Shape const& /*shape*/, Cells const& cells) {
    return tsvRow(cells);
}

std::string csvText(Shape const& shape, Cells const& cells) {
    return csvRow(cells, shape.delimiter);
}

using RowText = std::string (*)(Shape const& shape, Cells const& cells);

template <RowText rowText>
std::string tableHeading(Shape const& shape) {
    Cells cells(std::begin(kColumns), std::end(kColumns));
    cells.insert(cells.end(), shape.textColumns.begin(), shape.textColumns.end());
    cells.insert(cells.end(), shape.entryColumns.begin(), shape.entryColumns.end());
    return rowText(shape, cells);
}

Cells rowCells(Shape const& shape, TextRow const& row, std::string const& text) {
    return {shape.isNumbered ? std::to_string(row.number) : std::string(), text};
}

void appendKept(Cells& cells, Cells const& kept, std::size_t count) {
    cells.insert(cells.end(), kept.begin(), kept.end());
    cells.resize(cells.size() + count - kept.size());
}

// With nothing where an entry would stand.
template <RowText rowText>
std::string emptyRow(Shape const& shape, TextRow const& row, std::string const& text,
                     std::string const& error) {
    Cells cells = rowCells(shape, row, text);
    cells.resize(cells.size() + 6);
    cells.push_back(error);
    appendKept(cells, row.kept, shape.textColumns.size());
    appendKept(cells, {}, shape.entryColumns.size());
    return rowText(shape, cells);
}

template <RowText rowText>
std::string tableMatches(Shape const& shape, TextRow const& row, EntryList const& list,
                         std::vector<Match> const& matches) {
    if (matches.empty()) return emptyRow<rowText>(shape, row, row.text, {});
    std::string text;
    for (Match const& match : matches) {
        Entry const& entry = list.entries.at(match.index);
        Cells cells = rowCells(shape, row, row.text);
        for (unsigned long const value : {static_cast<unsigned long>(match.percent), match.distance,
                                          match.limit, match.index, entry.place})
            cells.push_back(std::to_string(value));
        cells.push_back(entry.text);
        cells.emplace_back();
        appendKept(cells, row.kept, shape.textColumns.size());
        appendKept(cells, entry.kept, shape.entryColumns.size());
        text += rowText(shape, cells);
    }
    return text;
}

template <RowText rowText>
std::string tableFailure(Shape const& shape, TextRow const& row, std::string const& error) {
    return emptyRow<rowText>(shape, row, {}, error);
}

template <RowText rowText>
std::string anyTable(Shape const& shape, Json const& like, std::vector<Json> const& rows) {
    std::string text = rowText(shape, keysOf(like));
    for (Json const& row : rows)
        text += rowText(shape, cellsOf(row));
    return text;
}

// Objects.

Json numberedObject(Shape const& shape, TextRow const& row) {
    Json object = Json::object();
    if (shape.isNumbered) object["line"] = row.number;
    return object;
}

void addKept(Json& object, Cells const& names, Cells const& kept) {
    for (std::size_t i = 0; i < std::min(names.size(), kept.size()); ++i)
        object["kept"][names[i]] = kept[i];
}

std::string jsonMatches(Shape const& shape, TextRow const& row, EntryList const& list,
                        std::vector<Match> const& matches) {
    Json object = numberedObject(shape, row);
    object["text"] = row.text;
    addKept(object, shape.textColumns, row.kept);
    Json& array = object["matches"] = Json::array();
    for (Match const& match : matches) {
        Entry const& entry = list.entries.at(match.index);
        array.push_back({{"index", match.index},
                         {"line", entry.place},
                         {"entry", entry.text},
                         {"percent", match.percent},
                         {"distance", match.distance},
                         {"limit", match.limit}});
        addKept(array.back(), shape.entryColumns, entry.kept);
    }
    return dumped(object) + '\n';
}

std::string jsonFailure(Shape const& shape, TextRow const& row, std::string const& error) {
    Json object = numberedObject(shape, row);
    object["error"] = error;
    addKept(object, shape.textColumns, row.kept);
    return dumped(object) + '\n';
}

std::string jsonTable(Shape const& /*shape*/, Json const& /*like*/, std::vector<Json> const& rows) {
    std::string text;
    for (Json const& row : rows)
        text += dumped(row) + '\n';
    return text;
}

constexpr Format kFormats[] = {
    {"text", false, false, noHeading, textMatches, textFailure, textTable},
    {"tsv", true, true, tableHeading<tsvText>, tableMatches<tsvText>, tableFailure<tsvText>,
     anyTable<tsvText>},
    {"csv", true, true, tableHeading<csvText>, tableMatches<csvText>, tableFailure<csvText>,
     anyTable<csvText>},
    {"json", true, false, noHeading, jsonMatches, jsonFailure, jsonTable},
};

}  // namespace

std::set<std::string> Shape::matchColumns() {
    return {std::begin(kColumns), std::end(kColumns)};
}

Shape::Shape(bool isNumberedOne, char csvDelimiter, Cells const& textNames, Cells const& entryNames,
             std::set<std::string> taken)
    : isNumbered(isNumberedOne), delimiter(csvDelimiter) {
    auto const free = [&](std::string name, std::string const& prefix) {
        bool const isNumber = name.find_first_not_of("0123456789") == std::string::npos;
        if (isNumber) name.insert(0, prefix);
        while (!taken.insert(name).second)
            name.insert(0, prefix);
        return name;
    };
    for (std::string const& name : textNames)
        textColumns.push_back(free(name, "text_"));
    for (std::string const& name : entryNames)
        entryColumns.push_back(free(name, "entry_"));
}

Format const& formatNamed(std::string const& name) {
    for (Format const& format : kFormats) {
        if (format.name == name) return format;
    }
    throw std::out_of_range("no format " + name);
}

std::vector<std::string> formatNames() {
    std::vector<std::string> names;
    for (Format const& format : kFormats)
        names.emplace_back(format.name);
    return names;
}

std::string shownMatch(Match const& match, Entry const& entry) {
    char numbers[160];
    std::snprintf(numbers, sizeof numbers, "%3d%%  %2lu of %-2lu  line %-5zu  index %-5lu  ",
                  match.percent, match.distance, match.limit, entry.place, match.index);
    return numbers + onOneLine(entry.text);
}

}  // namespace near_text
