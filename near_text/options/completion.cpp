// A shell is told of each command the options that it has, and of each option what may follow: the
// name of a file, one of a few words, something that nobody can guess, or nothing.
#include "near_text/options/completion.h"

#include <algorithm>

namespace near_text {

namespace {

using Apps = std::vector<CLI::App const*>;
using Options = std::vector<CLI::Option const*>;

Options optionsOf(CLI::App const& command) {
    Options options = command.get_options();
    std::erase_if(options, [](auto const* option) { return option->get_group().empty(); });
    return options;
}

Apps commandsOf(CLI::App const& program) {
    return program.get_subcommands({});
}

std::string join(std::vector<std::string> const& words, std::string const& between) {
    std::string text;
    for (std::string const& word : words)
        text += (text.empty() ? "" : between) + word;
    return text;
}

std::string commandNames(CLI::App const& program, std::string const& between) {
    std::vector<std::string> names;
    for (CLI::App const* command : commandsOf(program))
        names.push_back(command->get_name());
    return join(names, between);
}

// With their dashes; none for what is told by its place.
std::vector<std::string> namesOf(CLI::Option const& option) {
    std::vector<std::string> names;
    for (std::string const& name : option.get_snames())
        names.push_back('-' + name);
    for (std::string const& name : option.get_lnames())
        names.push_back("--" + name);
    return names;
}

bool takesValue(CLI::Option const& option) {
    return option.get_items_expected_max() > 0;
}

bool isFile(CLI::Option const& option) {
    return (option.get_positional() ? option.get_name() : option.get_type_name()) == "FILE";
}

// What the option may be, where the parser names it: "FORMAT:{csv,json}".
std::string choicesOf(CLI::Option const& option, CLI::App const& program) {
    if (option.get_positional() && option.get_name() == "COMMAND")
        return commandNames(program, " ");
    std::string const type = option.get_type_name();
    std::size_t const begin = type.find('{');
    if (begin == std::string::npos) return {};
    std::string choices = type.substr(begin + 1, type.find('}') - begin - 1);
    std::ranges::replace(choices, ',', ' ');
    return choices;
}

// The first sentence, or less.
std::string summaryOf(std::string const& text) {
    std::size_t end = text.size();
    for (char const* const stop : {". ", ": ", "; ", " ("})
        end = std::min(end, text.find(stop));
    return text.substr(0, end);
}

std::string escaped(std::string const& text, std::string const& special) {
    std::string result;
    for (char const c : text) {
        if (special.find(c) != std::string::npos) result += '\\';
        result += c;
    }
    return result;
}

// In bash and zsh nothing is special within single quotes, not even a backslash.
std::string quoted(std::string const& text) {
    std::string result = "'";
    for (char const c : text)
        result += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return result + "'";
}

void addCase(std::string& script, std::vector<std::string> const& names, std::string const& then) {
    if (!names.empty()) script += "        " + join(names, "|") + ") " + then + " ;;\n";
}

std::string bashCase(CLI::App const& program, CLI::App const& command) {
    std::string script = "    " + quoted(command.get_parent() ? command.get_name() : "") +
                         ")\n        case $previous in\n";
    std::vector<std::string> words;
    std::vector<std::string> ofFiles;
    std::vector<std::string> ofOthers;
    std::string afterAll;
    for (CLI::Option const* option : optionsOf(command)) {
        std::vector<std::string> const names = namesOf(*option);
        std::string const choices = choicesOf(*option, program);
        words.insert(words.end(), names.begin(), names.end());
        if (option->get_positional()) {
            if (isFile(*option)) afterAll = " files=1";
            if (!choices.empty()) words.push_back(choices);
        } else if (!choices.empty()) {
            addCase(script, names, "words=" + quoted(choices));
        } else if (takesValue(*option)) {
            auto& group = isFile(*option) ? ofFiles : ofOthers;
            group.insert(group.end(), names.begin(), names.end());
        }
    }
    if (command.get_parent() == nullptr) words.push_back(commandNames(program, " "));
    addCase(script, ofFiles, "files=1");
    addCase(script, ofOthers, "return");
    addCase(script, {"*"}, "words=" + quoted(join(words, " ")) + afterAll);
    return script + "        esac\n        ;;\n";
}

std::string bashScript(CLI::App const& program) {
    std::string const& name = program.get_name();
    std::string script = "_" + name + R"(() {
    local word=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
    local command='' words='' files='' i
    for ((i = 1; i < COMP_CWORD; ++i)); do
        case ${COMP_WORDS[i]} in
        )" + commandNames(program, "|") +
                         R"()
            command=${COMP_WORDS[i]}
            break
            ;;
        esac
    done
    COMPREPLY=()
    case $command in
)" + bashCase(program, program);
    for (CLI::App const* command : commandsOf(program))
        script += bashCase(program, *command);
    return script + R"(    esac
    [ -z "$words" ] || mapfile -t COMPREPLY < <(compgen -W "$words" -- "$word")
    [ -z "$files" ] || {
        compopt -o filenames 2>/dev/null
        mapfile -t -O "${#COMPREPLY[@]}" COMPREPLY < <(compgen -f -- "$word")
    }
}
complete -F _)" +
           name + ' ' + name + '\n';
}

