#include "near_text/input/byte_input.h"

#include <fcntl.h>
#include <poll.h>
#include <strings.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <stdexcept>

#include "near_text/messages/interrupt.h"

namespace near_text {

namespace {

[[noreturn]] void fail(std::string const& name) {
    if (errno == EBADF) throw std::runtime_error(name + " is closed");
    throw std::runtime_error(name + ": " + std::strerror(errno));
}

std::optional<std::uintmax_t> bytesLeft(int descriptor) {
    struct stat status = {};
    if (fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) return {};
    off_t const left = status.st_size - lseek(descriptor, 0, SEEK_CUR);
    // Some files of the system's have no size, and hold something.
    if (left <= 0) return {};
    return static_cast<std::uintmax_t>(left);
}

bool isSameFile(int input, int output) {
    struct stat from = {}, to = {};
    return fstat(input, &from) == 0 && fstat(output, &to) == 0 && S_ISREG(from.st_mode) &&
           from.st_dev == to.st_dev && from.st_ino == to.st_ino;
}

}  // namespace

std::string shownName(std::string const& file) {
    return file == kStandardInput ? "standard input" : file;
}

bool hasEnding(std::string_view file, std::string_view ending) {
    return file.size() >= ending.size() &&
           strncasecmp(&file[file.size() - ending.size()], ending.data(), ending.size()) == 0;
}

std::string placeOf(std::string const& name, std::size_t line) {
    return name + ':' + std::to_string(line) + ": ";
}

ByteInput::ByteInput(std::string const& file) : descriptor_(STDIN_FILENO), name_(shownName(file)) {
    static bool isStandardInputTaken = false;
    if (file == kStandardInput) {
        if (isStandardInputTaken) throw std::runtime_error("standard input can only be read once");
        isStandardInputTaken = true;
    } else {
        // Or else it would wait here for the writer of a pipe, where no signal could end that.
        descriptor_ = open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
        if (descriptor_ < 0) fail(name_);
    }
    if (isSameFile(descriptor_, STDOUT_FILENO))
        throw std::runtime_error(name_ + ": is also the output");
    if (isSameFile(descriptor_, STDERR_FILENO))
        throw std::runtime_error(name_ + ": is also where messages go");
    size_ = bytesLeft(descriptor_);
}

ByteInput::~ByteInput() {
    if (descriptor_ != STDIN_FILENO) close(descriptor_);
}

std::size_t ByteInput::read(char* buffer, std::size_t size) {
    while (true) {
        // A negative descriptor is never ready.
        pollfd watched[] = {{descriptor_, POLLIN, 0}, {signalDescriptor(), POLLIN, 0}};
        int const ready = poll(watched, std::size(watched), -1);
        if (ready > 0 && watched[1].revents != 0) throw Interrupted();
        ssize_t const count = ready > 0 ? ::read(descriptor_, buffer, size) : -1;
        if (count >= 0) return static_cast<std::size_t>(count);
        if (errno != EINTR && errno != EAGAIN) fail(name_);
    }
}

}  // namespace near_text
