// A line on a terminal's standard error that says how far a run is; nothing where there is none.
#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>

#include "near_text/input/line_reader.h"

namespace near_text {

// As much of how far a run is as fits into so many columns. Each character takes one.
std::string progressText(std::size_t done, std::optional<std::size_t> total, double seconds,
                         std::size_t columns);

class Progress {
public:
    // `file` is what is run through: where it is a file its lines are counted first.
    explicit Progress(TextFile const& file);
    ~Progress() { clear(); }
    Progress(Progress const&) = delete;
    Progress& operator=(Progress const&) = delete;

    // So many lines are done. Draws, a few times a second.
    void show(std::size_t done);
    // Take the line away until it is drawn next, so that a message, or output if it goes to a
    // terminal too, can take its place.
    void clear();
    void clearForOutput();

private:
    using Clock = std::chrono::steady_clock;

    bool isShown_;
    bool isOutputShown_;
    bool isDrawn_ = false;
    std::optional<std::size_t> total_;
    Clock::time_point start_ = Clock::now();
    Clock::time_point nextDraw_;
};

}  // namespace near_text
