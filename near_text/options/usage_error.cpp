#include "near_text/options/usage_error.h"

#include <algorithm>

#include "near_text/options/values.h"
#include "reference/explanation.h"

namespace near_text {

namespace {

// There may be no words to exclude.
constexpr char const* kMayBeEmpty = "--exclude";
constexpr char const* kNoValue = "is given without a value";

// What the user may have meant, and how it may be spelt.
struct Candidate {
    std::string name;
    std::string spelling;
};

// The first of those that differ least, by `most` letters at the most; empty where none does.
std::string nearest(std::vector<Candidate> const& candidates, std::string const& word,
                    std::size_t most) {
    std::string name;
    std::size_t least = most + 1;
    for (Candidate const& candidate : candidates) {
        std::size_t const distance = reference::distanceBetween(
            argumentUnits("near_text", word), argumentUnits("near_text", candidate.spelling));
        if (distance >= least) continue;
        least = distance;
        name = candidate.name;
    }
    return name;
}

CLI::App const& chosen(CLI::App const& app) {
    auto const commands = app.get_subcommands();
    return commands.empty() ? app : *commands.front();
}

// A whole name, or else one that begins so.
std::string optionMeant(CLI::App const& command, std::string const& word) {
    std::size_t const most = word.size() / 3;
    std::vector<Candidate> names, beginnings;
    for (CLI::Option const* option : command.get_options()) {
        for (std::string const& name : option->get_lnames()) {
            // It lacks too many letters; and a word may be as long as a command line.
            if (name.size() + most < word.size()) continue;
            names.push_back({name, name});
            for (std::size_t size = word.size() - most; size <= word.size() + most; ++size)
                beginnings.push_back({name, name.substr(0, size)});
        }
    }
    std::string const whole = nearest(names, word, most);
    return whole.empty() ? nearest(beginnings, word, most) : whole;
}

// "--tresh" or "--tresh=5", as the user gave it.
std::string unknownOption(CLI::App const& app, CLI::App const& command, std::string const& given) {
    std::string const option = given.substr(0, given.find('='));
    if (command.get_option_no_throw(option) != nullptr)
        return option + ": goes behind the command, " + command.get_name();
    if (app.get_option_no_throw(option) != nullptr)
        return option + ": is for " + app.get_name() + " without a command";
    bool const isLong = option.starts_with("--");
    std::string const meant = isLong ? optionMeant(command, option.substr(2)) : "";
    return "there is no option '" + option + "'" +
           (meant.empty() ? "" : "; did you mean --" + meant + '?');
}

}  // namespace

std::string unknownCommand(CLI::App const& app, std::string const& name) {
    constexpr std::size_t kNear = 3;
    std::vector<Candidate> commands;
    for (CLI::App const* command : app.get_subcommands({}))
        commands.push_back({command->get_name(), command->get_name()});
    auto const isBegun = [&](Candidate const& command) {
        return !name.empty() && command.name.starts_with(name);
    };
    auto const begun = std::find_if(commands.begin(), commands.end(), isBegun);
    std::string const meant =
        begun != commands.end() ? begun->name : nearest(commands, name, kNear);
    return "there is no command '" + name + "'; " +
           (meant.empty() ? "near_text --help lists them" : "did you mean " + meant + '?');
}

std::string usageError(CLI::App const& app, CLI::ParseError const& error) {
    CLI::App const& command = chosen(app);
    auto const isOption = [](std::string const& word) {
        return word.size() > 1 && word.starts_with('-') && word != "--";
    };
    std::vector<std::string> const unknown = app.remaining(true);
    auto const word = std::find_if_not(unknown.begin(), unknown.end(), isOption);
    if (&command == &app) {
        if (word != unknown.end()) return unknownCommand(app, *word);
        if (unknown.empty()) return "no command is given; near_text --help lists them";
    }
    auto const option = std::find_if(unknown.begin(), unknown.end(), isOption);
    if (option != unknown.end()) return unknownOption(app, command, *option);
    if (word != unknown.end()) {
        return '\'' + *word + "' belongs to no option; near_text help " + command.get_name() +
               " lists them";
    }
    for (CLI::Option const* repeated : command.get_options()) {
        bool const isSingle = repeated->get_items_expected_max() == 1 &&
                              repeated->get_multi_option_policy() == CLI::MultiOptionPolicy::Throw;
        if (isSingle && repeated->count() > 1) return repeated->get_name() + ": is given twice";
    }
    std::string message = error.what();
    if (error.get_exit_code() != static_cast<int>(CLI::ExitCodes::ArgumentMismatch)) return message;
    std::string const name = message.substr(0, message.find_first_of(": "));
    // Of a flag the parser tells the name without its dashes.
    return name.starts_with('-') ? name + ": needs a value" : "--" + name + ": takes no value";
}

std::vector<std::string> withEmptyValues(CLI::App const& app, int argc, char const* const* argv) {
    std::vector<CLI::App const*> commands = app.get_subcommands({});
    commands.push_back(&app);
    auto const takesValue = [&](std::string const& name) {
        return std::ranges::any_of(commands, [&](CLI::App const* command) {
            CLI::Option const* const option = command->get_option_no_throw(name);
            return option != nullptr && option->get_items_expected_max() > 0;
        });
    };
    std::vector<std::string> arguments;
    bool isOption = true;
    for (int i = 1; i < argc; ++i) {
        arguments.emplace_back(argv[i]);
        std::string& given = arguments.back();
        isOption &= given != "--";
        std::string const name = given.substr(0, given.find('='));
        if (!isOption || !name.starts_with("--") || name + '=' != given || !takesValue(name))
            continue;
        if (name != kMayBeEmpty) refuse(name, kNoValue);
        given = name;
        arguments.emplace_back();
    }
    return arguments;
}

void refuseMisleading(CLI::App const& app, int argc, char const* const* argv) {
    CLI::App const& command = chosen(app);
    for (CLI::App const* const owner : {&app, &command}) {
        for (CLI::Option const* option : owner->get_options()) {
            if (option->get_positional() || option->check_name(kMayBeEmpty)) continue;
            auto const& values = option->results();
            if (std::find(values.begin(), values.end(), "") != values.end())
                refuse(option->get_name(), kNoValue);
        }
    }
    for (int i = 1; i < argc && std::string_view(argv[i]) != "--"; ++i) {
        std::string const given = argv[i];
        std::string const name = given.substr(0, given.find('='));
        if (!name.starts_with("--") || name == given) continue;
        CLI::Option const* const option = command.get_option_no_throw(name);
        if (option != nullptr && option->get_items_expected_max() == 0)
            refuse(name, "takes no value");
    }
}

}  // namespace near_text
