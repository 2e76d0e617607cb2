// The options that every search has.
#pragma once

#include <CLI/App.hpp>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "near_text/matching/matches.h"
#include "near_text/preparation/preparation.h"

namespace near_text {

constexpr int kDefaultPercent = 80;

// For options that take a percentage.
CLI::Validator percentCheck();

// An option whose values are given in one argument, with commas between them, or one by one.
CLI::Option& addCommaList(CLI::App& command, std::string const& name,
                          std::function<void(std::vector<std::string> const& values)> take,
                          std::string const& text);

// An option that would do nothing, with the reason. Throws CLI::ValidationError.
[[noreturn]] void refuse(std::string const& option, std::string const& reason);

// --fold-case and its like.
struct PreparationOptions {
    Preparation preparation;
    bool isWhole = false;

    void addTo(CLI::App& command);
    // Once the command line is read. Throws CLI::ValidationError.
    void settle();
};

struct SearchOptions {
    std::optional<int> percent;
    std::optional<int> percentShort;
    std::optional<int> percentLong;
    std::optional<int> threshold;
    std::string exclude;
    std::string exclusionsFile;
    PreparationOptions preparing;

    // `hasPercent` is false where the command has percentages of its own.
    void addTo(CLI::App& command, bool hasPercent = true);
    // Once the command line is read. Throws CLI::ValidationError.
    void settle();

    // Reads the exclusions, in that encoding. Throws std::runtime_error.
    SearchTerms terms(std::string const& encoding) const;
};

// --best and --top.
struct WantedOptions {
    Wanted wanted;

    void addTo(CLI::App& command);
};

}  // namespace near_text
