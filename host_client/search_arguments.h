// What a search is asked with.
#pragma once

#include <string_view>

namespace host_client {

// The texts are the caller's and outlive the call.
struct SearchArguments {
    std::u16string_view text;
    std::u16string_view dictionary;
    char16_t separator;
    int lengthThreshold;
    int percentShort;
    int percentLong;
    std::u16string_view exclusions;
};

}  // namespace host_client
