#include "bench/race.h"

#include <algorithm>
#include <ctime>
#include <map>
#include <stdexcept>

#include "bench/peak_memory.h"

namespace bench {

namespace {

constexpr double kTurn = 3e6;      // in nanoseconds
constexpr double kBudget = 250e6;  // a contender's, for all heats
constexpr int kFewestTurns = 3;    // where one call takes longer than the budget

double processorTime() {
    std::timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e9 + static_cast<double>(now.tv_nsec);
}

double timeOf(std::function<void()> const& run, long calls) {
    double const start = processorTime();
    for (long i = 0; i < calls; ++i)
        run();
    return processorTime() - start;
}

class Runner {
public:
    explicit Runner(Contender const& contender, double budget)
        : contender_(contender), budget_(budget), spent_(timeOf(contender.run, 1)), best_(spent_) {}

    bool isDone() const {
        return spent_ >= budget_ && (contender_.isSlow || turns_ >= kFewestTurns);
    }

    void takeTurn() {
        double const unmeasured = timeOf(contender_.run, 1);
        long const calls = std::max(1L, static_cast<long>(kTurn / best_));
        double const time = timeOf(contender_.run, calls);
        double const mean = time / static_cast<double>(calls);
        // The very first call may have met cold caches.
        best_ = turns_ == 0 ? mean : std::min(best_, mean);
        spent_ += unmeasured + time;
        ++turns_;
    }

    double best() const { return best_; }

private:
    Contender const& contender_;
    double const budget_;
    double spent_;
    double best_;  // nanoseconds of a call
    int turns_ = 0;
};

void checkAnswer(Answer const& expected, Contender const& contender) {
    if (contender.answer() == expected) return;
    throw std::logic_error("the answers of " + contender.name + " differ");
}

std::vector<double> timesOf(Heat const& heat, double budget) {
    std::vector<Runner> runners;
    for (auto const& contender : heat) {
        runners.emplace_back(contender, budget);
        if (contender.answer) checkAnswer(heat.front().answer(), contender);
    }
    for (bool isAnyLeft = true; isAnyLeft;) {
        isAnyLeft = false;
        for (auto& runner : runners) {
            if (runner.isDone()) continue;
            runner.takeTurn();
            isAnyLeft = true;
        }
    }
    std::vector<double> times(runners.size());
    std::transform(runners.begin(), runners.end(), times.begin(),
                   [](Runner const& runner) { return runner.best(); });
    return times;
}

}  // namespace

void race(benchmark::State& state, std::vector<Heat> const& heats, double items) {
    std::map<std::string, double> totals;
    for (auto const& heat : heats) {
        auto const times = timesOf(heat, kBudget / static_cast<double>(heats.size()));
        for (std::size_t i = 0; i < heat.size(); ++i)
            totals[heat[i].name] += times[i];
    }
    for (auto const& [name, nanoseconds] : totals)
        state.counters[name + "_ns"] = nanoseconds / items;
    for (auto _ : state)
        state.SetIterationTime(totals[heats.front().front().name] / items * 1e-9);
}

void weigh(benchmark::State& state, Heat const& heat) {
    for (auto const& contender : heat) {
        contender.run();  // so that what is kept from call to call is there
        state.counters[contender.name + "_bytes"] = static_cast<double>(peakBytesOf(contender.run));
        checkAnswer(heat.front().answer(), contender);
    }
    for (auto _ : state)
        state.SetIterationTime(1e-9);  // nothing was timed
}

void addCase(std::string const& name, std::function<void(benchmark::State&)> const& run) {
    benchmark::RegisterBenchmark(name.c_str(), run)->Iterations(1)->UseManualTime();
}

}  // namespace bench
