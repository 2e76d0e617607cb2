#include "near_text/input/encoding_guess.h"

#include <unicode/ucnv.h>

#include <algorithm>

#include "near_text/input/converter.h"
#include "near_text/text/code_points.h"

namespace near_text {

namespace {

// Of what is looked at as one.
constexpr std::size_t kSample = 1 << 16;
constexpr std::size_t kFew = 4;

// `encoding` is one of bytes, each of which is a character.
std::u16string decoded(std::string const& encoding, std::string_view bytes) {
    std::u16string text(bytes.size(), u'\0');
    auto const size = static_cast<std::int32_t>(bytes.size());
    UErrorCode status = U_ZERO_ERROR;
    ucnv_toUChars(openConverter(encoding).get(), text.data(), size, bytes.data(), size, &status);
    return text;
}

// How Russian a text looks that is read in an encoding: the share, among what is beyond ASCII, of
// the letters that make up two thirds of Russian, counted where they stand by other letters. A
// wrong encoding of Russian gives other letters or none, Western text single ones.
double russianShare(std::string const& encoding, std::string_view bytes) {
    std::u16string const text = decoded(encoding, bytes);
    constexpr std::u16string_view kFrequent = u"оеаинтсрвлОЕАИНТСРВЛ";
    auto const isLetter = [&](std::size_t i) {
        return i < text.size() && text[i] >= u'\u0401' && text[i] <= u'\u0451';
    };
    double frequent = 0, all = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] < 0x80) continue;
        ++all;
        bool const isInWord = isLetter(i - 1) || isLetter(i + 1);
        if (isInWord && kFrequent.find(text[i]) != std::u16string_view::npos) ++frequent;
    }
    return frequent / all;
}

}  // namespace

void Uppers::count(std::string_view bytes) {
    constexpr char kFirstOfText = '\t';
    for (char const byte : bytes) {
        if (byte >= 0 && byte < kFirstOfText) ++at[places % at.size()];
        ++places;
    }
}

std::string const& EncodingGuess::hintAfter(std::string_view bytes) {
    if (told_.empty()) told_ = unitsHint(bytes);
    if (told_.empty()) told_ = binaryHint();
    if (told_.empty()) told_ = bytesHint(bytes);
    return told_;
}

std::string EncodingGuess::hintOf(std::string const& encoding) const {
    return "looks like " + encoding + ", not UTF-8: " + adviceFor(encoding);
}

std::string EncodingGuess::adviceFor(std::string const& encoding) const {
    std::string const others = option_ == "--encoding" ? " and all other files so" : "";
    return option_ + ' ' + encoding + " reads it" + others;
}

std::string EncodingGuess::unitsHint(std::string_view bytes) {
    constexpr std::size_t kMostBytesPerNull = 32;  // of UTF-16: it has blanks and line feeds
    if (uppers_.places >= kSample) uppers_ = {uppers_.places % uppers_.at.size(), {}};
    uppers_.count(bytes);
    // Of UTF-32 the two upper bytes of each character are nearly all.
    std::size_t const most = uppers_.places / 4 * 7 / 8;
    auto const [least, upper1, upper2, upper3] = uppers_.at;
    if (most >= kFew && least <= most / 8 && upper2 >= most && upper3 >= most)
        return hintOf("utf-32le");
    if (most >= kFew && upper3 <= most / 8 && least >= most && upper1 >= most)
        return hintOf("utf-32be");
    auto const [fewer, more] = std::minmax({uppers_.even(), uppers_.odd()});
    // UTF-8 may have control characters, but hardly NULs, or one at nearly every other place.
    bool const isNoText =
        bytes.find('\0') != std::string_view::npos || more >= uppers_.places / 2 * 7 / 8;
    bool const isLikely =
        isNoText && more >= kFew && more >= uppers_.places / kMostBytesPerNull && fewer <= more / 8;
    return isLikely ? hintOf(uppers_.even() > uppers_.odd() ? "utf-16be" : "utf-16le")
                    : std::string();
}

std::string EncodingGuess::binaryHint() const {
    constexpr std::size_t kMany = 32;
    std::size_t const count = uppers_.even() + uppers_.odd();
    bool const isLikely = count >= kMany && count >= uppers_.places / 8;
    return isLikely ? "looks binary, not like UTF-8: save it as text or CSV first" : "";
}

std::string EncodingGuess::bytesHint(std::string_view bytes) {
    if (sample_.size() >= kSample) return {};
    count(bytes);
    return strayBytes_ >= kFew && strayBytes_ > characters_ ? byteEncodingHint() : std::string();
}

void EncodingGuess::count(std::string_view bytes) {
    tail_ += bytes;
    std::size_t position = 0;
    // A character at the end may not be complete.
    while (position + U8_MAX_LENGTH <= tail_.size()) {
        std::size_t const start = position;
        bool const isCharacter = nextCodePoint(tail_, position) >= 0;
        if (isCharacter && position - start == 1) {
            if (!sample_.empty() && sample_.back() != ' ') sample_ += ' ';
            continue;
        }
        ++(isCharacter ? characters_ : strayBytes_);
        sample_.append(tail_, start, position - start);
    }
    tail_.erase(0, position);
}

// What to do about bytes that are no UTF-8 and no UTF-16.
std::string EncodingGuess::byteEncodingHint() const {
    constexpr double kRussian = 0.45;
    std::string likely;
    double best = kRussian;
    for (std::string const name : {"windows-1251", "koi8-r", "cp866"}) {
        double const share = russianShare(name, sample_);
        if (share > best) likely = name;
        best = std::max(best, share);
    }
    if (!likely.empty()) return hintOf(likely);
    return "is not UTF-8; " + option_ + " NAME reads others, such as windows-1252 or shift_jis";
}

std::optional<bool> EncodingGuess::isUtf8(std::string_view bytes, bool isLast) {
    count(bytes);
    // What is still in the tail is then counted too.
    if (isLast) count(std::string(U8_MAX_LENGTH - 1, '\n'));
    if (strayBytes_ > 0) return false;
    if (characters_ >= kFew) return true;
    if (isLast) return characters_ > 0;
    return {};
}

}  // namespace near_text
