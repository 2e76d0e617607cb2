// Numbers as people write them: decimal digits, and nothing else.
#pragma once

#include <charconv>
#include <limits>
#include <optional>
#include <string_view>

namespace near_text {

// Nothing where `text` is no such number, or one outside the range.
template <class Number>
std::optional<Number> parseNumber(std::string_view text, Number least = 0,
                                  Number most = std::numeric_limits<Number>::max()) {
    Number number = 0;
    bool const isUnsigned = !text.empty() && text[0] >= '0' && text[0] <= '9';
    auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    bool const isWhole = isUnsigned && error == std::errc() && end == text.data() + text.size();
    return isWhole && least <= number && number <= most ? std::optional(number) : std::nullopt;
}

}  // namespace near_text
