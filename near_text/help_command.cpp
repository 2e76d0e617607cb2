#include <CLI/CLI.hpp>

#include "near_text/commands.h"

namespace near_text {

namespace {

Status help(Program& program, std::string const& name) {
    CLI::App const* command = &program.app;
    try {
        if (!name.empty()) command = program.app.get_subcommand(name);
    } catch (CLI::OptionNotFound const&) {
        throw std::runtime_error(unknownCommand(program.app, name));
    }
    std::string const prefix = name.empty() ? "" : program.app.get_name() + ' ';
    program.output.write(command->get_formatter()->make_help(command, prefix + command->get_name(),
                                                             CLI::AppFormatMode::Normal));
    return Status::Found;
}

}  // namespace

void addHelp(Program& program) {
    auto const name = std::make_shared<std::string>();
    CLI::App& command = *program.app.add_subcommand("help", "Explain a command");
    command.add_option("COMMAND", *name, "The command; all of them where none is told")
        ->type_name("");
    command.callback(
        [&program, name] { program.command = [&program, name] { return help(program, *name); }; });
}

}  // namespace near_text
