// Nearly all texts hold nothing to compose, and of their units nearly all belong to a few scripts.
// So a first pass maps unit by unit, by a table as far as it goes, and gives up at a unit that only
// the text around it can settle; a text that it gave up is composed as a whole and mapped by code
// points.
#include "near_text/preparation/preparation.h"

#include <unicode/uchar.h>
#include <unicode/unorm2.h>

#include <algorithm>
#include <limits>
#include <stdexcept>

#include "near_text/text/code_points.h"
#include "reference/whitespace.h"

namespace near_text {

namespace {

CodePoint folded(CodePoint point) {
    return u_foldCase(point, U_FOLD_CASE_DEFAULT);
}

bool isPunctuation(CodePoint point) {
    return u_ispunct(point) != 0;
}

// Whether composing leaves the code point alone, whatever stands before it.
bool isSettled(CodePoint point) {
    return u_getIntPropertyValue(point, UCHAR_NFC_QUICK_CHECK) == UNORM_YES &&
           u_getCombiningClass(point) == 0;
}

// Whether composing never joins it to what stands before it.
bool beginsAnew(CodePoint point) {
    UErrorCode status = U_ZERO_ERROR;
    UNormalizer2 const* const nfc = unorm2_getNFCInstance(&status);
    return U_SUCCESS(status) && unorm2_hasBoundaryBefore(nfc, point) != 0;
}

bool isBlank(CodePoint point) {
    return u_isUWhiteSpace(point) != 0;
}

// Nobody sees these: what joins or parts what stands beside it, and a byte order mark in the text.
bool hasNoWidth(CodePoint point) {
    return (point >= 0x200B && point <= 0x200D) || point == 0x2060 || point == 0xFEFF ||
           point == 0xAD || point == 0x180E;
}

// Where the next word begins or, from within one, ends.
std::size_t wordBegin(std::u16string_view text, std::size_t from) {
    auto const begin = text.begin() + static_cast<std::ptrdiff_t>(from);
    auto const found = std::find_if_not(begin, text.end(), reference::isWhitespace);
    return static_cast<std::size_t>(found - text.begin());
}

std::size_t wordEnd(std::u16string_view text, std::size_t from) {
    auto const begin = text.begin() + static_cast<std::ptrdiff_t>(from);
    auto const found = std::find_if(begin, text.end(), reference::isWhitespace);
    return static_cast<std::size_t>(found - text.begin());
}

constexpr CodePoint kNothing = -1;

// What becomes of a code point by itself.
CodePoint mapped(Preparation const& how, CodePoint point) {
    if (how.blanksPunctuation && (isPunctuation(point) || isBlank(point))) return u' ';
    if (how.blanksPunctuation && hasNoWidth(point)) return kNothing;
    return how.foldsCase ? folded(point) : point;
}

std::u16string composed(std::u16string_view units) {
    // No text grows by more than this factor.
    constexpr std::size_t kGrowth = 3;
    if (units.size() > std::numeric_limits<std::int32_t>::max() / kGrowth) {
        throw std::runtime_error("a text is too long to be composed");
    }
    UErrorCode status = U_ZERO_ERROR;
    UNormalizer2 const* const nfc = unorm2_getNFCInstance(&status);
    std::u16string result(units.size() * kGrowth, u'\0');
    std::int32_t const length =
        unorm2_normalize(nfc, units.data(), static_cast<std::int32_t>(units.size()), result.data(),
                         static_cast<std::int32_t>(result.size()), &status);
    if (U_FAILURE(status)) throw std::runtime_error(std::string("ICU: ") + u_errorName(status));
    result.resize(static_cast<std::size_t>(length));
    return result;
}

}  // namespace

Preparer::Preparer(Preparation preparation) : how_(preparation), tabled_{} {
    for (char16_t unit = 0; unit < kTabled; ++unit)
        tabled_[unit] = unitOf(unit);
}

Preparer::Unit Preparer::unitOf(char16_t unit) const {
    CodePoint const to = mapped(how_, unit);
    if (to == kNothing) return {0, false};
    bool const isComposed = !how_.composes || (isSettled(unit) && isSettled(to));
    return {static_cast<char16_t>(to), isComposed && U_IS_BMP(to) && !isHalfPair(unit)};
}

// False where a unit cannot be prepared by itself.
bool Preparer::prepareUnits(std::u16string_view units, std::u16string& result) const {
    result.resize(units.size());
    for (std::size_t i = 0; i < units.size(); ++i) {
        Unit const known = units[i] < kTabled ? tabled_[units[i]] : unitOf(units[i]);
        if (!known.isAlone) return false;
        result[i] = known.prepared;
    }
    return true;
}

std::u16string Preparer::prepareCodePoints(std::u16string_view units) const {
    std::u16string result;
    result.reserve(units.size());
    for (std::size_t i = 0; i < units.size();) {
        std::size_t const start = i;
        CodePoint const to = mapped(how_, nextCodePoint(units, i));
        if (to == u' ') {
            result.append(i - start, u' ');
        } else if (to != kNothing) {
            append(result, to);
        }
    }
    return result;
}

void Preparer::drop(std::u16string_view words) {
    std::u16string const text = preparedWhole(words);
    for (std::size_t begin = wordBegin(text, 0), end = 0; begin < text.size();
         begin = wordBegin(text, end)) {
        end = wordEnd(text, begin);
        dropped_.insert(text.substr(begin, end - begin));
    }
}

std::u16string Preparer::prepared(std::u16string_view units) const {
    std::u16string whole = preparedWhole(units);
    if (dropped_.empty()) return whole;
    std::u16string left;
    for (auto const [begin, end] : undropped(whole))
        left.append(whole, begin, end - begin);
    return left;
}

// Each piece is prepared by itself. Composing joins nothing across the begin of one, neither before
// code points are mapped nor after: no letter folds to what joins the one before it.
std::u16string Preparer::prepared(std::u16string_view units, std::vector<Origin>& origins) const {
    std::u16string whole;
    std::vector<Origin> ofWhole;
    for (std::size_t begin = 0, end = 0; begin < units.size(); begin = end) {
        nextCodePoint(units, end);
        for (std::size_t next = end; end < units.size(); end = next) {
            if (isPieceBegin(nextCodePoint(units, next))) break;
        }
        whole += preparedWhole(units.substr(begin, end - begin));
        ofWhole.resize(whole.size(), {begin, end});
    }
    std::u16string left;
    origins.clear();
    for (auto const [begin, end] : undropped(whole)) {
        left.append(whole, begin, end - begin);
        origins.insert(origins.end(), ofWhole.begin() + static_cast<std::ptrdiff_t>(begin),
                       ofWhole.begin() + static_cast<std::ptrdiff_t>(end));
    }
    return left;
}

bool Preparer::isPieceBegin(CodePoint point) const {
    return !how_.composes || (mapped(how_, point) != kNothing && beginsAnew(point));
}

// What stays of a text, in its order.
std::vector<Origin> Preparer::undropped(std::u16string_view text) const {
    if (dropped_.empty()) return {{0, text.size()}};
    std::size_t const first = wordBegin(text, 0);
    std::vector<Origin> left = {{0, first}};
    std::size_t gap = first;
    bool isFirst = true;  // of those that stay: what is ahead of it is the text's beginning
    for (std::size_t begin = first; begin < text.size(); begin = wordBegin(text, gap)) {
        std::size_t const end = wordEnd(text, begin);
        if (dropped_.find(text.substr(begin, end - begin)) == dropped_.end()) {
            std::size_t const from = isFirst ? begin : gap;
            left.push_back({from, end});
            isFirst = false;
        }
        gap = end;
    }
    left.push_back({gap, text.size()});
    return left;
}

std::u16string Preparer::preparedWhole(std::u16string_view units) const {
    std::u16string result;
    if (prepareUnits(units, result)) return result;
    result = prepareCodePoints(how_.composes ? composed(units) : std::u16string(units));
    return how_.composes ? composed(result) : result;
}

}  // namespace near_text
