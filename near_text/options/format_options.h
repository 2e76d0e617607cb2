// What the output of a command is like.
#pragma once

#include <CLI/App.hpp>
#include <string>

#include "near_text/output/format.h"
#include "near_text/output/output.h"

namespace near_text {

// Of the options that say what is printed, in the help.
inline constexpr char const* kOutputGroup = "Output";

struct FormatOptions {
    std::string name = "text";
    char delimiter = ',';  // of csv
    std::string encoding;  // empty for UTF-8

    void addTo(CLI::App& command);
    // Once the command line is read; throws std::runtime_error when there is no such encoding.
    void applyTo(Output& output) const;

    Format const& format() const { return formatNamed(name); }
    bool isForEyes() const { return name == "text"; }
    bool isCsv() const { return name == "csv"; }
};

}  // namespace near_text
