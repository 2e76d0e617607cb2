#include <CLI/CLI.hpp>

#include "near_text/commands/commands.h"
#include "near_text/options/man_page.h"
#include "near_text/options/usage_error.h"

namespace near_text {

namespace {

Status help(Program& program, std::string const& name, bool isManPage) {
    CLI::App const* command = &program.app;
    try {
        if (!name.empty()) command = program.app.get_subcommand(name);
    } catch (CLI::OptionNotFound const&) {
        throw std::runtime_error(unknownCommand(program.app, name));
    }
    if (isManPage) {
        if (program.texts.count(command) == 0) throw std::runtime_error(name + " has no man page");
        program.output.write(manPage(program, *command));
        return Status::Found;
    }
    std::string const prefix = name.empty() ? "" : program.app.get_name() + ' ';
    program.output.write(command->get_formatter()->make_help(command, prefix + command->get_name(),
                                                             CLI::AppFormatMode::Normal));
    return Status::Found;
}

}  // namespace

void addHelp(Program& program) {
    auto const name = std::make_shared<std::string>();
    auto const isManPage = std::make_shared<bool>(false);
    CLI::App& command = *program.app.add_subcommand("help", "Explain a command");
    command.footer("");  // that of the program would come down
    command.add_option("COMMAND", *name, "The command. Default: the program as a whole")
        ->type_name("");
    command.add_flag("--man", *isManPage, "Print the source of the man page instead");
    command.callback([&program, name, isManPage] {
        program.command = [&program, name, isManPage] { return help(program, *name, *isManPage); };
    });
}

}  // namespace near_text
