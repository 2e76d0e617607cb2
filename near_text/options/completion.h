// What shells complete a command line with, made of the same options as the help.
#pragma once

#include <string>
#include <vector>

#include "near_text/options/definition.h"

namespace near_text {

std::vector<std::string> completionShells();

// The script for one of these shells, which asks nothing of the program when it runs.
std::string completionScript(CLI::App const& program, std::string const& shell);

}  // namespace near_text
