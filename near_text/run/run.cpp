#include "near_text/run/run.h"

#include <algorithm>
#include <thread>

#include "near_text/input/text_codec.h"

namespace near_text {

JobOptions::JobOptions() : jobs(std::max(1U, std::thread::hardware_concurrency())) {}

void JobOptions::addTo(CLI::App& command) {
    constexpr char const* kGroup = "Running";
    command
        .add_option("-j,--jobs", jobs,
                    "Threads to search with, 1 to 256. Default: one for each processor")
        ->type_name("N")
        ->check(CLI::Range(1U, 256U).description(""))
        ->group(kGroup);
    command
        .add_flag("--strict", isStrict,
                  "Stop at the first line that is too long, not valid text or nothing that the "
                  "output's encoding can write, instead of going on")
        ->group(kGroup);
    command
        .add_flag("--no-index", hasNoIndex,
                  "Give the add-in every entry for every text. The answers are the same, and "
                  "take longer")
        ->group(kGroup);
}

Matchers::Matchers(Program const& program, JobOptions const& options, EntryList const& list,
                   SearchTerms const& terms, Wanted wanted)
    : excluded(reference::readExclusions(terms.exclusions, list.separator)),
      shortlist(list, excluded, terms.threshold) {
    Shortlist* const used = options.hasNoIndex ? nullptr : &shortlist;
    for (unsigned i = 0; i < options.jobs; ++i) {
        components.push_back(program.makeComponent());
        matchers.push_back(
            std::make_unique<Matcher>(*components.back(), list, terms, wanted, used));
    }
    // Bad terms are bad for every text, so they are reported before the first.
    matchers[0]->search.findAmong(u"-", terms.percentages, {});
}

Status run(Matchers& matchers, Preparation const& preparation,
           std::function<bool(TextRow& row)> const& next, RowWork const& work,
           FailureText const& failureText, MatchWriter& writer, Interrupt const& interrupt) {
    auto const failed = [&](TextRow const& row, std::string const& error) -> LineResult {
        std::string text = failureText(row, error);
        try {
            writer.requireEncodable(text);
        } catch (NotText const&) {
            TextRow bare = row;
            bare.kept.clear();
            text = failureText(bare, error);
        }
        return {text, error};
    };
    auto const workOn = [&](std::size_t worker, TextRow const& row) {
        LineResult result;
        try {
            result = work(matchers[worker], row, preparation.prepared(lineUnits(row)));
            writer.requireEncodable(result.output);
        } catch (NotText const& error) {
            result = failed(row, error.what());
        } catch (Refused const& error) {
            result = failed(row, error.what());
        }
        result.line = row.number;
        return result;
    };
    OrderedWork ordered(matchers.size(), workOn,
                        [&](LineResult const& done) { return writer.write(done); });
    for (TextRow row; interrupt.signal() == 0 && next(row);) {
        if (!ordered.add(std::move(row))) break;
    }
    interrupt.signal() == 0 ? ordered.finish() : ordered.stop();
    return writer.close();
}

}  // namespace near_text
