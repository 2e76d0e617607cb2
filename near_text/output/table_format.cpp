// A row a match under a heading; one row with the match left empty where there is none.
#include <iterator>

#include "near_text/output/delimited_row.h"
#include "near_text/output/format.h"

namespace near_text {

namespace {

class TableFormat : public Format {
public:
    explicit constexpr TableFormat(char const* itsName) : Format(itsName, true) {}

    std::string heading(RowLayout const& layout) const override {
        Cells cells(std::begin(RowLayout::kColumns), std::end(RowLayout::kColumns));
        if (layout.hasDecisions) cells.emplace_back(RowLayout::kDecisionColumn);
        cells.insert(cells.end(), layout.textColumns.begin(), layout.textColumns.end());
        cells.insert(cells.end(), layout.entryColumns.begin(), layout.entryColumns.end());
        return rowText(cells, layout.delimiter);
    }

    std::string matches(RowLayout const& layout, TextRow const& row, EntryList const& list,
                        std::vector<Match> const& matches) const override {
        if (matches.empty()) return emptyRow(layout, row, row.text, {});
        std::string text;
        for (Match const& match : matches) {
            Entry const entry = list.entry(match.index);
            Cells cells = firstCells(layout, row, row.text);
            for (unsigned long const value :
                 {static_cast<unsigned long>(match.percent), match.distance, match.limit,
                  match.index, entry.place})
                cells.push_back(std::to_string(value));
            cells.push_back(entry.text);
            cells.emplace_back();
            if (layout.hasDecisions)
                cells.emplace_back(match.isAccepted ? RowLayout::kAccepted : "");
            appendKept(cells, row.kept, layout.textColumns.size());
            appendKept(cells, entry.kept, layout.entryColumns.size());
            text += rowText(cells, layout.delimiter);
        }
        return text;
    }

    std::string failure(RowLayout const& layout, TextRow const& row,
                        std::string const& error) const override {
        return emptyRow(layout, row, {}, error);
    }

    std::string table(char delimiter, Table const& table) const override {
        Cells names;
        for (Table::Column const& column : table.columns)
            names.push_back(column.name);
        std::string text = rowText(names, delimiter);
        for (Cells const& row : table.rows)
            text += rowText(row, delimiter);
        return text;
    }

protected:
    ~TableFormat() = default;

private:
    virtual std::string rowText(Cells const& cells, char delimiter) const = 0;

    static Cells firstCells(RowLayout const& layout, TextRow const& row, std::string const& text) {
        return {layout.isNumbered ? std::to_string(row.number) : std::string(), text};
    }

    static void appendKept(Cells& cells, Cells const& kept, std::size_t count) {
        cells.insert(cells.end(), kept.begin(), kept.end());
        cells.resize(cells.size() + count - kept.size());
    }

    // With nothing where an entry would stand.
    std::string emptyRow(RowLayout const& layout, TextRow const& row, std::string const& text,
                         std::string const& error) const {
        Cells cells = firstCells(layout, row, text);
        cells.resize(std::size(RowLayout::kColumns) - 1);
        cells.push_back(error);
        if (layout.hasDecisions) cells.emplace_back();
        appendKept(cells, row.kept, layout.textColumns.size());
        appendKept(cells, {}, layout.entryColumns.size());
        return rowText(cells, layout.delimiter);
    }
};

class TsvFormat final : public TableFormat {
public:
    constexpr TsvFormat() : TableFormat("tsv") {}

private:
    std::string rowText(Cells const& cells, char /*delimiter*/) const override {
        return tsvRow(cells);
    }
};

class CsvFormat final : public TableFormat {
public:
    constexpr CsvFormat() : TableFormat("csv") {}

private:
    std::string rowText(Cells const& cells, char delimiter) const override {
        return csvRow(cells, delimiter);
    }
};

}  // namespace

Format const& tsvFormat() {
    static constexpr TsvFormat format;
    return format;
}

Format const& csvFormat() {
    static constexpr CsvFormat format;
    return format;
}

}  // namespace near_text
