// A line on a terminal's standard error that says how far a run is; nothing where there is none.
#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>

namespace near_text {

// As much of how far a run is as fits into so many columns. Each character takes one.
// `share` is how much of all these lines are, if that is known, from 0 to 1.
std::string progressText(std::size_t lines, std::optional<double> share, double seconds,
                         std::size_t columns);

class Progress {
public:
    Progress();
    ~Progress() { clear(); }
    Progress(Progress const&) = delete;
    Progress& operator=(Progress const&) = delete;

    // So many lines are done, which are this share of all. Draws, a few times a second.
    void show(std::size_t lines, std::optional<double> share);
    // Take the line away until it is drawn next, so that a message, or output if it goes to a
    // terminal too, can take its place.
    void clear();
    void clearForOutput();

private:
    using Clock = std::chrono::steady_clock;

    bool isShown_;
    bool isOutputShown_;
    bool isDrawn_ = false;
    Clock::time_point start_ = Clock::now();
    Clock::time_point nextDraw_;
};

}  // namespace near_text
