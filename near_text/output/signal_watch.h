// Ends what does not end by itself when a signal comes.
#pragma once

namespace near_text {

// To be called once, after catchSignals. Once a signal came, the process ends when no output has
// been written for a moment, whatever its threads are busy with or waiting for: what is finished is
// written, and the status is that of the signal. Throws std::runtime_error.
void watchForSignals();

}  // namespace near_text
