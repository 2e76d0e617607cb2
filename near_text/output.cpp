#include "near_text/output.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <stdexcept>

namespace near_text {

void holdStandardStreams() {
    for (int const stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        bool const isClosed = fcntl(stream, F_GETFD) < 0;
        // The lowest free number is the stream's own, opened for what nobody does with it.
        if (isClosed) open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY);
    }
}

void Output::write(std::string_view text) {
    constexpr std::size_t kEnough = 1 << 16;
    if (encoder) {
        waiting += encoder->encoded(text);
    } else {
        waiting += text;
    }
    if (waiting.size() >= kEnough) flush();
}

void Output::flush() {
    std::string const text = std::move(waiting);
    waiting.clear();
    for (std::size_t done = 0; done < text.size();) {
        ssize_t const count = ::write(STDOUT_FILENO, &text[done], text.size() - done);
        if (count >= 0) {
            done += static_cast<std::size_t>(count);
        } else if (errno == EPIPE) {
            throw NobodyReads();
        } else if (errno != EINTR) {
            throw std::runtime_error(std::string("cannot write: ") + std::strerror(errno));
        }
    }
}

void complain(std::string const& message) {
    std::fputs(("near_text: " + message + '\n').c_str(), stderr);
}

std::string onOneLine(std::string text) {
    constexpr char kDelete = 127;
    auto const isControl = [](char c) { return (c >= 0 && c < ' ') || c == kDelete; };
    std::replace_if(text.begin(), text.end(), isControl, ' ');
    return text;
}

}  // namespace near_text
