#include "near_text/input.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <stdexcept>

#include "stand_in_host/text_codec.h"

namespace near_text {

namespace {

constexpr std::size_t kBlock = 1 << 16;
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

[[noreturn]] void fail(std::string const& name) {
    throw std::runtime_error(name + ": " + std::strerror(errno));
}

bool continuesCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

}  // namespace

std::string shownName(std::string const& file) {
    return file == kStandardInput ? "standard input" : file;
}

Input::Input(std::string const& file, int wake)
    : descriptor(STDIN_FILENO), wakeDescriptor(wake), fileName(shownName(file)) {
    static bool isStandardInputTaken = false;
    if (file == kStandardInput) {
        if (isStandardInputTaken) throw std::runtime_error("standard input can only be read once");
        isStandardInputTaken = true;
        return;
    }
    descriptor = open(file.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0) fail(fileName);
}

Input::~Input() {
    if (descriptor != STDIN_FILENO) close(descriptor);
}

std::size_t Input::read(char* buffer, std::size_t size) {
    while (true) {
        // A negative descriptor is never ready.
        pollfd watched[] = {{descriptor, POLLIN, 0}, {wakeDescriptor, POLLIN, 0}};
        int const ready = poll(watched, std::size(watched), -1);
        wasWoken = ready > 0 && watched[1].revents != 0;
        if (wasWoken) return 0;
        ssize_t const count = ready > 0 ? ::read(descriptor, buffer, size) : -1;
        if (count >= 0) return static_cast<std::size_t>(count);
        if (errno != EINTR && errno != EAGAIN) fail(fileName);
    }
}

std::string readWhole(std::string const& file) {
    Input input(file);
    std::string text;
    std::size_t count = 0;
    do {
        std::size_t const start = text.size();
        text.resize(start + kBlock);
        count = input.read(&text[start], kBlock);
        text.resize(start + count);
    } while (count > 0);
    if (text.starts_with(kByteOrderMark)) text.erase(0, kByteOrderMark.size());
    return text;
}

LineReader::LineReader(std::string const& file, std::size_t longestLine, int wakeDescriptor)
    : input(file, wakeDescriptor), longest(longestLine) {}

bool LineReader::refill() {
    buffer.resize(kBlock);
    buffer.resize(input.read(buffer.data(), kBlock));
    position = 0;
    return !buffer.empty();
}

void LineReader::append(std::string& text, std::string_view bytes) const {
    // Room for a byte order mark and a carriage return, which go again, and for one byte too many.
    constexpr std::size_t kSpare = 5;
    bool const isBounded = longest != std::string::npos;
    text += bytes.substr(0, isBounded ? longest + kSpare - text.size() : longest);
}

bool LineReader::next(Line& line) {
    line.text.clear();
    bool isEnded = false;
    while (!isEnded && (position < buffer.size() || refill())) {
        std::size_t const end = buffer.find('\n', position);
        isEnded = end != std::string::npos;
        append(line.text, std::string_view(buffer).substr(position, end - position));
        position = isEnded ? end + 1 : buffer.size();
    }
    if (!isEnded && (line.text.empty() || input.isWoken())) return false;
    line.number = ++number;
    if (number == 1 && line.text.starts_with(kByteOrderMark)) line.text.erase(0, 3);
    if (line.text.ends_with('\r')) line.text.pop_back();
    if (line.text.size() > longest) {
        // A character is four bytes at the most; what goes on longer is none, and stays to be
        // found.
        constexpr std::size_t kLongestTail = 3;
        std::size_t end = longest;
        while (end > 0 && longest - end < kLongestTail && continuesCharacter(line.text[end]))
            --end;
        line.text.resize(end);
    }
    return true;
}

std::string LineReader::place() const {
    return input.name() + ':' + std::to_string(number) + ": ";
}

std::u16string lineUnits(std::string_view line) {
    if (line.find('\0') != std::string_view::npos) throw stand_in_host::NotText("holds a NUL");
    return stand_in_host::toUnits(line);
}

std::optional<std::size_t> countLines(std::string const& file) {
    if (file == kStandardInput || !std::filesystem::is_regular_file(file)) return {};
    LineReader reader(file, 0);
    Line line;
    while (reader.next(line)) {
    }
    return line.number;
}

}  // namespace near_text
