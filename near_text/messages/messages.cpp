#include "near_text/messages/messages.h"

#include <poll.h>
#include <unicode/uchar.h>
#include <unistd.h>

#include <cstdio>
#include <cstring>

#include "near_text/text/code_points.h"

namespace near_text {

namespace {

// What would move the cursor, end the line or turn the direction of what follows.
bool isControl(CodePoint point) {
    auto const type = u_charType(point);
    return type == U_CONTROL_CHAR || type == U_LINE_SEPARATOR || type == U_PARAGRAPH_SEPARATOR ||
           u_hasBinaryProperty(point, UCHAR_BIDI_CONTROL) != 0;
}

// Over a line of progress, if one is drawn.
char const* beginning() {
    return isatty(STDERR_FILENO) == 1 ? "\r\033[Knear_text: " : "near_text: ";
}

std::string code(CodePoint point) {
    char text[16];
    std::snprintf(text, sizeof text, point < 0x80 ? "\\x%02X" : "\\u%04X",
                  static_cast<unsigned>(point));
    return text;
}

std::string withControlsAs(std::string (*shown)(CodePoint), std::string_view text) {
    std::string replaced;
    for (std::size_t i = 0; i < text.size();) {
        std::size_t const start = i;
        CodePoint const point = nextCodePoint(text, i);
        if (point >= 0 && isControl(point)) {
            replaced += shown(point);
        } else {
            replaced.append(text, start, i - start);
        }
    }
    return replaced;
}

// The start and the end tell what is wrong.
std::string shortened(std::string const& message) {
    constexpr std::size_t kStart = 1000, kEnd = 500;
    if (message.size() <= kStart + kEnd) return message;
    std::size_t start = kStart, end = message.size() - kEnd;
    while (start > 0 && U8_IS_TRAIL(message[start]))
        --start;
    while (end < message.size() && U8_IS_TRAIL(message[end]))
        ++end;
    return message.substr(0, start) + " ... " + message.substr(end);
}

}  // namespace

void complain(std::string const& message) {
    std::fputs((beginning() + withControlsAs(code, shortened(message)) + '\n').c_str(), stderr);
}

void complainAtOnce(char const* message) noexcept {
    for (char const* const part : {beginning(), message, "\n"}) {
        pollfd errors = {STDERR_FILENO, POLLOUT, 0};
        bool const isTaken =
            poll(&errors, 1, 0) == 1 && write(STDERR_FILENO, part, strlen(part)) > 0;
        if (!isTaken) return;
    }
}

void complainOfMemory() noexcept {
    for (char const* const part : {beginning(), "out of memory\n"})
        std::fputs(part, stderr);  // which has no buffer
}

std::string onOneLine(std::string const& text) {
    return withControlsAs([](CodePoint) { return std::string(" "); }, text);
}

}  // namespace near_text
