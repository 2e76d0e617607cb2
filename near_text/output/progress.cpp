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

std::string progressText(std::size_t done, std::optional<std::size_t> total, double seconds,
                         std::size_t columns) {
    double const rate = static_cast<double>(done) / seconds;
    std::string const count = std::to_string(done);
    std::string const counts = count + (total ? " of " + std::to_string(*total) : "");
    std::string const speed = counts + " lines, " + std::to_string(std::lround(rate)) + " a second";
    std::vector<std::string> forms = {speed, counts + " lines", counts, count};
    if (total && *total >= done && done > 0) {
        std::string const left = shownTime(static_cast<double>(*total - done) / rate) + " left";
        forms.insert(forms.begin(), {speed + ", " + left, counts + ", " + left});
        forms.insert(forms.end() - 1, std::to_string(100 * done / *total) + '%');
    }
    for (std::string const& form : forms) {
        if (form.size() <= columns) return form;
    }
    return {};
}

Progress::Progress(TextFile const& file)
    : isShown_(isatty(STDERR_FILENO) == 1),
      isOutputShown_(isatty(STDOUT_FILENO) == 1),
      nextDraw_(start_ + kPause) {
    if (isShown_) total_ = countLines(file);
}

void Progress::show(std::size_t done) {
    Clock::time_point const now = Clock::now();
    if (!isShown_ || now < nextDraw_) return;
    double const seconds = std::chrono::duration<double>(now - start_).count();
    std::string const text = progressText(done, total_, seconds, lineColumns());
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
