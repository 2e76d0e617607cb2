// The program as a whole.
#pragma once

#include "near_text/messages/status.h"

namespace near_text {

// Does what the command line says, and tells how it went. To be called once, with the arguments of
// `main`. Throws what the program ends with: std::exception with a message for the user, or
// BrokenPipe.
Status runProgram(int argc, char** argv);

}  // namespace near_text
