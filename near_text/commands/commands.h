// The program's commands. Each adds itself to the command line and says what to run when it is
// chosen.
#pragma once

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "host_client/component.h"
#include "near_text/messages/status.h"
#include "near_text/output/output.h"

namespace near_text {

// What the program says of itself or of a command, in the help and in the man page.
struct CommandText {
    std::string summary;     // a few words
    std::string details;     // may span several paragraphs
    std::string exitStatus;  // "0 alike, 1 different": a number, what it means, a comma
    std::vector<std::string> examples;
};

struct Program {
    CLI::App app;
    std::filesystem::path library;
    std::string locale;
    Output output;
    std::function<Status()> command;  // of the chosen command; its result is the exit status
    std::map<CLI::App const*, CommandText> texts;

    // Loaded at the first call and for good: the add-in keeps a text for as long as its process
    // lives.
    host_client::AddIn const& addIn() const;
    std::unique_ptr<host_client::Component> makeComponent() const;

    // A command with the options that all have.
    CLI::App& addCommand(std::string const& name, CommandText const& text);
    void describe(CLI::App& target, CommandText const& text);
    void addCommonOptions(CLI::App& target);
};

void addDescribe(Program& program);
void addCompare(Program& program);
void addSearch(Program& program);
void addMatch(Program& program);
void addDuplicates(Program& program);
void addSweep(Program& program);
void addHelp(Program& program);

// A text of the command line as units. Throws std::runtime_error that calls it `name`.
std::u16string argumentUnits(std::string const& name, std::string const& text);

}  // namespace near_text
