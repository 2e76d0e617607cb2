#include "near_text/program.h"

#include <CLI/CLI.hpp>
#include <cctype>
#include <sstream>

#include "host_client/library_file.h"
#include "near_text/commands/commands.h"
#include "near_text/input/text_codec.h"
#include "near_text/options/help_format.h"
#include "near_text/options/usage_error.h"

namespace near_text {

namespace {

constexpr char const* kLibraryFile = "libNearTextComparerLin64.so";

// Beside the program, or else where an installation with this program has its libraries.
std::filesystem::path defaultLibrary() {
    auto const folder = std::filesystem::read_symlink("/proc/self/exe").parent_path();
    auto const installed = folder.parent_path() / NEAR_TEXT_LIBRARY_FOLDER / kLibraryFile;
    bool const isBeside = std::filesystem::exists(folder / kLibraryFile);
    return isBeside || !std::filesystem::exists(installed) ? folder / kLibraryFile : installed;
}

// The library's is the one that a command would load.
Status showVersions(Program& program) {
    program.output.write("near_text " NEAR_TEXT_VERSION "\n");
    program.output.flush();
    program.output.write(onOneLine(kLibraryFile +
                                   (' ' + host_client::libraryVersion(program.library)) + " (" +
                                   absolute(program.library).string() + ")") +
                         '\n');
    program.output.flush();
    return Status::Found;
}

}  // namespace

Status runProgram(int argc, char** argv) {
    Program program;
    CLI::App& app = program.app;
    app.name("near_text");
    program.describe(
        app, {"find texts that are alike",
              "Finds texts that are alike, with the add-in libNearTextComparerLin64.so. Words that "
              "two texts share cancel out, wherever they are. The texts are alike if what is left "
              "of them differs little enough: a percentage and the lengths of the texts decide.",
              "0 alike or found, 1 different or nothing found, 2 an error",
              {"near_text compare \"red ball\" \"ball red\" --percent 100",
               "near_text match --texts supplier.txt --entries catalogue.txt --prepare "
               "--percent 60 --best"}});
    app.formatter(std::make_shared<HelpFormat>());
    app.require_subcommand(1);
    app.option_defaults()->disable_flag_override();  // --best=3 is not --best
    program.library = defaultLibrary();
    program.addCommonOptions(app);
    // Read after the option that names the library.
    app.set_version_flag("-V,--version", "",
                         "Print the versions of the program and of the library, and exit");
    addDescribe(program);
    addCompare(program);
    addSearch(program);
    addMatch(program);
    addDuplicates(program);
    addSweep(program);
    addHelp(program);
    try {
        app.parse(argc, argv);
        refuseEmptyValues(app);
    } catch (CLI::CallForVersion const&) {
        return showVersions(program);
    } catch (CLI::ParseError const& error) {
        // Help comes this way too, with the status 0.
        if (error.get_exit_code() != 0) throw std::runtime_error(usageError(app, error));
        std::ostringstream output;
        app.exit(error, output);
        program.output.write(output.str());
        program.output.flush();
        return Status::Found;
    }
    Status const status = program.command();
    program.output.flush();
    return status;
}

host_client::AddIn const& Program::addIn() const {
    static host_client::AddIn const& loaded = *new host_client::AddIn(library);
    return loaded;
}

std::unique_ptr<host_client::Component> Program::makeComponent() const {
    auto component = std::make_unique<host_client::Component>(addIn());
    component->setLocale(argumentUnits("--locale", locale));
    return component;
}

CLI::App& Program::addCommand(std::string const& name, CommandText const& text) {
    CLI::App& added = *app.add_subcommand(name);
    describe(added, text);
    addCommonOptions(added);
    return added;
}

void Program::describe(CLI::App& target, CommandText const& text) {
    texts[&target] = text;
    std::string summary = text.summary;
    summary[0] = static_cast<char>(std::toupper(summary[0]));
    target.description(summary);
    std::string footer =
        folded(text.details + "\n\nExit status: " + text.exitStatus + ".") + "\n\nExamples:";
    for (std::string const& example : text.examples)
        footer += "\n  " + example;
    target.footer(footer);
}

void Program::addCommonOptions(CLI::App& target) {
    target
        .add_option("--library", library,
                    "The add-in to load. Default: the one beside the program or installed with it")
        ->type_name("FILE");
    target
        .add_option("--locale", locale,
                    "The language of the add-in's reports: ru for Russian. Default: English")
        ->type_name("NAME");
}

std::u16string argumentUnits(std::string const& name, std::string const& text) {
    try {
        return toUnits(text);
    } catch (NotText const& error) {
        throw std::runtime_error(name + ": " + error.what());
    }
}

}  // namespace near_text
