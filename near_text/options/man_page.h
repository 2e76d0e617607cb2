// The man pages, made of the same texts and options as the help.
#pragma once

#include "near_text/commands/commands.h"

namespace near_text {

// The page of the program, or of one of its commands, as groff reads it.
std::string manPage(Program const& program, CLI::App const& command);

}  // namespace near_text
