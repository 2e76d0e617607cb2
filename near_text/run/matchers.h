// A matcher for each thread of a run, and what they share.
#pragma once

#include <memory>
#include <vector>

#include "near_text/matching/add_in.h"
#include "near_text/matching/matches.h"

namespace near_text {

struct RunSettings {
    unsigned jobs;
    bool isStrict;              // give up at the first line that failed
    bool isIndexed;             // spare the add-in entries that cannot match
    bool isTruncating = false;  // texts that the add-in would refuse for their length
};

class Matchers {
public:
    // What it is given is the caller's and outlives it. Throws Refused when the add-in
    // refuses the terms, and as makeComponent.
    Matchers(AddInSettings const& addIn, RunSettings const& settings, EntryList const& list,
             SearchTerms const& terms, Wanted wanted);

    // Makes it at the first call, on the thread of that worker: a component takes 4 MB at once.
    // From any number of threads, each with a number of its own. Throws as makeComponent.
    Matcher& operator[](std::size_t worker);
    std::size_t size() const { return matchers_.size(); }
    RunSettings const& settings() const { return settings_; }

    // How many matches the terms left out so far; while no thread is at work.
    std::size_t leftOut() const;

    SearchTerms const& terms() const { return terms_; }

    // The same in another list.
    Matchers in(EntryList const& list, Wanted wanted) const {
        return {addIn_, settings_, list, terms_, wanted};
    }

private:
    AddInSettings const& addIn_;
    RunSettings const& settings_;
    EntryList const& list_;
    SearchTerms const& terms_;
    Wanted const wanted_;
    reference::ExcludedWords const excluded_;
    Shortlist shortlist_;
    std::vector<std::unique_ptr<host_client::Component>> components_;
    std::vector<std::unique_ptr<Matcher>> matchers_;
};

}  // namespace near_text
