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

// Over a line of progress, if one is drawn.
char const* beginning() {
    return isatty(STDERR_FILENO) == 1 ? "\r\033[Knear_text: " : "near_text: ";
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
    std::fputs((beginning() + escaped(message) + '\n').c_str(), stderr);
}

void complainOfMemory() noexcept {
    for (char const* const part : {beginning(), "out of memory\n"})
        std::fputs(part, stderr);  // which has no buffer
}

std::string onOneLine(std::string text) {
    std::replace_if(text.begin(), text.end(), isControl, ' ');
    return text;
}

}  // namespace near_text
