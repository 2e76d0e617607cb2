#include "near_text/progress.h"

#include <unistd.h>

#include <cmath>
#include <cstdio>

#include "near_text/input.h"

namespace near_text {

namespace {

constexpr std::chrono::milliseconds kPause(200);

std::string shownTime(double seconds) {
    long const whole = std::lround(seconds);
    char text[64];
    std::snprintf(text, sizeof text, "%ld:%02ld:%02ld", whole / 3600, whole / 60 % 60, whole % 60);
    return text;
}

}  // namespace

Progress::Progress(std::string const& file)
    : isShown(isatty(STDERR_FILENO) == 1),
      isOutputShown(isatty(STDOUT_FILENO) == 1),
      nextDraw(start + kPause) {
    if (isShown) total = countLines(file);
}

std::string Progress::text(Clock::time_point now) const {
    double const seconds = std::chrono::duration<double>(now - start).count();
    double const rate = static_cast<double>(done) / seconds;
    std::string line = std::to_string(done);
    if (total) line += " of " + std::to_string(*total);
    line += " lines, " + std::to_string(std::lround(rate)) + " a second";
    if (total && *total >= done) {
        line += ", " + shownTime(static_cast<double>(*total - done) / rate) + " left";
    }
    return line;
}

void Progress::step() {
    ++done;
    Clock::time_point const now = Clock::now();
    if (!isShown || now < nextDraw) return;
    std::fprintf(stderr, "\r%s\033[K", text(now).c_str());
    isDrawn = true;
    nextDraw = now + kPause;
}

void Progress::clear() {
    if (!isDrawn) return;
    std::fputs("\r\033[K", stderr);
    isDrawn = false;
    nextDraw = {};
}

void Progress::clearForOutput() {
    if (isOutputShown) clear();
}

}  // namespace near_text
