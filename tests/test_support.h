// What the tests share: the add-in loaded once, and text written shortly.
#pragma once

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <string_view>

#include "compare/utf16_string.h"
#include "stand_in_host/component.h"
#include "stand_in_host/text_codec.h"

inline stand_in_host::AddIn& addIn() {
    // Never unloaded: its class name is for the life of the process, and else would count as a
    // leak.
    static auto& library = *new stand_in_host::AddIn(NEAR_TEXT_LIBRARY);
    return library;
}

inline Utf16String units(std::u16string_view text) {
    return {text.begin(), text.end()};
}

// A literal with its NULs.
template <std::size_t N>
constexpr std::u16string_view whole(char16_t const (&text)[N]) {
    return {text, N - 1};
}
