// A run of many texts through searches on several threads.
#pragma once

#include <CLI/App.hpp>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "near_text/commands/commands.h"
#include "near_text/input/text_row.h"
#include "near_text/matching/matches.h"
#include "near_text/options/format_options.h"
#include "near_text/run/match_writer.h"

namespace near_text {

// In bytes; far above what the add-in takes, so that it is the add-in that refuses a text too long.
constexpr std::size_t kLongestText = 1 << 16;

struct JobOptions {
    unsigned jobs;
    bool isStrict = false;
    bool hasNoIndex = false;

    JobOptions();
    void addTo(CLI::App& command);
};

// A matcher for each thread.
class Matchers {
public:
    // Throws Refused when the add-in refuses the terms, and as Program::makeComponent.
    Matchers(Program const& program, JobOptions const& options, EntryList const& list,
             SearchTerms const& terms, Wanted wanted);

    Matcher& operator[](std::size_t worker) { return *matchers[worker]; }
    std::size_t size() const { return matchers.size(); }

private:
    reference::ExcludedWords const excluded;
    Shortlist shortlist;
    std::vector<std::unique_ptr<host_client::Component>> components;
    std::vector<std::unique_ptr<Matcher>> matchers;
};

// What is done with the units of one row; may throw Refused or NotText, which fails the row, as
// does output that cannot be encoded.
using RowWork =
    std::function<LineResult(Matcher& matcher, TextRow const& row, std::u16string const& units)>;
using FailureText = std::function<std::string(TextRow const& row, std::string const& error)>;

// Runs the rows that `next` gives through `work`, and their results, in order, to `writer`.
Status run(Matchers& matchers, Preparation const& preparation,
           std::function<bool(TextRow& row)> const& next, RowWork const& work,
           FailureText const& failureText, MatchWriter& writer, Interrupt const& interrupt);

}  // namespace near_text
