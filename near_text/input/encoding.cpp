#include "near_text/input/encoding.h"

#include <unicode/ucnv.h>
#include <unicode/ucnv_err.h>

#include <algorithm>
#include <cstdio>
#include <stdexcept>

#include "near_text/input/code_points.h"

namespace near_text {

namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view kLittleEndianMark = "\xFF\xFE";
constexpr std::string_view kBigEndianMark = "\xFE\xFF";

std::string canonicalName(Converter const& converter) {
    UErrorCode status = U_ZERO_ERROR;
    return converter == nullptr ? "UTF-8" : ucnv_getName(converter.get(), &status);
}

void require(UErrorCode status) {
    if (U_FAILURE(status)) throw std::runtime_error(std::string("ICU: ") + u_errorName(status));
}

// Of what is looked at as one.
constexpr std::size_t kSample = 1 << 16;
constexpr std::size_t kFew = 4;

std::string hintOf(std::string const& encoding) {
    return "looks like " + encoding + ", not UTF-8: --encoding " + encoding + " reads it";
}

// How Russian a text looks that is read in an encoding: the share, among what is beyond ASCII, of
// the letters that make up two thirds of Russian, counted where they stand by other letters. A
// wrong encoding of Russian gives other letters or none, Western text single ones.
double russianShare(std::string const& encoding, std::string_view bytes) {
    std::string utf8;
    Decoder(encoding).decode(bytes, utf8);
    std::u16string const text = toUnits(utf8);
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

// What to do about bytes that are no UTF-8 and no UTF-16.
std::string byteEncodingHint(std::string_view sample) {
    constexpr double kRussian = 0.45;
    std::string likely;
    double best = kRussian;
    for (std::string const name : {"windows-1251", "koi8-r", "cp866"}) {
        double const share = russianShare(name, sample);
        if (share > best) likely = name;
        best = std::max(best, share);
    }
    if (!likely.empty()) return hintOf(likely);
    return "is not UTF-8; --encoding NAME reads others, such as windows-1252 or shift_jis";
}

}  // namespace

void CloseConverter::operator()(UConverter* converter) const {
    ucnv_close(converter);
}

Converter openConverter(std::string const& encoding) {
    UErrorCode status = U_ZERO_ERROR;
    // To ICU the empty name is one that depends on the machine.
    Converter converter(encoding.empty() ? nullptr : ucnv_open(encoding.c_str(), &status));
    if (converter == nullptr || U_FAILURE(status)) {
        throw std::runtime_error(
            "there is no encoding '" + encoding +
            "'; known ones are utf-8, utf-16, windows-1251, windows-1252, koi8-r, "
            "cp866, iso-8859-1, gb18030, shift_jis and many others");
    }
    ucnv_setToUCallBack(converter.get(), UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr,
                        &status);
    ucnv_setFromUCallBack(converter.get(), UCNV_FROM_U_CALLBACK_STOP, nullptr, nullptr, nullptr,
                          &status);
    require(status);
    return converter;
}

void Nulls::count(std::string_view bytes) {
    for (char const byte : bytes) {
        if (byte == '\0') ++(places % 2 == 0 ? even : odd);
        ++places;
    }
}

std::string const& Suspicion::hintAfter(std::string_view bytes) {
    if (told.empty()) told = utf16Hint(bytes);
    if (told.empty()) told = bytesHint(bytes);
    return told;
}

std::string Suspicion::utf16Hint(std::string_view bytes) {
    constexpr std::size_t kMostBytesPerNull = 32;  // of UTF-16: it has blanks and line feeds
    if (nulls.places >= kSample) nulls = {nulls.places % 2, 0, 0};
    nulls.count(bytes);
    auto const [fewer, more] = std::minmax(nulls.even, nulls.odd);
    bool const isLikely =
        more >= kFew && more >= nulls.places / kMostBytesPerNull && fewer <= more / 8;
    return isLikely ? hintOf(nulls.even > nulls.odd ? "utf-16be" : "utf-16le") : std::string();
}

std::string Suspicion::bytesHint(std::string_view bytes) {
    if (sample.size() >= kSample) return {};
    tail += bytes;
    std::size_t position = 0;
    // A character at the end may not be complete.
    while (position + U8_MAX_LENGTH <= tail.size()) {
        std::size_t const start = position;
        bool const isCharacter = nextCodePoint(tail, position) >= 0;
        if (isCharacter && position - start == 1) {
            if (!sample.empty() && sample.back() != ' ') sample += ' ';
            continue;
        }
        ++(isCharacter ? characters : strayBytes);
        sample.append(tail, start, position - start);
    }
    tail.erase(0, position);
    return strayBytes >= kFew && strayBytes > characters ? byteEncodingHint(sample) : std::string();
}

Decoder::Decoder(std::string const& name) : encoding(name), isSuspicious(name.empty()) {
    if (!encoding.empty()) converter = openConverter(encoding);
    if (canonicalName(converter) == "UTF-8") converter.reset();
    // The marks of UTF-32, which begin as those of UTF-16 do, are ICU's to take.
    mayHaveMark = !canonicalName(converter).starts_with("UTF-32");
}

void Decoder::decode(std::string_view bytes, std::string& utf8) {
    if (isBegun) return convert(bytes, false, utf8);
    head += bytes;
    for (std::string_view const mark : {kUtf8Mark, kLittleEndianMark, kBigEndianMark}) {
        if (mayHaveMark && head.size() < mark.size() && mark.starts_with(head)) return;
    }
    begin(utf8);
}

void Decoder::finish(std::string& utf8) {
    if (!isBegun) begin(utf8);
    convert({}, true, utf8);
}

void Decoder::begin(std::string& utf8) {
    isBegun = true;
    std::size_t markSize = 0;
    auto const takeMark = [&](std::string_view mark, std::string const& told) {
        if (!mayHaveMark || !head.starts_with(mark)) return;
        markSize = mark.size();
        encoding = told;
        converter = told.empty() ? nullptr : openConverter(told);
        isSuspicious = false;
    };
    takeMark(kUtf8Mark, "");
    takeMark(kLittleEndianMark, "utf-16le");
    takeMark(kBigEndianMark, "utf-16be");
    if (canonicalName(converter) == "UTF-16") {
        Nulls nulls;
        nulls.count(head);
        converter = openConverter(nulls.even > nulls.odd ? "utf-16be" : "utf-16le");
    }
    convert(std::string_view(head).substr(markSize), false, utf8);
    head.clear();
}

void Decoder::convert(std::string_view bytes, bool isLast, std::string& utf8) {
    if (converter == nullptr) {
        if (isSuspicious) {
            hint = suspicion.hintAfter(bytes);
            isSuspicious = hint.empty();
            if (!isSuspicious && !hasAppended) {
                throw std::runtime_error(hint + "; --encoding utf-8 tells where it is not");
            }
        }
        utf8 += bytes;
        hasAppended |= !bytes.empty();
        return;
    }
    char const* from = bytes.data();
    char const* const end = from + bytes.size();
    UErrorCode status = U_BUFFER_OVERFLOW_ERROR;
    while (U_FAILURE(status)) {
        status = U_ZERO_ERROR;
        char16_t units[1024];
        char16_t* to = units;
        ucnv_toUnicode(converter.get(), &to, std::end(units), &from, end, nullptr,
                       static_cast<UBool>(isLast ? 1 : 0), &status);
        waiting.append(units, to);
        bool const isHalf = !waiting.empty() && U16_IS_LEAD(waiting.back());
        std::size_t const whole = waiting.size() - (isHalf ? 1 : 0);
        utf8 += toUtf8(std::u16string_view(waiting).substr(0, whole));
        waiting.erase(0, whole);
        if (U_FAILURE(status) && status != U_BUFFER_OVERFLOW_ERROR) utf8 += kNoCharacter;
    }
}

std::string Decoder::faultOf(std::string_view line) const {
    std::size_t const stray = converter == nullptr ? std::string::npos : line.find(kNoCharacter);
    if (stray == std::string::npos) return {};
    auto const isStart = [](char byte) { return !U8_IS_TRAIL(byte); };
    auto const before =
        std::count_if(line.begin(), line.begin() + static_cast<std::ptrdiff_t>(stray), isStart);
    return "not valid " + encoding + " at character " + std::to_string(before + 1);
}

Encoder::Encoder(std::string const& name) : encoding(name), converter(openConverter(name)) {}

std::string Encoder::encoded(std::string_view utf8) {
    std::u16string const units = toUnits(utf8);
    std::string bytes;
    char16_t const* from = units.data();
    char16_t const* const end = from + units.size();
    UErrorCode status = U_BUFFER_OVERFLOW_ERROR;
    while (status == U_BUFFER_OVERFLOW_ERROR) {
        status = U_ZERO_ERROR;
        char block[1024];
        char* to = block;
        ucnv_fromUnicode(converter.get(), &to, std::end(block), &from, end, nullptr, 0, &status);
        bytes.append(block, to);
    }
    if (U_SUCCESS(status)) return bytes;
    char16_t wrong[U16_MAX_LENGTH];
    std::int8_t length = std::size(wrong);
    UErrorCode ignored = U_ZERO_ERROR;
    ucnv_getInvalidUChars(converter.get(), wrong, &length, &ignored);
    ucnv_resetFromUnicode(converter.get());
    std::u16string_view const character(wrong, static_cast<std::size_t>(length));
    std::size_t position = 0;
    char number[16];
    std::snprintf(number, sizeof number, "U+%04X",
                  static_cast<unsigned>(nextCodePoint(character, position)));
    // Without the character, so that the message can be written in the same encoding.
    throw NotEncodable(encoding + " has no " + number);
}

}  // namespace near_text
