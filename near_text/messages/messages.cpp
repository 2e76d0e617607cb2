#include "near_text/messages/messages.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>

namespace near_text {

namespace {

bool isControl(char c) {
    constexpr char kDelete = 127;
    return (c >= 0 && c < ' ') || c == kDelete;
}

// Control characters, as file names may hold, are shown by their codes.
std::string escaped(std::string const& text) {
    std::string shown;
    for (char const c : text) {
        char code[8] = {c, '\0'};
        if (isControl(c)) std::snprintf(code, sizeof code, "\\x%02X", static_cast<unsigned>(c));
        shown += code;
    }
    return shown;
}

}  // namespace

void complain(std::string const& message) {
    // Over a line of progress, if one is drawn.
    char const* const begin = isatty(STDERR_FILENO) == 1 ? "\r\033[Knear_text: " : "near_text: ";
    std::fputs((begin + escaped(message) + '\n').c_str(), stderr);
}

std::string onOneLine(std::string text) {
    std::replace_if(text.begin(), text.end(), isControl, ' ');
    return text;
}

}  // namespace near_text
