#include "near_text/output/terminal_marks.h"

#include <unistd.h>

#include <cstdlib>
#include <string_view>

#include "near_text/messages/messages.h"

namespace near_text {

namespace {

constexpr char const* kDim = "\033[2m";
constexpr char const* kBold = "\033[1m";
constexpr char const* kDeleted = "\033[1;4;31m";   // underlined, red
constexpr char const* kInserted = "\033[1;4;32m";  // underlined, green
constexpr char const* kReplaced = "\033[1;7;35m";  // reversed, magenta
constexpr char const* kPlain = "\033[m";

char const* styleOf(Mark mark, char const* extra) {
    switch (mark) {
        case Mark::Same:
            return kBold;
        case Mark::Extra:
            return extra;
        case Mark::Replaced:
            return kReplaced;
        default:
            return kDim;
    }
}

// Spans are whole characters, so each is put on one line by itself.
std::string marked(std::string const& text, Spans const& spans, char const* extra) {
    if (spans.empty()) return onOneLine(text);
    std::string shown;
    char const* style = nullptr;
    for (Span const& span : spans) {
        char const* const next = styleOf(span.mark, extra);
        if (next != style) shown.append(style != nullptr ? kPlain : "").append(next);
        style = next;
        shown += onOneLine(text.substr(span.begin, span.end - span.begin));
    }
    return shown + kPlain;
}

std::string_view variable(char const* name) {
    char const* const value = std::getenv(name);
    return value != nullptr ? value : "";
}

}  // namespace

bool isColourTerminal() {
    return isatty(STDOUT_FILENO) == 1 && variable("NO_COLOR").empty() && variable("TERM") != "dumb";
}

std::string firstMarked(std::string const& text, Spans const& spans) {
    return marked(text, spans, kDeleted);
}

std::string secondMarked(std::string const& text, Spans const& spans) {
    return marked(text, spans, kInserted);
}

}  // namespace near_text
