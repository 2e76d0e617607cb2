// The options that say what is printed, and how a run goes.
#pragma once

#include <CLI/App.hpp>
#include <string>

#include "near_text/options/file_options.h"
#include "near_text/options/settings.h"

namespace near_text {

inline constexpr char const* kOutputGroup = "Output";

class OutputOptions {
public:
    // `hasPages` where the command finds pairs.
    void addTo(CLI::App& command, bool hasPages = true);
    // Validates the files' options as well, some of which are for the output. Throws
    // std::runtime_error.
    OutputSettings settings(FileOptions const& files) const;

    bool isForEyes() const { return format_ == "text"; }
    bool isPage() const { return format_ == "html"; }
    std::string const& format() const { return format_; }

private:
    CLI::App const* command_ = nullptr;
    std::string format_ = "text";
    std::string encoding_;
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