std::string zshArgument(CLI::Option const& option, CLI::App const& program) {
    std::string const choices = choicesOf(option, program);
    std::string const action = !choices.empty() ? '(' + choices + ')'
                               : isFile(option) ? "_files"
                                                : " ";
    std::string const type = option.get_positional() ? option.get_name() : option.get_type_name();
    std::string const value = ':' + type.substr(0, type.find(':')) + ':' + action;
    if (option.get_positional()) return quoted(value);
    std::vector<std::string> const names = namesOf(option);
    std::string const rest = quoted('[' + escaped(summaryOf(option.get_description()), "[]:\\") +
                                    ']' + (takesValue(option) ? value : ""));
    if (names.size() == 1) return names.front() + rest;
    return quoted('(' + join(names, " ") + ')') + '{' + join(names, ",") + '}' + rest;
}

std::string zshArguments(CLI::App const& program, CLI::App const& command,
                         std::string const& indent) {
    std::string text;
    for (CLI::Option const* option : optionsOf(command))
        text += " \\\n" + indent + zshArgument(*option, program);
    return text;
}

std::string zshScript(CLI::App const& program) {
    std::string const& name = program.get_name();
    std::string script = "#compdef " + name + "\n_" + name + R"(() {
    local state line
    local -a commands=(
)";
    for (CLI::App const* command : commandsOf(program)) {
        script += "        " +
                  quoted(command->get_name() + ':' + escaped(command->get_description(), ":\\")) +
                  '\n';
    }
    script += "    )\n    _arguments -C" + zshArguments(program, program, "        ") + R"( \
        '1:command:->command' '*::argument:->argument'
    case $state in
    command) _describe command commands ;;
    argument)
        case $words[1] in
)";
    for (CLI::App const* command : commandsOf(program)) {
        script += "        " + command->get_name() + ")\n            _arguments" +
                  zshArguments(program, *command, "                ") + "\n            ;;\n";
    }
    return script + "        esac\n        ;;\n    esac\n}\n_" + name + " \"$@\"\n";
}

std::string fishQuoted(std::string const& text) {
    return '\'' + escaped(text, "\\'") + '\'';
}

std::string fishScript(CLI::App const& program) {
    std::string const begin = "complete -c " + program.get_name();
    std::string script = begin + " -f\n";
    auto const addOptions = [&](CLI::App const& command, std::string const& condition) {
        for (CLI::Option const* option : optionsOf(command)) {
            std::string const choices = choicesOf(*option, program);
            bool const isNamed = !option->get_positional();
            if (!isNamed && !isFile(*option) && choices.empty()) continue;
            script += begin + " -n " + fishQuoted(condition);
            for (std::string const& name : option->get_snames())
                script += " -s " + name;
            for (std::string const& name : option->get_lnames())
                script += " -l " + name;
            if (isFile(*option)) {
                script += isNamed ? " -r -F" : " -F";
            } else if (isNamed && takesValue(*option)) {
                script += " -x";
            }
            if (!choices.empty()) script += " -a " + fishQuoted(choices);
            if (isNamed) script += " -d " + fishQuoted(summaryOf(option->get_description()));
            script += '\n';
        }
    };
    addOptions(program, "__fish_use_subcommand");
    for (CLI::App const* command : commandsOf(program)) {
        script += begin + " -n __fish_use_subcommand -a " + command->get_name() + " -d " +
                  fishQuoted(command->get_description()) + '\n';
        addOptions(*command, "__fish_seen_subcommand_from " + command->get_name());
    }
    return script;
}

struct Shell {
    char const* name;
    std::string (*script)(CLI::App const& program);
};

constexpr Shell kShells[] = {{"bash", bashScript}, {"zsh", zshScript}, {"fish", fishScript}};

}  // namespace

std::vector<std::string> completionShells() {
    std::vector<std::string> names;
    for (Shell const& shell : kShells)
        names.emplace_back(shell.name);
    return names;
}

std::string completionScript(CLI::App const& program, std::string const& shell) {
    return std::ranges::find(kShells, shell, &Shell::name)->script(program);
}

}  // namespace near_text
