#include "near_text/output/output.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <cerrno>
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

Output::Output(std::string const& encodingName) : encoding(encodingName) {
    if (!encoding.empty()) encoder.emplace(encoding);
}

void Output::requireEncodable(std::string_view text) const {
    // What has been written must not depend on it.
    if (encoder) Encoder(encoding).encoded(text);
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
        } else if (errno == EAGAIN) {
            pollfd watched = {STDOUT_FILENO, POLLOUT, 0};
            poll(&watched, 1, -1);
        } else if (errno == EPIPE) {
            throw NobodyReads();
        } else if (errno != EINTR) {
            throw std::runtime_error("cannot write: " + (errno == EBADF
                                                             ? "standard output is closed"
                                                             : std::string(std::strerror(errno))));
        }
    }
}

}  // namespace near_text
