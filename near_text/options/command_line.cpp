// The parser is given every command's options with places for their values. When it has read the
// line, the chosen command makes its settings of them.
#include "near_text/options/command_line.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cctype>
#include <sstream>

#include "near_text/messages/memory.h"
#include "near_text/options/completion.h"
#include "near_text/options/definition.h"
#include "near_text/options/help_format.h"
#include "near_text/options/man_page.h"
#include "near_text/options/usage_error.h"
#include "near_text/options/values.h"

namespace near_text {

namespace {

constexpr Definition const* kDefinitions[] = {&kDescribeDefinition,   &kCompareDefinition,
                                              &kSearchDefinition,     &kMatchDefinition,
                                              &kDuplicatesDefinition, &kSweepDefinition};

CommandText const kProgramText = {
    "find texts that are alike",
    "Finds texts that are alike, with the add-in libNearTextComparerLin64.so. Words that two texts "
    "share cancel out, wherever they are. The texts are alike if what is left of them differs "
    "little enough: a percentage and the lengths of the texts decide.",
    "0 alike or found, 1 different or nothing found, 2 an error",
    {"near_text compare \"red ball\" \"ball red\" --percent 100",
     "near_text match --texts supplier.txt --entries catalogue.txt --prepare --percent 60 --best"}};

class CommandLine {
public:
    explicit CommandLine(std::filesystem::path const& defaultLibrary);

    Settings read(int argc, char const* const* argv);

private:
    void describe(CLI::App& target, CommandText const& text);
    void addCommonOptions(CLI::App& target);
    void define(Definition const& definition);
    void defineHelp();
    std::string help() const;
    AddInSettings addIn() const { return {library_, argumentUnits("--locale", locale_)}; }

    CLI::App app_;
    std::map<CLI::App const*, CommandText> texts_;
    std::map<CLI::App const*, ReadSettings> readers_;
    std::filesystem::path library_;
    std::string locale_;
    std::string explained_;  // the command that help is asked for
    bool isManPage_ = false;
    std::string shell_;  // that completions are asked for
};

CommandLine::CommandLine(std::filesystem::path const& defaultLibrary) : library_(defaultLibrary) {
    app_.name("near_text");
    describe(app_, kProgramText);
    app_.formatter(std::make_shared<HelpFormat>());
    app_.require_subcommand(1);
    app_.option_defaults()->disable_flag_override();  // --best=3 is not --best
    addCommonOptions(app_);
    // Read after the option that names the library.
    app_.set_version_flag("-V,--version", "",
                          "Print the versions of the program and of the library, and exit");
    for (Definition const* definition : kDefinitions)
        define(*definition);
    defineHelp();
}

Settings CommandLine::read(int argc, char const* const* argv) {
    try {
        std::vector<std::string> arguments = withEmptyValues(app_, argc, argv);
        std::ranges::reverse(arguments);  // as the parser takes them
        app_.parse(std::move(arguments));
        refuseMisleading(app_, argc, argv);
        return readers_.at(app_.get_subcommands().front())(addIn());
    } catch (CLI::CallForVersion const&) {
        return VersionSettings{addIn()};
    } catch (CLI::ParseError const& error) {
        // Help comes this way too, with the status 0.
        if (error.get_exit_code() != 0) throw std::runtime_error(usageError(app_, error));
        std::ostringstream text;
        app_.exit(error, text);
        return PrintSettings{text.str()};
    }
}

void CommandLine::describe(CLI::App& target, CommandText const& text) {
    texts_[&target] = text;
    std::string summary = text.summary;
    summary[0] = static_cast<char>(std::toupper(summary[0]));
    target.description(summary);
    std::string footer =
        folded(text.details + "\n\nExit status: " + text.exitStatus + ".") + "\n\nExamples:";
    for (std::string const& example : text.examples)
        footer += "\n  " + example;
    target.footer(footer);
}

void CommandLine::addCommonOptions(CLI::App& target) {
    target
        .add_option("--library", library_,
                    "The add-in to load. Default: the one beside the program or installed with it")
        ->type_name("FILE");
    target
        .add_option("--locale", locale_,
                    "The language of the add-in's reports: ru for Russian. Default: English")
        ->type_name("NAME");
}

void CommandLine::define(Definition const& definition) {
    CLI::App& command = *app_.add_subcommand(definition.name);
    describe(command, definition.text);
    addCommonOptions(command);
    readers_[&command] = definition.define(command);
}

void CommandLine::defineHelp() {
    CLI::App& command = *app_.add_subcommand("help", "Explain a command");
    command.footer("");  // that of the program would come down
    CLI::Option* const name =
        command.add_option("COMMAND", explained_, "The command. Default: the program as a whole")
            ->type_name("");
    CLI::Option* const man =
        command.add_flag("--man", isManPage_, "Print the source of the man page instead");
    command
        .add_option("--completion", shell_,
                    "Print what this shell completes command lines of the program with instead")
        ->type_name("SHELL")
        ->check(CLI::IsMember(completionShells()))
        ->excludes(man, name);
    readers_[&command] = [this](AddInSettings const&) { return PrintSettings{help()}; };
}

std::string CommandLine::help() const {
    if (!shell_.empty()) return completionScript(app_, shell_);
    CLI::App const* command = &app_;
    try {
        if (!explained_.empty()) command = app_.get_subcommand(explained_);
    } catch (CLI::OptionNotFound const&) {
        throw std::runtime_error(unknownCommand(app_, explained_));
    }
    if (isManPage_) {
        if (texts_.count(command) == 0) throw std::runtime_error(explained_ + " has no man page");
        return manPage(app_, *command, texts_);
    }
    std::string const prefix = explained_.empty() ? "" : app_.get_name() + ' ';
    return command->get_formatter()->make_help(command, prefix + command->get_name(),
                                               CLI::AppFormatMode::Normal);
}

}  // namespace

Settings readCommandLine(int argc, char const* const* argv,
                         std::filesystem::path const& defaultLibrary) {
    Settings settings = CommandLine(defaultLibrary).read(argc, argv);
    requireMemory();  // the parser's streams write less, and say nothing
    return settings;
}

}  // namespace near_text
