#include "near_text/output/progress.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <cmath>
#include <cstdio>
#include <vector>

namespace near_text {

namespace {

constexpr std::chrono::milliseconds kPause(200);

std::string shownTime(double seconds) {
    long const whole = std::lround(seconds);
    char text[64];
    std::snprintf(text, sizeof text, "%ld:%02ld:%02ld", whole / 3600, whole / 60 % 60, whole % 60);
    return text;
}

// What a line may take. It leaves the last column free, since many terminals go on to the next line
// there.
std::size_t lineColumns() {
    constexpr std::size_t kUsual = 80;
    winsize size = {};
    bool const isKnown = ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return (isKnown ? size.ws_col : kUsual) - 1;
}

}  // namespace

std::string progressText(std::size_t lines, std::optional<double> share, double seconds,
                         std::size_t columns) {
    std::string const count = std::to_string(lines);
    std::string const rate = std::to_string(std::lround(static_cast<double>(lines) / seconds));
    std::string const speed = count + " lines, " + rate + " a second";
    std::vector<std::string> forms = {speed, count + " lines", count};
    if (share && *share > 0) {
        std::string const percent = std::to_string(std::lround(100 * *share)) + '%';
        std::string const left = shownTime(seconds * (1 - *share) / *share) + " left";
        forms.insert(forms.begin(), {percent + ", " + speed + ", " + left, percent + ", " + left});
        forms.push_back(percent);
    }
    for (std::string const& form : forms) {
        if (form.size() <= columns) return form;
    }
    return {};
}

Progress::Progress()
    : isShown_(isatty(STDERR_FILENO) == 1),
      isOutputShown_(isatty(STDOUT_FILENO) == 1),
      nextDraw_(start_ + kPause) {}

void Progress::show(std::size_t lines, std::optional<double> share) {
    Clock::time_point const now = Clock::now();
    if (!isShown_ || now < nextDraw_) return;
    double const seconds = std::chrono::duration<double>(now - start_).count();
    std::string const text = progressText(lines, share, seconds, lineColumns());
    std::fprintf(stderr, "\r%s\033[K", text.c_str());
    isDrawn_ = true;
    nextDraw_ = now + kPause;
}

void Progress::clear() {
    if (!isDrawn_) return;
    std::fputs("\r\033[K", stderr);
    isDrawn_ = false;
    nextDraw_ = {};
}

void Progress::clearForOutput() {
    if (isOutputShown_) clear();
}

}  // namespace near_text
