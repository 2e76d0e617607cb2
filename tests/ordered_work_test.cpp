#include "near_text/run/ordered_work.h"

#include <atomic>
#include <chrono>

#include "tests/test_support.h"

namespace {

using near_text::LineResult;
using near_text::OrderedWork;

// Waits for what must not happen, so not for long.
bool happensSoon(auto const& condition) {
    auto const end = std::chrono::steady_clock::now() + std::chrono::milliseconds(200);
    while (!condition() && std::chrono::steady_clock::now() < end)
        std::this_thread::yield();
    return condition();
}

// Lines are told apart by the number that stands in their text.
auto lineOf(std::size_t number) {
    near_text::Line line;
    line.text = std::to_string(number);
    return line;
}

TEST(OrderedWork, DeliversInOrderAndRethrows) {
    for (bool const isFailing : {false, true}) {
        std::string delivered;
        OrderedWork work(
            4,
            [&](std::size_t, auto const& line) -> LineResult {
                if (isFailing && line.text == "30") throw std::runtime_error("no");
                return {line.text + ' ', {}, false};
            },
            [&](LineResult const& result, bool) {
                delivered += result.output;
                return true;
            });
        std::string all;
        for (std::size_t i = 0; i < 200 && work.add(lineOf(i)); ++i)
            all += std::to_string(i) + ' ';
        if (isFailing) {
            EXPECT_THROW(work.finish(), std::runtime_error);
            EXPECT_TRUE(all.starts_with(delivered));
            EXPECT_EQ(delivered.find("30 "), std::string::npos);
        } else {
            work.finish();
            EXPECT_EQ(delivered, all);
        }
    }
}

TEST(OrderedWork, DeliversNothingAfterItFailedToDeliver) {
    std::atomic<bool> isSecondBegun = false, isThrown = false;
    std::atomic<int> deliveries = 0;
    OrderedWork work(
        2,
        [&](std::size_t, auto const& line) -> LineResult {
            bool const isFirst = line.text == "0";
            if (!isFirst) {
                isSecondBegun = true;
                isSecondBegun.notify_all();
            }
            (isFirst ? isSecondBegun : isThrown).wait(false);
            return {};
        },
        [&](LineResult const&, bool) -> bool {
            ++deliveries;
            isThrown = true;
            isThrown.notify_all();
            throw std::runtime_error("no");
        });
    work.add(lineOf(0));
    work.add(lineOf(1));
    isSecondBegun.wait(false);
    EXPECT_THROW(work.finish(), std::runtime_error);
    EXPECT_EQ(deliveries, 1);
}

// Lines that wait for the first one to be done, and what came of them.
TEST(OrderedWork, HoldsBoundedLinesAndResults) {
    struct {
        std::size_t resultSize, lines, mostBegun;
    } const cases[] = {{0, 2000, 1000}, {64 << 20, 4, 2}};
    for (auto const& [resultSize, lines, mostBegun] : cases) {
        std::atomic<std::size_t> begun = 0, delivered = 0;
        OrderedWork work(
            2,
            [&, most = mostBegun, size = resultSize](std::size_t, auto const& line) -> LineResult {
                ++begun;
                if (line.text == "0") {
                    EXPECT_FALSE(happensSoon([&] { return begun > most; }));
                }
                return {.output = std::string(line.text == "1" ? size : 0, 'x'),
                        .line = std::stoul(line.text)};
            },
            [&](LineResult const& result, bool) {
                EXPECT_EQ(result.line, delivered);  // none has taken another's place
                return ++delivered > 0;
            });
        for (std::size_t i = 0; i < lines; ++i)
            work.add(lineOf(i));
        work.finish();
        EXPECT_EQ(delivered, lines);
    }
}

}  // namespace
