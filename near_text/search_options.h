// The switches that every search has.
#pragma once

#include <CLI/App.hpp>
#include <optional>
#include <string>
#include <string_view>

#include "near_text/entry_search.h"
#include "stand_in_host/component.h"

namespace near_text {

struct SearchOptions {
    int threshold = 0;
    int percentShort = 80;
    std::optional<int> percentLong;
    std::string exclude;
    std::string exclusionsFile;

    void addTo(CLI::App& command);

    // The words of both switches. Throws std::runtime_error.
    std::u16string exclusions() const;

    Percentages percentages() const { return {percentShort, percentLong.value_or(percentShort)}; }

    // The texts are the caller's and outlive the result.
    stand_in_host::SearchArguments arguments(std::u16string_view text, EntryList const& list,
                                             std::u16string_view exclusions) const;
};

}  // namespace near_text
