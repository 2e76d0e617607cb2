// The man pages, made of the same texts and options as the help.
#pragma once

#include <map>
#include <string>

#include "near_text/options/definition.h"

namespace near_text {

// The page of the program, or of one of its commands, as groff reads it. `texts` has those of all
// that have a page.
std::string manPage(CLI::App const& program, CLI::App const& command,
                    std::map<CLI::App const*, CommandText> const& texts);

}  // namespace near_text
