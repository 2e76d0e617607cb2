// Whole calls through the host's entry of the built library, against the plain form.
#include "bench/against_plain.h"
#include "bench/bench_texts.h"
#include "bench/plain_form.h"
#include "stand_in_host/component.h"
#include "stand_in_host/text_codec.h"

namespace {

using stand_in_host::numberRecord;
using stand_in_host::textRecord;

stand_in_host::Component& component() {
    static stand_in_host::AddIn library(NEAR_TEXT_LIBRARY);
    static stand_in_host::Component only(library);
    return only;
}

// What a call left in its record.
std::u16string answerOf(_tVariant const& result) {
    if (result.tag == TagBool) return result.value.boolean != 0 ? u"alike" : u"different";
    return std::u16string(stand_in_host::fromHost(result.value.wideString, result.length));
}

template <class Records>
void callAgainstPlain(benchmark::State& state, long method, Records& params) {
    stand_in_host::Memory memory;
    plain::Comparer plainComparer(memory);
    auto const run = [](auto&& call) {
        _tVariant result{};
        call(&result);
        return answerOf(result);
    };
    bench::againstPlain(
        state,
        [&] {
            component().memory.freeAll();
            return run([&](_tVariant* result) {
                component()->CallAsFunc(method, result, params, std::ssize(params));
            });
        },
        [&] {
            memory.freeAll();
            return run([&](_tVariant* result) {
                if (method == 0) plainComparer.compareString(params, result);
                if (method == 1) plainComparer.searchString(params, result);
            });
        });
}

void compare(benchmark::State& state, std::u16string const& first, std::u16string const& second,
             int percent) {
    _tVariant params[] = {textRecord(first), textRecord(second), numberRecord(percent)};
    callAgainstPlain(state, 0, params);
}

void search(benchmark::State& state, std::u16string const& text, std::u16string const& dictionary,
            std::u16string const& exclusions, int percent, double entryCount) {
    _tVariant params[] = {textRecord(text),      textRecord(dictionary), textRecord(u";"),
                          numberRecord(50),      numberRecord(percent),  numberRecord(percent),
                          textRecord(exclusions)};
    callAgainstPlain(state, 1, params);
    state.counters["entries"] = entryCount;
    state.counters["ns_per_entry"] = state.counters["ours_ns"].value / entryCount;
    state.counters["plain_ns_per_entry"] = state.counters["plain_ns"].value / entryCount;
}

// What people search for: an entry, mistyped.
std::u16string mistypedEntry(std::size_t which) {
    return bench::nearTo(bench::entries(which + 1).back(), 30, 7);
}

std::size_t const kEntries = 60'000;

void compareEntries(benchmark::State& state, bool isNear) {
    auto const words = static_cast<std::size_t>(state.range(0));
    auto const take = [words](std::u16string const& text) {
        std::size_t end = 0;
        for (std::size_t i = 0; i < words && end != std::u16string::npos; ++i) {
            end = text.find(u' ', end + 1);
        }
        return text.substr(0, end);
    };
    auto const first = take(bench::text(1000, false, 11));
    auto const second = isNear ? bench::nearTo(first, 20, 5) : take(bench::text(1000, false, 12));
    compare(state, first, second, 85);
}
BENCHMARK_CAPTURE(compareEntries, near, true)->Arg(2)->Arg(4)->Arg(6)->Arg(12)->Arg(80);
BENCHMARK_CAPTURE(compareEntries, unlike, false)->Arg(2)->Arg(4)->Arg(6)->Arg(12)->Arg(80);

void compareReordered(benchmark::State& state) {
    compare(state, u"steel claw hammer 16 oz", u"hammer claw 16 oz steel", 100);
}
BENCHMARK(compareReordered);

void searchBySize(benchmark::State& state) {
    auto const count = static_cast<std::size_t>(state.range(0));
    search(state, mistypedEntry(777), bench::join(bench::entries(count)), u"", 85,
           static_cast<double>(count));
}
BENCHMARK(searchBySize)
    ->RangeMultiplier(10)
    ->Range(1'000, 1'000'000)
    ->Unit(benchmark::kMillisecond);

void searchByPercent(benchmark::State& state) {
    search(state, mistypedEntry(777), bench::join(bench::entries(kEntries)), u"",
           static_cast<int>(state.range(0)), kEntries);
}
BENCHMARK(searchByPercent)
    ->Arg(100)
    ->Arg(95)
    ->Arg(85)
    ->Arg(75)
    ->Arg(60)
    ->Arg(40)
    ->Arg(20)
    ->Arg(0)
    ->Unit(benchmark::kMillisecond);

// The corners: exclusions, search texts short and long, everything excluded.
void searchCorner(benchmark::State& state, std::u16string const& text,
                  std::u16string const& exclusions) {
    search(state, text, bench::join(bench::entries(kEntries)), exclusions,
           static_cast<int>(state.range(0)), kEntries);
}
#define CORNER(name, ...)                              \
    BENCHMARK_CAPTURE(searchCorner, name, __VA_ARGS__) \
        ->Arg(85)                                      \
        ->Arg(60)                                      \
        ->Unit(benchmark::kMillisecond)
CORNER(exclusions, mistypedEntry(777), bench::entries(2).back() + u";" + bench::entries(9).back());
CORNER(three_units, u"pro", u"");
CORNER(three_units_exclusions, u"pro", bench::entries(2).back());
CORNER(thousand_units, bench::text(1000, false, 9), u"");
CORNER(thousand_units_exclusions, bench::text(1000, false, 9), bench::entries(2).back());
CORNER(all_excluded, mistypedEntry(5), mistypedEntry(5));

// One entry of a million units: of words, of a single word, of one repeated word.
void searchMillion(benchmark::State& state, std::u16string const& entry,
                   std::u16string const& text) {
    search(state, text, entry, u"", static_cast<int>(state.range(0)), 1);
}
#define MILLION(name, ...)                              \
    BENCHMARK_CAPTURE(searchMillion, name, __VA_ARGS__) \
        ->Arg(85)                                       \
        ->Arg(0)                                        \
        ->Unit(benchmark::kMillisecond)
MILLION(words, bench::text(1'000'000, false, 21), bench::text(1000, false, 22));
MILLION(one_word, std::u16string(1'000'000, u'a'), u"bab");
MILLION(
    repeated,
    [] {
        std::u16string entry;
        while (entry.size() < 1'000'000)
            entry += u"ball ";
        return entry;
    }(),
    u"ball red");

void makeComponent(benchmark::State& state) {
    static stand_in_host::AddIn library(NEAR_TEXT_LIBRARY);
    for (auto _ : state) {
        stand_in_host::Component made(library);
        benchmark::DoNotOptimize(made.operator->());
    }
}
BENCHMARK(makeComponent)->Unit(benchmark::kMicrosecond);

}  // namespace
