#include "near_text/output/delimited_row.h"

#include "near_text/input/tsv_escapes.h"

namespace near_text {

namespace {

std::string quoted(std::string const& field) {
    std::string text = "\"";
    for (char const c : field)
        text.append(c == '"' ? 2 : 1, c);
    return text + '"';
}

}  // namespace

std::string tsvRow(std::vector<std::string> const& fields) {
    std::string row;
    for (std::string const& field : fields) {
        for (char const c : field) {
            std::size_t const i = kEscaped.find(c);
            if (i != std::string_view::npos) row += '\\';
            row += i == std::string_view::npos ? c : kEscapeLetters[i];
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
        row += isQuoted ? quoted(field) : field;
        row += delimiter;
    }
    if (!row.empty()) row.pop_back();
    return row + '\n';
}

}  // namespace near_text
