// The program's commands. Each adds itself to the command line and tells what to run when it is
// chosen.
#pragma once

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>

#include "near_text/output.h"
#include "near_text/status.h"
#include "stand_in_host/component.h"

namespace near_text {

struct Program {
    CLI::App app;
    std::filesystem::path library;
    std::string locale;
    Output output;
    std::function<Status()> command;  // of the chosen command; its result is the exit status

    // Loaded at the first call and for good: the add-in keeps a text for as long as its process
    // lives.
    stand_in_host::AddIn const& addIn() const;
    std::unique_ptr<stand_in_host::Component> makeComponent() const;

    // A command with the options that all have. `details` may span several sentences.
    CLI::App& addCommand(std::string const& name, std::string const& summary,
                         std::string const& details, std::string const& example);
    void addCommonOptions(CLI::App& target);
};

void addDescribe(Program& program);
void addCompare(Program& program);
void addSearch(Program& program);
void addMatch(Program& program);
void addDuplicates(Program& program);
void addSweep(Program& program);
void addHelp(Program& program);

// What to say to a command that there is none of, with the one that was perhaps meant.
std::string unknownCommand(CLI::App const& app, std::string const& name);

// A text of the command line as units. Throws std::runtime_error that calls it `name`.
std::u16string argumentUnits(std::string const& name, std::string const& text);

}  // namespace near_text
