// A row of a table, a line at a time.
//
// Rows are as RFC 4180 describes them, with any ASCII character between the fields. A field in
// quotes may hold the delimiter, line feeds and doubled quotes. Beyond the RFC, a quote inside a
// field that is not in quotes stands for itself, and blanks at a field's ends are part of it.
// Between tabs quotes have no meaning, and the escapes of tsv_escapes.h stand for what they are
// there; any other backslash stands for itself.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace near_text {

class RowParser {
public:
    explicit RowParser(char delimiter) : delimiter_(delimiter) {}

    // The next line of the row, without its end. False at text after a quote that closes a field.
    bool take(std::string_view line);
    // True when the row ends with the line; else its end, inside quotes, is part of a field.
    bool endLine(std::string_view lineEnd);

    // Complete fields so far.
    std::size_t count() const { return fields_.size(); }
    // Those of the row; a new row begins.
    std::vector<std::string> takeFields();

private:
    // Of the field. Closed is behind a quote that either ends it or doubles the next one.
    enum class State { Begun, Plain, Quoted, Closed };

    void endField();

    char delimiter_;
    State state_ = State::Begun;
    std::string field_;
    std::vector<std::string> fields_;
};

}  // namespace near_text
