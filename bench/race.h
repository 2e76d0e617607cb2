// Times several ways of doing one thing against one another, in one run.
//
// They take turns of a few milliseconds, and each turn begins with a call that is not timed: it
// finds the caches and the heap as the one before left them. What counts is the processor time of
// the thread, and of all turns the quickest: whatever else the machine does can only add to it.
#pragma once

#include <benchmark/benchmark.h>

#include <functional>
#include <string>
#include <vector>

namespace bench {

// Indices of matches, or a 1 for each pair that is alike.
using Answer = std::vector<unsigned long>;

struct Subject {
    std::string name;
    std::function<void()> run;
    std::function<Answer()> answer;  // of the last run; none where an answer means something else
    bool isSlow = false;             // its very first call counts where it takes long
};

// Subjects at the same thing. What they work on outlives them.
using Case = std::vector<Subject>;

// Times the cases and counts `NAME_ns`, a subject's time for all of them divided by `items`.
// Throws std::logic_error when the answers differ.
void race(benchmark::State& state, std::vector<Case> const& cases, double items);

// Counts `NAME_bytes`, what a subject's call holds in blocks at its peak.
void weigh(benchmark::State& state, Case const& measured);

// Registers a benchmark that runs once.
void addCase(std::string const& name, std::function<void(benchmark::State&)> const& run);

}  // namespace bench
