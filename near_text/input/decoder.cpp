#include "near_text/input/decoder.h"

#include <unicode/ucnv.h>

#include <algorithm>
#include <stdexcept>

#include "near_text/input/text_codec.h"
#include "near_text/text/code_points.h"

namespace near_text {

namespace {

using namespace std::string_view_literals;

struct Mark {
    std::string_view bytes;
    char const* encoding;
};
// One that begins as another does stands ahead of it.
constexpr Mark kMarks[] = {{"\xEF\xBB\xBF", "utf-8"},
                           {"\xFF\xFE\0\0"sv, "utf-32le"},
                           {"\0\0\xFE\xFF"sv, "utf-32be"},
                           {"\xFF\xFE", "utf-16le"},
                           {"\xFE\xFF", "utf-16be"}};

}  // namespace

Decoder::Decoder(std::string const& encoding, std::string const& option)
    : option_(option), isGuessed_(encoding.empty()), guess_(option) {
    open(encoding);
    mayBeUtf8_ = converter_ != nullptr && !canonicalName(converter_).starts_with("UTF-");
}

void Decoder::open(std::string const& encoding) {
    encoding_ = encoding;
    converter_ = encoding.empty() ? nullptr : openConverter(encoding);
    if (converter_ != nullptr && canonicalName(converter_) == "UTF-8") converter_.reset();
}

void Decoder::decode(std::string_view bytes, std::string& utf8) {
    if (isBegun_) return convert(bytes, false, utf8);
    head_ += bytes;
    for (auto const& [mark, encoding] : kMarks) {
        if (head_.size() < mark.size() && mark.starts_with(head_)) return;
    }
    begin(utf8);
}

void Decoder::finish(std::string& utf8) {
    if (!isBegun_) begin(utf8);
    convert({}, true, utf8);
}

void Decoder::begin(std::string& utf8) {
    isBegun_ = true;
    for (auto const& [mark, encoding] : kMarks) {
        if (!head_.starts_with(mark)) continue;
        open(encoding);
        isGuessed_ = mayBeUtf8_ = false;
        head_.erase(0, mark.size());
        break;
    }
    if (converter_ != nullptr && canonicalName(converter_) == "UTF-16") {
        Uppers uppers;
        uppers.count(head_);
        converter_ = openConverter(uppers.even() > uppers.odd() ? "utf-16be" : "utf-16le");
    }
    convert(head_, false, utf8);
    head_.clear();
}

void Decoder::guess(std::string_view bytes) {
    hint_ = guess_.hintAfter(bytes);
    isGuessed_ = hint_.empty();
    if (isGuessed_ || hasAppended_) return;
    throw std::runtime_error(hint_ + "; " + option_ + " utf-8 tells where it is not");
}

void Decoder::checkIsNotUtf8(std::string_view bytes, bool isLast) {
    std::optional<bool> const isUtf8 = guess_.isUtf8(bytes, isLast);
    mayBeUtf8_ = !isUtf8;
    if (isUtf8 != true) return;
    hint_ = "is valid UTF-8, but read as " + encoding_ + "; " + guess_.adviceFor("utf-8");
}

void Decoder::convert(std::string_view bytes, bool isLast, std::string& utf8) {
    if (converter_ == nullptr) {
        if (isGuessed_) guess(bytes);
        utf8 += bytes;
        hasAppended_ |= !bytes.empty();
        return;
    }
    if (mayBeUtf8_) checkIsNotUtf8(bytes, isLast);
    char const* from = bytes.data();
    char const* const end = from + bytes.size();
    UErrorCode status = U_BUFFER_OVERFLOW_ERROR;
    while (U_FAILURE(status)) {
        status = U_ZERO_ERROR;
        char16_t units[1024];
        char16_t* to = units;
        ucnv_toUnicode(converter_.get(), &to, std::end(units), &from, end, nullptr,
                       static_cast<UBool>(isLast ? 1 : 0), &status);
        waiting_.append(units, to);
        bool const isHalf = !waiting_.empty() && U16_IS_LEAD(waiting_.back());
        std::size_t const whole = waiting_.size() - (isHalf ? 1 : 0);
        utf8 += toUtf8(std::u16string_view(waiting_).substr(0, whole));
        waiting_.erase(0, whole);
        if (U_FAILURE(status) && status != U_BUFFER_OVERFLOW_ERROR) utf8 += kNoCharacter;
    }
}

std::string Decoder::faultOf(std::string_view line) const {
    std::size_t const stray = converter_ == nullptr ? std::string::npos : line.find(kNoCharacter);
    if (stray == std::string::npos) return {};
    auto const isStart = [](char byte) { return !U8_IS_TRAIL(byte); };
    auto const before =
        std::count_if(line.begin(), line.begin() + static_cast<std::ptrdiff_t>(stray), isStart);
    return "not valid " + encoding_ + " at character " + std::to_string(before + 1);
}

}  // namespace near_text
