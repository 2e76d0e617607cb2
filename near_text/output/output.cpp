// To a pipe, lines go in portions that it takes whole or not at all, and only when there is room
// for one: then a signal may come at any time, and no line is cut.
#include "near_text/output/output.h"

#include <fcntl.h>
#include <limits.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <stdexcept>

#include "near_text/messages/interrupt.h"

namespace near_text {

namespace {

constexpr std::size_t kBlock = 1 << 16;

struct stat statusOf(int descriptor) {
    struct stat status = {};
    fstat(descriptor, &status);
    return status;
}

bool isRegular(struct stat const& status) {
    return S_ISREG(status.st_mode);
}

// Once a signal came, a reader that does not take anything for a second is not waited for.
void waitForRoom() {
    constexpr int kPatience = 1000;  // in milliseconds
    pollfd watched[] = {{STDOUT_FILENO, POLLOUT, 0}, {signalDescriptor(), POLLIN, 0}};
    poll(watched, std::size(watched), -1);
    if (watched[0].revents != 0 || signalCaught() == 0) return;
    if (poll(watched, 1, kPatience) == 0) throw Interrupted();
}

// Shortens a file that a full disk has cut within a line, where it ends with what was written here.
void takeBack(std::size_t bytes) {
    off_t const end = lseek(STDOUT_FILENO, 0, SEEK_CUR);
    struct stat const file = statusOf(STDOUT_FILENO);
    bool const isAppended = (fcntl(STDOUT_FILENO, F_GETFL) & O_APPEND) != 0;
    if (bytes == 0 || !isRegular(file) || isAppended || file.st_size != end) return;
    off_t const whole = end - static_cast<off_t>(bytes);
    if (ftruncate(STDOUT_FILENO, whole) == 0) lseek(STDOUT_FILENO, whole, SEEK_SET);
}

}  // namespace

void holdStandardStreams() {
    for (int const stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        bool const isClosed = fcntl(stream, F_GETFD) < 0;
        // The lowest free number is the stream's own, opened for what nobody does with it.
        if (isClosed) open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY);
    }
}

Output::Output(std::string encodingName)
    : encoding_(std::move(encodingName)),
      mostAtOnce_(isRegular(statusOf(STDOUT_FILENO)) ? kBlock : PIPE_BUF) {
    if (!encoding_.empty()) encoder_.emplace(encoding_);
}

void Output::requireEncodable(std::string_view text) const {
    // What has been written must not depend on it.
    if (encoder_) Encoder(encoding_).encoded(text);
}

void Output::write(std::string_view text) {
    while (!text.empty()) {
        std::string_view const line =
            text.substr(0, std::min(text.find('\n'), text.size() - 1) + 1);
        if (encoder_) {
            waiting_ += encoder_->encoded(line);
        } else {
            waiting_ += line;
        }
        lineEnds_.push_back(waiting_.size());
        text.remove_prefix(line.size());
    }
    if (waiting_.size() >= kBlock) flush();
}

void Output::flush() {
    std::size_t begin = 0;
    for (std::size_t i = 0; i < lineEnds_.size(); ++i) {
        // As many lines as go at once, but one at least.
        bool const isLast = i + 1 == lineEnds_.size() || lineEnds_[i + 1] - begin > mostAtOnce_;
        if (!isLast) continue;
        writeOut(begin, lineEnds_[i]);
        begin = lineEnds_[i];
    }
    waiting_.clear();
    lineEnds_.clear();
}

void Output::writeOut(std::size_t begin, std::size_t end) {
    for (std::size_t done = begin; done < end;) {
        waitForRoom();
        ssize_t const count = ::write(STDOUT_FILENO, &waiting_[done], end - done);
        if (count >= 0) {
            done += static_cast<std::size_t>(count);
        } else if (errno == EPIPE) {
            throw BrokenPipe();
        } else if (errno != EINTR && errno != EAGAIN) {
            int const error = errno;
            takeBack(cutBytes(done));
            throw std::runtime_error("cannot write: " + (error == EBADF
                                                             ? "standard output is closed"
                                                             : std::string(std::strerror(error))));
        }
    }
}

// Of a line that was written in part, up to `end`.
std::size_t Output::cutBytes(std::size_t end) const {
    auto const behind = std::upper_bound(lineEnds_.begin(), lineEnds_.end(), end);
    return end - (behind == lineEnds_.begin() ? 0 : behind[-1]);
}

}  // namespace near_text
