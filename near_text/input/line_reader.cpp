#include "near_text/input/line_reader.h"

#include <filesystem>
#include <stdexcept>

#include "near_text/messages/messages.h"
#include "near_text/text/code_points.h"

namespace near_text {

namespace {

void requireNoNul(std::string_view line) {
    if (line.find('\0') != std::string_view::npos) throw NotText("contains a NUL");
}

bool continuesCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

}  // namespace

LineReader::LineReader(TextFile const& file, std::size_t longest)
    : input_(file), longest_(longest), lineEnds_(file.isPart ? "\n" : "") {}

void LineReader::chooseLineEnd() {
    constexpr std::size_t kEnough = 1 << 16;
    std::size_t feed = std::string::npos;
    try {
        for (std::size_t looked = 0; feed == std::string::npos && looked < kEnough;) {
            if (!input_.read(buffer_)) break;
            feed = buffer_.find('\n', looked);
            looked = buffer_.size();
        }
    } catch (std::runtime_error const&) {
        fault_ = std::current_exception();
    }
    // Others belong to the line feed behind them, which may be still to come.
    std::size_t const lone = buffer_.find_last_not_of("\r\n", feed);
    bool const hasReturn = lone != std::string::npos && buffer_.find('\r') < lone;
    lineEnds_ = hasReturn ? "\r\n" : "\n";
    if (hasReturn && feed != std::string::npos)
        complain("note: " + name() + ": its lines end in carriage returns and in line feeds");
}

bool LineReader::refill() {
    if (fault_) std::rethrow_exception(fault_);
    buffer_.clear();
    position_ = 0;
    return input_.read(buffer_);
}

// Of a carriage return, if it has one. Waits for what is behind it.
bool LineReader::takeFeed() {
    try {
        if (position_ == buffer_.size() && !refill()) return false;
    } catch (std::runtime_error const&) {
        fault_ = std::current_exception();
    }
    bool const isFeed = position_ < buffer_.size() && buffer_[position_] == '\n';
    if (isFeed) ++position_;
    return isFeed;
}

void LineReader::append(std::string& text, std::string_view bytes) const {
    // Room for a carriage return, which goes again, and for one byte too many.
    constexpr std::size_t kSpare = 2;
    bool const isBounded = longest_ != std::string::npos;
    text += bytes.substr(0, isBounded ? longest_ + kSpare - text.size() : longest_);
}

void LineReader::cut(std::string& text) const {
    // A character is four bytes at the most; what goes on longer is none, and stays to be found.
    constexpr std::size_t kLongestTail = 3;
    std::size_t end = longest_;
    while (end > 0 && longest_ - end < kLongestTail && continuesCharacter(text[end]))
        --end;
    text.resize(end);
}

bool LineReader::next(Line& line) {
    if (lineEnds_.empty()) chooseLineEnd();
    line.text.clear();
    bool isEnded = false;
    while (!isEnded && (position_ < buffer_.size() || refill())) {
        std::size_t const end = lineEnds_.size() == 1 ? buffer_.find(lineEnds_[0], position_)
                                                      : buffer_.find_first_of(lineEnds_, position_);
        isEnded = end != std::string::npos;
        append(line.text, std::string_view(buffer_).substr(position_, end - position_));
        position_ = isEnded ? end + 1 : buffer_.size();
    }
    if (!isEnded && line.text.empty()) return false;
    line.number = ++number_;
    bool const isFeed = !isEnded || buffer_[position_ - 1] == '\n';
    bool const hasReturn = isFeed ? line.text.ends_with('\r') : takeFeed();
    line.end = hasReturn ? "\r\n" : isFeed ? "\n" : "\r";
    if (isFeed && hasReturn) line.text.pop_back();
    if (line.text.size() > longest_) cut(line.text);
    line.fault = input_.faultOf(line.text);
    return true;
}

std::string LineReader::place() const {
    return placeOf(input_.name(), number_);
}

std::optional<double> LineReader::share() const {
    double const size = static_cast<double>(buffer_.size());
    return input_.share(size > 0 ? static_cast<double>(position_) / size : 1);
}

bool isText(std::string_view text) {
    for (std::size_t i = 0; i < text.size();) {
        if (text[i] == '\0' || nextCodePoint(text, i) < 0) return false;
    }
    return true;
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

}  // namespace near_text
