#include "near_text/matching/numbers.h"

#include <unicode/uchar.h>

#include <algorithm>
#include <cstdint>

#include "near_text/text/code_points.h"

namespace near_text {

Numbers::Numbers(std::u16string_view text) {
    bool isWithinNumber = false;
    for (std::size_t at = 0; at < text.size();) {
        std::int32_t const digit = u_charDigitValue(nextCodePoint(text, at));
        if (digit >= 0) {
            if (!isWithinNumber) values_.emplace_back();
            std::string& value = values_.back();
            if (value == "0") value.clear();
            value += static_cast<char>('0' + digit);
        }
        isWithinNumber = digit >= 0;
    }
    std::sort(values_.begin(), values_.end());
    values_.erase(std::unique(values_.begin(), values_.end()), values_.end());
}

bool Numbers::contradict(Numbers const& other) const {
    return !isWithin(other) && !other.isWithin(*this);
}

std::string Numbers::notIn(Numbers const& other) const {
    std::string text;
    for (std::string const& value : values_) {
        if (!std::binary_search(other.values_.begin(), other.values_.end(), value))
            text += (text.empty() ? "" : " ") + value;
    }
    return text;
}

bool Numbers::isWithin(Numbers const& other) const {
    return std::includes(other.values_.begin(), other.values_.end(), values_.begin(),
                         values_.end());
}

}  // namespace near_text
