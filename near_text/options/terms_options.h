// The options that say which entries match, and which of the matches are kept.
#pragma once

#include <CLI/App.hpp>
#include <optional>
#include <string>

#include "near_text/matching/search_terms.h"
#include "near_text/matching/steps.h"
#include "near_text/options/file_options.h"

namespace near_text {

inline constexpr char const* kMatchesGroup = "Which entries match";

// --fold-case and its like.
class PreparationOptions {
public:
    void addTo(CLI::App& command);
    // Throws std::runtime_error.
    Preparer preparer() const;

private:
    Preparation given_;
    bool isWhole_ = false;
};

class TermsOptions {
public:
    // Without --percent where the command has its own.
    void addTo(CLI::App& command, bool hasPercent = true);
    // Throws std::runtime_error.
    SearchSettings settings(FileOptions const& files) const;
    // What --percent would mean at each of these. Throws std::runtime_error where it would mean
    // nothing.
    Steps steps(std::vector<int> const& percents) const;
    bool isSameNumbers() const { return isSameNumbers_; }

private:
    void addPercentages(CLI::App& command, bool hasPercent);
    void validate() const;

    std::optional<int> percent_;
    std::optional<int> percentShort_;
    std::optional<int> percentLong_;
    std::optional<int> threshold_;
    std::string exclude_;
    std::string exclusionsFile_;
    std::string dropWordsFile_;
    bool isSameNumbers_ = false;
    PreparationOptions preparation_;
};

// --best and --top.
void addWanted(CLI::App& command, Wanted& wanted);

}  // namespace near_text
