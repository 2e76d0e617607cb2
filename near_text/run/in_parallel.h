// Work on things that are all there already, by several threads, in no order.
#pragma once

#include <cstddef>
#include <functional>

#include "near_text/output/progress.h"

namespace near_text {

// Calls `work` once for each number below `count`; workers are numbered from 0, each on a thread of
// its own. Rethrows the first thing thrown, and throws Interrupted when a signal came. The progress
// goes from the share that is done before to the one that is done after.
void inParallel(std::size_t workers, std::size_t count, Progress& progress, double before,
                double after,
                std::function<void(std::size_t worker, std::size_t number)> const& work);

}  // namespace near_text
