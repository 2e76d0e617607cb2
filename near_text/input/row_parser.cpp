#include "near_text/input/row_parser.h"

#include <utility>

#include "near_text/input/tsv_escapes.h"

namespace near_text {

namespace {

void unescape(std::string& field) {
    for (std::size_t at = 0; (at = field.find('\\', at)) < field.size() - 1; ++at) {
        std::size_t const i = kEscapeLetters.find(field[at + 1]);
        if (i != std::string_view::npos) field.replace(at, 2, 1, kEscaped[i]);
    }
}

}  // namespace

bool RowParser::take(std::string_view line) {
    for (char const c : line) {
        bool const isQuote = c == '"' && delimiter_ != '\t';
        if (state_ == State::Quoted) {
            if (isQuote) {
                state_ = State::Closed;
            } else {
                field_ += c;
            }
        } else if (c == delimiter_) {
            endField();
        } else if (isQuote && state_ != State::Plain) {
            if (state_ == State::Closed) field_ += c;
            state_ = State::Quoted;
        } else if (state_ == State::Closed) {
            return false;
        } else {
            field_ += c;
            state_ = State::Plain;
        }
    }
    return true;
}

bool RowParser::endLine(std::string_view lineEnd) {
    bool const isRowEnd = state_ != State::Quoted;
    if (isRowEnd) {
        endField();
    } else {
        field_ += lineEnd;
    }
    return isRowEnd;
}

void RowParser::endField() {
    if (delimiter_ == '\t') unescape(field_);
    fields_.push_back(std::exchange(field_, {}));
    state_ = State::Begun;
}

std::vector<std::string> RowParser::takeFields() {
    state_ = State::Begun;
    field_.clear();
    return std::exchange(fields_, {});
}

}  // namespace near_text
