// To a pipe, lines go in portions that it takes whole or not at all, and only when there is room
// for one: then a signal may come at any time, and no line is cut. Of a line that is longer than a
// portion the rest follows as long as somebody takes it.
#include "near_text/output/output.h"

#include <fcntl.h>
#include <limits.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstring>
#include <mutex>
#include <stdexcept>

#include "near_text/messages/interrupt.h"

namespace near_text {

namespace {

constexpr std::size_t kBlock = 1 << 16;

std::timed_mutex mutex;     // of all outputs
Output* current = nullptr;  // guarded by it
std::atomic<std::size_t> written = 0;
std::atomic<bool> isLineCut = false;         // by a signal
std::atomic<bool> isAnyLost = false;         // likewise, of the lines that are done
std::atomic<std::ptrdiff_t> linesDone = -1;  // before a run

struct stat statusOf(int descriptor) {
    struct stat status = {};
    fstat(descriptor, &status);
    return status;
}

bool isRegular(struct stat const& status) {
    return S_ISREG(status.st_mode);
}

// Once a signal came, a reader that does not take anything for a while is not waited for.
bool waitForRoom() {
    constexpr int kPatience = 500;  // in milliseconds
    pollfd watched[] = {{STDOUT_FILENO, POLLOUT, 0}, {signalDescriptor(), POLLIN, 0}};
    poll(watched, std::size(watched), -1);
    return watched[0].revents != 0 || signalCaught() == 0 || poll(watched, 1, kPatience) != 0;
}

// Shortens a file that a full disk has cut within a line, where it ends with what was written here;
// others may write into it too. Gives what there is to say about that line.
std::string takeBack(std::size_t bytes) {
    if (bytes == 0) return {};
    off_t const end = lseek(STDOUT_FILENO, 0, SEEK_CUR);
    struct stat const file = statusOf(STDOUT_FILENO);
    off_t const whole = end - static_cast<off_t>(bytes);
    bool const isOwnEnd = isRegular(file) && file.st_size == end;
    if (!isOwnEnd || ftruncate(STDOUT_FILENO, whole) != 0) return "; the last line is cut";
    lseek(STDOUT_FILENO, whole, SEEK_SET);
    return "; the last line, which was cut, is taken back";
}

}  // namespace

void holdStandardStreams() {
    for (int const stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        bool const isClosed = fcntl(stream, F_GETFD) < 0;
        // The lowest free number is the stream's own, opened for what nobody does with it.
        if (isClosed) open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY);
    }
}

std::string shownLines(std::size_t count) {
    return std::to_string(count) + (count == 1 ? " line" : " lines");
}

void tellLinesDone(std::size_t count) {
    linesDone = static_cast<std::ptrdiff_t>(count);
}

std::string interruptedText() {
    std::string text = "interrupted";
    std::ptrdiff_t const done = linesDone;
    if (done >= 0 && !isAnyLost) text += " after " + shownLines(static_cast<std::size_t>(done));
    if (isLineCut) text += "; the last line of the output is cut, since nobody took it";
    return text;
}

Output::Output(std::string encodingName)
    : encoding_(std::move(encodingName)),
      mostAtOnce_(isRegular(statusOf(STDOUT_FILENO)) ? kBlock : PIPE_BUF) {
    if (!encoding_.empty()) encoder_.emplace(encoding_);
    std::lock_guard const lock(mutex);
    current = this;
}

Output::~Output() {
    std::lock_guard const lock(mutex);
    current = nullptr;
}

std::size_t Output::writtenBytes() {
    return written;
}

void Output::close(std::chrono::milliseconds patience) noexcept {
    bool const isIdle = mutex.try_lock_for(patience);  // for good
    isLineCut = isLineCut || !isIdle;
    isAnyLost = isAnyLost || !isIdle;
    try {
        if (isIdle && current != nullptr) current->flushWaiting();
    } catch (std::exception const&) {
        return;  // interruptedText has told
    }
}

void Output::requireEncodable(std::string_view text) const {
    // What has been written must not depend on it.
    if (encoder_) Encoder(encoding_).encoded(text);
}

std::string Output::dropUnencodable(std::vector<std::string>& cells) const {
    std::string reason;
    for (std::string& cell : cells) {
        try {
            requireEncodable(cell);
        } catch (NotText const& error) {
            cell.clear();
            if (reason.empty()) reason = error.what();
        }
    }
    return reason;
}

void Output::write(std::string_view text) {
    std::lock_guard const lock(mutex);
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
    if (waiting_.size() >= kBlock) flushWaiting();
}

void Output::flush() {
    std::lock_guard const lock(mutex);
    flushWaiting();
}

void Output::flushWaiting() {
    try {
        writeLines();
    } catch (...) {
        forget();  // or the next time would begin with it again
        throw;
    }
    forget();
}

void Output::forget() {
    waiting_.clear();
    lineEnds_.clear();
}

void Output::writeLines() {
    std::size_t begin = 0;
    for (std::size_t i = 0; i < lineEnds_.size(); ++i) {
        // As many lines as go at once, but one at least.
        bool const isLast = i + 1 == lineEnds_.size() || lineEnds_[i + 1] - begin > mostAtOnce_;
        if (!isLast) continue;
        writeOut(begin, lineEnds_[i]);
        begin = lineEnds_[i];
    }
}

void Output::writeOut(std::size_t begin, std::size_t end) {
    for (std::size_t done = begin; done < end;) {
        if (!waitForRoom()) {
            isAnyLost = true;
            isLineCut = cutBytes(done) > 0;
            throw Interrupted();
        }
        ssize_t const count =
            ::write(STDOUT_FILENO, &waiting_[done], std::min(end - done, mostAtOnce_));
        if (count >= 0) {
            done += static_cast<std::size_t>(count);
            written += static_cast<std::size_t>(count);
        } else if (errno == EPIPE) {
            throw BrokenPipe();
        } else if (errno != EINTR && errno != EAGAIN) {
            std::string const error =
                errno == EBADF ? "standard output is closed" : std::strerror(errno);
            throw std::runtime_error("cannot write: " + error + takeBack(cutBytes(done)));
        }
    }
}

// Of a line that was written in part, up to `end`.
std::size_t Output::cutBytes(std::size_t end) const {
    auto const behind = std::upper_bound(lineEnds_.begin(), lineEnds_.end(), end);
    return end - (behind == lineEnds_.begin() ? 0 : behind[-1]);
}

}  // namespace near_text
