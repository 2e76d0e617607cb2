// The options that say what is printed, and how a run goes.
#pragma once

#include <CLI/App.hpp>
#include <string>

#include "near_text/options/file_options.h"
#include "near_text/options/settings.h"

namespace near_text {

inline constexpr char const* kOutputGroup = "Output";

// --color
class ColourOption {
public:
    CLI::Option& addTo(CLI::App& command);
    bool isDemanded() const { return when_ == "always"; }
    // `isForEyes` where no program reads the output unless that is demanded.
    bool isOn(bool isForEyes = true) const;

private:
    std::string when_ = "auto";
};

class OutputOptions {
public:
    // `hasPages` where the command finds pairs.
    void addTo(CLI::App& command, bool hasPages = true);
    // Validates the files' options as well, some of which are for the output. Throws
    // std::runtime_error.
    OutputSettings settings(FileOptions const& files) const;

    // Whatever the output is.
    bool isColourDemanded() const { return colour_.isDemanded(); }
    bool isForEyes() const { return format_ == "text"; }
    bool isPage() const { return format_ == "html"; }
    std::string const& format() const { return format_; }

private:
    CLI::App const* command_ = nullptr;
    std::string format_ = "text";
    std::string encoding_;
    ColourOption colour_;
};

class RunOptions {
public:
    RunOptions();
    void addTo(CLI::App& command);
    void addTruncate(CLI::App& command);
    RunSettings settings() const { return {jobs_, isStrict_, !hasNoIndex_, isTruncating_}; }

private:
    unsigned jobs_;
    bool isStrict_ = false;
    bool hasNoIndex_ = false;
    bool isTruncating_ = false;
};

}  // namespace near_text
