#include "near_text/input/input.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <sstream>
#include <stdexcept>

#include "near_text/input/text_codec.h"
#include "near_text/messages/messages.h"

namespace near_text {

namespace {

constexpr std::size_t kBlock = 1 << 16;

[[noreturn]] void fail(std::string const& name) {
    if (errno == EBADF) throw std::runtime_error(name + " is closed");
    throw std::runtime_error(name + ": " + std::strerror(errno));
}

void requireNoNul(std::string_view line) {
    if (line.find('\0') != std::string_view::npos) throw NotText("contains a NUL");
}

bool continuesCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

}  // namespace

std::string shownName(std::string const& file) {
    return file == kStandardInput ? "standard input" : file;
}

std::string placeOf(std::string const& name, std::size_t line) {
    return name + ':' + std::to_string(line) + ": ";
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

TextInput::TextInput(TextFile const& file, int wake)
    : input(file.name, wake), decoder(file.encoding) {}

bool TextInput::read(std::string& utf8) {
    std::size_t const start = utf8.size();
    while (!isEnded && utf8.size() == start) {
        block.resize(kBlock);
        block.resize(input.read(block.data(), kBlock));
        isEnded = block.empty();
        try {
            if (!isEnded) {
                decoder.decode(block, utf8);
            } else if (!isWoken()) {
                decoder.finish(utf8);
            }
        } catch (std::runtime_error const& error) {
            throw std::runtime_error(name() + ": " + error.what());
        }
        std::string const hint = decoder.takeHint();
        if (!hint.empty()) complain(name() + ": " + hint);
    }
    return utf8.size() > start;
}

std::string readWhole(TextFile const& file) {
    TextInput input(file);
    std::string text;
    while (input.read(text)) {
    }
    if (input.faultOf(text).empty()) return text;
    std::istringstream lines(text);
    std::string line;
    std::size_t number = 0;
    while (input.faultOf(line).empty() && std::getline(lines, line))
        ++number;
    throw std::runtime_error(placeOf(input.name(), number) + input.faultOf(line));
}

LineReader::LineReader(TextFile const& file, std::size_t longestLine, int wakeDescriptor)
    : input(file, wakeDescriptor), longest(longestLine) {}

bool LineReader::refill() {
    buffer.clear();
    position = 0;
    return input.read(buffer);
}

void LineReader::append(std::string& text, std::string_view bytes) const {
    // Room for a carriage return, which goes again, and for one byte too many.
    constexpr std::size_t kSpare = 2;
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
    line.hadReturn = line.text.ends_with('\r');
    if (line.hadReturn) line.text.pop_back();
    if (line.text.size() > longest) {
        // A character is four bytes at the most; what goes on longer is none, and stays to be
        // found.
        constexpr std::size_t kLongestTail = 3;
        std::size_t end = longest;
        while (end > 0 && longest - end < kLongestTail && continuesCharacter(line.text[end]))
            --end;
        line.text.resize(end);
    }
    line.fault = input.faultOf(line.text);
    return true;
}

std::string LineReader::place() const {
    return placeOf(input.name(), number);
}

void requireText(Line const& line) {
    if (!line.fault.empty()) throw NotText(line.fault);
    requireNoNul(line.text);
    requireUtf8(line.text);
}

std::u16string lineUnits(std::string_view line) {
    requireNoNul(line);
    return toUnits(line);
}

std::u16string lineUnits(Line const& line) {
    if (!line.fault.empty()) throw NotText(line.fault);
    return lineUnits(line.text);
}

std::optional<std::size_t> countLines(TextFile const& file) {
    if (file.name == kStandardInput || !std::filesystem::is_regular_file(file.name)) return {};
    // What the file looks like is for its reader to tell.
    LineReader reader({file.name, file.encoding.empty() ? "utf-8" : file.encoding}, 0);
    Line line;
    while (reader.next(line)) {
    }
    return line.number;
}

}  // namespace near_text
