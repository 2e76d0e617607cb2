#include "near_text/input/source.h"

#include "near_text/messages/messages.h"

namespace near_text {

RowReader::RowReader(Source const& source, std::size_t longest) {
    if (!source.isTable()) {
        lines_ = std::make_unique<LineReader>(source.file, longest);
        columnOption_ = source.columnOption;
        guess_.emplace(source.isBesideTable);
        std::string const& name = source.file.name;
        // A file of words may well be a table of one column.
        if (!columnOption_.empty() && (hasEnding(name, ".csv") || hasEnding(name, ".tsv")))
            noteTable();
        return;
    }
    table_ = std::make_unique<TableReader>(source.file, source.layout);
    if (source.layout.isPart && table_->isEmpty()) return;
    for (std::string const& column : source.columns)
        textColumns_.push_back(table_->column(column));
    for (std::string const& column : source.keep) {
        keptColumns_.push_back(table_->column(column));
        names_.push_back(source.layout.hasHeader ? table_->header()[keptColumns_.back()]
                                                 : std::to_string(keptColumns_.back() + 1));
    }
    if (!source.id.empty()) idColumn_ = table_->column(source.id);
}

bool RowReader::next(TextRow& row) {
    if (lines_) {
        if (!lines_->next(row)) return false;
        if (guess_ && guess_->isTable(row.text)) noteTable();
        row.share = lines_->share();
        return true;
    }
    if (!table_->next(fields_)) return false;
    row = {};
    row.share = table_->share();
    row.number = fields_.line;
    row.fault = fields_.fault;
    if (fields_.fields.empty()) return true;
    // What can be read of a row with a fault tells which row it is.
    for (std::size_t const column : keptColumns_)
        row.kept.push_back(readable(column));
    if (idColumn_) row.id = readable(*idColumn_);
    if (row.fault.empty()) row.text = text();
    return true;
}

void RowReader::noteTable() {
    guess_.reset();
    std::string const advice = columnOption_.empty() ? "a file of words alone is wanted"
                                                     : columnOption_ + " COLUMN takes a column";
    complain("note: " + lines_->name() + " seems to be a table, but whole lines of it are read; " +
             advice);
}

std::string RowReader::readable(std::size_t column) const {
    bool const isReadable = column < fields_.fields.size() && isText(fields_.fields[column]);
    return isReadable ? fields_.fields[column] : "";
}

std::string RowReader::text() const {
    std::string text;
    for (std::size_t const column : textColumns_) {
        std::string const& cell = fields_.fields[column];
        if (!text.empty() && !cell.empty()) text += ' ';
        text += cell;
    }
    return text;
}

std::string RowReader::place() const {
    return lines_ ? lines_->place() : table_->place(fields_);
}

}  // namespace near_text
