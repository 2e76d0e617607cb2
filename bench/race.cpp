#include "bench/race.h"

#include <algorithm>
#include <ctime>
#include <map>
#include <stdexcept>

#include "bench/peak_memory.h"

namespace bench {

namespace {

constexpr double kTurn = 3e6;      // in nanoseconds
constexpr double kBudget = 250e6;  // a subject's, for all cases
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
    explicit Runner(Subject const& subject, double budget)
        : subject_(subject), budget_(budget), spent_(timeOf(subject.run, 1)), best_(spent_) {}

    bool isDone() const { return spent_ >= budget_ && (subject_.isSlow || turns_ >= kFewestTurns); }

    void takeTurn() {
        double const unmeasured = timeOf(subject_.run, 1);
        long const calls = std::max(1L, static_cast<long>(kTurn / best_));
        double const time = timeOf(subject_.run, calls);
        double const mean = time / static_cast<double>(calls);
        // The very first call may have met cold caches.
        best_ = turns_ == 0 ? mean : std::min(best_, mean);
        spent_ += unmeasured + time;
        ++turns_;
    }

    double best() const { return best_; }

private:
    Subject const& subject_;
    double const budget_;
    double spent_;
    double best_;  // nanoseconds of a call
    int turns_ = 0;
};

void checkAnswer(Answer const& expected, Subject const& subject) {
    if (subject.answer() == expected) return;
    throw std::logic_error("the answers of " + subject.name + " differ");
}

std::vector<double> timesOf(Case const& measured, double budget) {
    std::vector<Runner> runners;
    for (auto const& subject : measured) {
        runners.emplace_back(subject, budget);
        if (subject.answer) checkAnswer(measured.front().answer(), subject);
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

void race(benchmark::State& state, std::vector<Case> const& cases, double items) {
    std::map<std::string, double> totals;
    for (auto const& measured : cases) {
        auto const times = timesOf(measured, kBudget / static_cast<double>(cases.size()));
        for (std::size_t i = 0; i < measured.size(); ++i)
            totals[measured[i].name] += times[i];
    }
    for (auto const& [name, nanoseconds] : totals)
        state.counters[name + "_ns"] = nanoseconds / items;
    for (auto _ : state)
        state.SetIterationTime(totals[cases.front().front().name] / items * 1e-9);
}

void weigh(benchmark::State& state, Case const& measured) {
    for (auto const& subject : measured) {
        subject.run();  // so that what is kept from call to call is there
        state.counters[subject.name + "_bytes"] = static_cast<double>(peakBytesOf(subject.run));
        checkAnswer(measured.front().answer(), subject);
    }
    for (auto _ : state)
        state.SetIterationTime(1e-9);  // nothing was timed
}

void addCase(std::string const& name, std::function<void(benchmark::State&)> const& run) {
    benchmark::RegisterBenchmark(name.c_str(), run)->Iterations(1)->UseManualTime();
}

}  // namespace bench
