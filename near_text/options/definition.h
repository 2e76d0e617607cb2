// What defines a command: its texts, its options, and how their values become its settings.
//
// A command's `define` function gives its options places for the values as given, and a function
// that reads these once the whole command line is parsed.
#pragma once

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "near_text/options/settings.h"

namespace near_text {

// What the program says of itself or of a command, in the help and in the man page.
struct CommandText {
    std::string summary;     // a few words
    std::string details;     // may span several paragraphs
    std::string exitStatus;  // "0 alike, 1 different": a number, what it means, a comma
    std::vector<std::string> examples;
};

// Validates what was given. Throws std::runtime_error.
using ReadSettings = std::function<Settings(AddInSettings const& addIn)>;

struct Definition {
    char const* name;
    CommandText text;
    ReadSettings (*define)(CLI::App& command);
};

extern Definition const kCompareDefinition;
extern Definition const kSearchDefinition;
extern Definition const kMatchDefinition;
extern Definition const kDuplicatesDefinition;
extern Definition const kSweepDefinition;
extern Definition const kDescribeDefinition;

}  // namespace near_text
