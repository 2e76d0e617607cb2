// The command line: what may be given, and what is made of it.
#pragma once

#include <filesystem>

#include "near_text/options/settings.h"

namespace near_text {

// To be called with the arguments of `main` and the library that is loaded unless another is named.
// Throws std::runtime_error, with a message for the user, where they cannot be taken.
Settings readCommandLine(int argc, char const* const* argv,
                         std::filesystem::path const& defaultLibrary);

}  // namespace near_text
