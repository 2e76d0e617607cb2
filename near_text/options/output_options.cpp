#include "near_text/options/output_options.h"

#include <algorithm>
#include <thread>

#include "near_text/options/values.h"
#include "near_text/output/terminal_marks.h"

namespace near_text {

namespace {

constexpr char const* kRunningGroup = "Running";

std::string quoted(std::string const& word) {
    constexpr char const* kPlain =
        "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_-+./,:=@%";
    if (!word.empty() && word.find_first_not_of(kPlain) == std::string::npos) return word;
    std::string text = "'";
    for (char const c : word)
        text += c == '\'' ? "'\\''" : std::string(1, c);
    return text + '\'';
}

// Without what says how it is run and written.
std::string commandLine(CLI::App const& command) {
    std::string line = "near_text " + command.get_name();
    for (CLI::Option const* option : command.get_options()) {
        std::string const& group = option->get_group();
        if (option->count() == 0 || group == kRunningGroup || group == kOutputGroup) continue;
        bool const isFlag = option->get_items_expected_max() == 0;
        std::string const name = option->get_positional() ? "" : ' ' + option->get_name();
        if (isFlag || !option->get_positional()) line += name;
        if (isFlag) continue;
        for (std::string const& value : option->results())
            line += ' ' + quoted(value);
    }
    return line;
}

}  // namespace

CLI::Option& ColourOption::addTo(CLI::App& command) {
    return *command
                .add_option("--color", when_,
                            "Mark how the texts differ: always, never, or auto, where the "
                            "output is a terminal, NO_COLOR is empty and TERM is not dumb. Words "
                            "that cancelled are dim, and what is left is bold; of it, what the "
                            "other text lacks is underlined, and what it has something else for "
                            "is reversed. Default: auto")
                ->type_name("WHEN")
                ->check(CLI::IsMember({"auto", "always", "never"}));
}

bool ColourOption::isOn(bool isForEyes) const {
    return isDemanded() || (when_ == "auto" && isForEyes && isColourTerminal());
}

void OutputOptions::addTo(CLI::App& command, bool hasPages) {
    command_ = &command;
    std::vector<std::string> names;
    for (std::string const& name : formatNames()) {
        if (hasPages || !formatNamed(name).isPage) names.push_back(name);
    }
    command
        .add_option(
            "-f,--format", format_,
            "text, for reading; tsv, with \\\\, \\t, \\n and \\r for characters that would break "
            "columns; csv; json, one object on each line" +
                std::string(hasPages ? "; or html, a page on which to look at matches and to "
                                       "accept or reject them"
                                     : "") +
                ". Default: text")
        ->type_name("FORMAT")
        ->check(CLI::IsMember(names))
        ->group(kOutputGroup);
    command
        .add_option("--output-encoding", encoding_,
                    "The encoding of the output, for programs that do not read UTF-8")
        ->type_name("NAME")
        ->group(kOutputGroup);
    if (hasPages) colour_.addTo(command).group(kOutputGroup);
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
    if (format.isPage && !encoding_.empty())
        refuse("--output-encoding", "has no effect on a page, which is UTF-8");
    if (colour_.isDemanded() && !isForEyes())
        refuse("--color", "has no effect in the format " + format_ + ", only in text");
    // Another encoding is for programs.
    bool const isColoured = colour_.isOn(isForEyes() && encoding_.empty());
    return {&format, files.delimiter(), encoding_, commandLine(*command_),
            format.isPage || isColoured};
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
