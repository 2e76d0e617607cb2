// What the user is told about a command line that cannot be taken.
#pragma once

#include <CLI/App.hpp>
#include <string>
#include <vector>

namespace near_text {

// The message for a command that does not exist, with the one that was perhaps meant.
std::string unknownCommand(CLI::App const& app, std::string const& name);

// The message for what the parser of `app` threw.
std::string usageError(CLI::App const& app, CLI::ParseError const& error);

// The arguments behind the program's name. Behind "--exclude=" the parser would take the next one
// for the value, so that the empty value becomes an argument of its own. Throws std::runtime_error
// for any other option that ends so.
std::vector<std::string> withEmptyValues(CLI::App const& app, int argc, char const* const* argv);

// What the parser takes in silence. An option that is given with nothing, as by a variable of a
// script that is not set, would do as if it were not given; a flag that is given a value, as if it
// were given without. Throws std::runtime_error.
void refuseMisleading(CLI::App const& app, int argc, char const* const* argv);

}  // namespace near_text
