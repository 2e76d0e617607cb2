#include "near_text/options/output_options.h"

#include <algorithm>
#include <thread>

#include "near_text/options/values.h"

namespace near_text {

namespace {

constexpr char const* kRunningGroup = "Running";

}  // namespace

void OutputOptions::addTo(CLI::App& command) {
    command
        .add_option(
            "-f,--format", format_,
            "text, for reading; tsv, with \\\\, \\t, \\n and \\r for characters that would break "
            "columns; csv; or json, one object on each line. Default: text")
        ->type_name("FORMAT")
        ->check(CLI::IsMember(formatNames()))
        ->group(kOutputGroup);
    command
        .add_option("--output-encoding", encoding_,
                    "The encoding of the output, for programs that do not read UTF-8")
        ->type_name("NAME")
        ->group(kOutputGroup);
}

OutputSettings OutputOptions::settings(FileOptions const& files) const {
    files.validate(format_ == "csv");
    Format const& format = formatNamed(format_);
    if (files.hasKept() && !format.carriesColumns) {
        std::string others;
        for (std::string const& name : formatNames()) {
            if (formatNamed(name).carriesColumns) others += (others.empty() ? "" : ", ") + name;
        }
        refuse("--format", format_ + " does not show kept columns; these do: " + others);
    }
    return {&format, files.delimiter(), encoding_};
}

RunOptions::RunOptions() : jobs_(std::max(1U, std::thread::hardware_concurrency())) {}

void RunOptions::addTo(CLI::App& command) {
    command
        .add_option("-j,--jobs", jobs_,
                    "Threads to search with, 1 to 256. Default: one for each processor")
        ->type_name("N")
        ->transform(numberCheck(1, 256))
        ->group(kRunningGroup);
    command
        .add_flag("--strict", isStrict_,
                  "Stop at the first line that is too long, is not valid text or cannot be written "
                  "in the output encoding, instead of going on")
        ->group(kRunningGroup);
    command
        .add_flag("--no-index", hasNoIndex_,
                  "Give the add-in every entry for every text. The answers are the same, and "
                  "take longer")
        ->group(kRunningGroup);
}

void RunOptions::addTruncate(CLI::App& command) {
    command
        .add_flag("--truncate", isTruncating_,
                  "Search for a text of more than 1000 units as far as the last blank within "
                  "these, instead of reporting an error")
        ->group(kRunningGroup);
}

}  // namespace near_text
