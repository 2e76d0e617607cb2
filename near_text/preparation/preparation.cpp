// Nearly all texts hold nothing to compose, and of their units nearly all belong to a few scripts.
// So a first pass maps unit by unit, by a table as far as it goes, and gives up at a unit that only
// the text around it can settle; what it gave up goes through ICU as a whole.
#include "near_text/preparation/preparation.h"

#include <unicode/uchar.h>
#include <unicode/unorm2.h>

#include <array>
#include <limits>
#include <stdexcept>

#include "near_text/input/code_points.h"

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

struct Properties {
    char16_t folded;
    bool isPunctuation;
    bool isSettled;  // before and after folding
    bool isOneUnit;  // before and after folding, and no half of a pair
};

Properties propertiesOf(char16_t unit) {
    CodePoint const fold = folded(unit);
    return {static_cast<char16_t>(fold), isPunctuation(unit), isSettled(unit) && isSettled(fold),
            U_IS_BMP(fold) && !isHalfPair(unit)};
}

constexpr char16_t kTabled = 0x600;  // Latin, Greek, Cyrillic, Armenian, Hebrew

std::array<Properties, kTabled> const& table() {
    static std::array<Properties, kTabled> const properties = [] {
        std::array<Properties, kTabled> all{};
        for (char16_t unit = 0; unit < kTabled; ++unit)
            all[unit] = propertiesOf(unit);
        return all;
    }();
    return properties;
}

// False where a unit cannot be mapped by itself.
bool mapUnits(Preparation const& how, std::u16string_view units, std::u16string& result) {
    auto const& tabled = table();
    result.resize(units.size());
    for (std::size_t i = 0; i < units.size(); ++i) {
        char16_t const unit = units[i];
        Properties const& known = unit < kTabled ? tabled[unit] : propertiesOf(unit);
        if (!known.isOneUnit || (how.composes && !known.isSettled)) return false;
        result[i] = how.foldsCase ? known.folded : unit;
        if (how.blanksPunctuation && known.isPunctuation) result[i] = u' ';
    }
    return true;
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

std::u16string mapCodePoints(Preparation const& how, std::u16string_view units) {
    std::u16string result;
    result.reserve(units.size());
    for (std::size_t i = 0; i < units.size();) {
        std::size_t const start = i;
        CodePoint const point = nextCodePoint(units, i);
        if (how.blanksPunctuation && isPunctuation(point)) {
            result.append(i - start, u' ');
        } else {
            append(result, how.foldsCase ? folded(point) : point);
        }
    }
    return result;
}

}  // namespace

std::u16string Preparation::prepared(std::u16string_view units) const {
    std::u16string result;
    if (mapUnits(*this, units, result)) return result;
    result = composes ? composed(units) : std::u16string(units);
    result = mapCodePoints(*this, result);
    return composes && foldsCase ? composed(result) : result;
}

}  // namespace near_text
