// A run of many texts through searches on several threads.
#pragma once

#include <functional>
#include <string>

#include "near_text/input/text_row.h"
#include "near_text/run/match_writer.h"
#include "near_text/run/matchers.h"

namespace near_text {

// In bytes; far above what the add-in takes, so that it is the add-in that refuses a text too long.
constexpr std::size_t kLongestText = 1 << 16;

// What is done with the units of one row; may throw Refused or NotText, which fails the row, as
// does output that cannot be encoded.
using RowWork =
    std::function<LineResult(Matcher& matcher, TextRow const& row, std::u16string const& units)>;
using FailureText = std::function<std::string(TextRow const& row, std::string const& error)>;

// The units that are searched for: the row's, prepared and, where that is wanted, cut. Throws
// NotText.
struct RowUnits {
    RowUnits(TextRow const& row, Preparer const& preparer, RunSettings const& settings);

    std::u16string units;
    bool isCut;
};

// Runs the rows that `next` gives through `work`, and their results, in order, to `writer`. What
// `next` throws comes behind the results of the rows before.
Status run(Matchers& matchers, Preparer const& preparer,
           std::function<bool(TextRow& row)> const& next, RowWork const& work,
           FailureText const& failureText, MatchWriter& writer);

}  // namespace near_text
