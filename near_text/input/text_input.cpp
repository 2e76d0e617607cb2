#include "near_text/input/text_input.h"

#include <algorithm>
#include <sstream>
#include <stdexcept>

#include "near_text/input/file_kind.h"
#include "near_text/messages/messages.h"

namespace near_text {

TextInput::TextInput(TextFile const& file)
    : input_(file.name),
      decoder_(file.isPart && file.encoding.empty() ? "utf-8" : file.encoding, file.encodingOption),
      mayBeNoText_(file.encoding != "utf-8" && !file.isPart),
      encodingOption_(file.encodingOption) {}

bool TextInput::read(std::string& utf8) {
    constexpr std::size_t kBlock = 1 << 16;
    std::size_t const start = utf8.size();
    while (!isEnded_ && utf8.size() == start) {
        bytesBefore_ += block_.size();
        block_.resize(kBlock);
        block_.resize(input_.read(block_.data(), kBlock));
        isEnded_ = block_.empty();
        if (mayBeNoText_ && bytesBefore_ == 0) {
            std::string const hint = notTextHint(block_);
            if (!hint.empty()) {
                throw std::runtime_error(name() + ": " + hint + " (" + encodingOption_ +
                                         " utf-8 reads it all the same)");
            }
        }
        try {
            if (!isEnded_) {
                decoder_.decode(block_, utf8);
            } else {
                decoder_.finish(utf8);
            }
        } catch (std::runtime_error const& error) {
            throw std::runtime_error(name() + ": " + error.what());
        }
        std::string const hint = decoder_.takeHint();
        if (!hint.empty()) complain("note: " + name() + ": " + hint);
    }
    return utf8.size() > start;
}

std::optional<double> TextInput::share(double taken) const {
    if (!input_.size()) return {};
    double const done =
        static_cast<double>(bytesBefore_) + taken * static_cast<double>(block_.size());
    // A file may grow while it is read.
    return std::min(1.0, done / static_cast<double>(*input_.size()));
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

}  // namespace near_text
