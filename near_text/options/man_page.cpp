#include "near_text/options/man_page.h"

#include <algorithm>
#include <cctype>

namespace near_text {

namespace {

constexpr char const* kEnvironment =
    "Two variables are read. A terminal gets no colours, unless --color demands them, where "
    "NO_COLOR "
    "is set and not empty, or where TERM is dumb.\n\n"
    "Files are UTF-8 unless an option or a byte order mark says otherwise, whatever the locale of "
    "the terminal.";

// Text in which nothing is a request or an escape.
std::string plain(std::string const& text) {
    std::string result;
    bool isLineStart = true;
    for (char const c : text) {
        if (isLineStart && (c == '.' || c == '\'')) result += "\\&";
        if (c == '\\') {
            result += "\\e";
        } else if (c == '-') {
            result += "\\-";
        } else {
            result += c;
        }
        isLineStart = c == '\n';
    }
    return result;
}

std::string paragraphs(std::string const& text) {
    std::string result = plain(text);
    for (std::size_t at = 0; (at = result.find("\n\n", at)) != std::string::npos;)
        result.replace(at, 2, "\n.PP\n");
    return result + '\n';
}

std::string bold(std::string const& text) {
    return "\\fB" + plain(text) + "\\fR";
}

std::string italic(std::string const& text) {
    return "\\fI" + plain(text) + "\\fR";
}

// "near_text" or "near_text match", or with another separator.
std::string fullName(CLI::App const& command, char separator) {
    CLI::App const* const parent = command.get_parent();
    return (parent != nullptr ? parent->get_name() + separator : "") + command.get_name();
}

// What the user puts in. What follows a colon is what it may be.
std::string valueOf(CLI::Option const& option) {
    std::string const type = option.get_type_name();
    return italic(type.substr(0, type.find(':')));
}

std::string tagOf(CLI::Option const& option) {
    if (option.get_positional()) return italic(option.get_name());
    std::string tag;
    for (std::string const& name : option.get_snames())
        tag += (tag.empty() ? "" : ", ") + bold('-' + name);
    for (std::string const& name : option.get_lnames())
        tag += (tag.empty() ? "" : ", ") + bold("--" + name);
    return option.get_items_expected_max() > 0 ? tag + ' ' + valueOf(option) : tag;
}

std::string capitals(std::string text) {
    for (char& c : text)
        c = static_cast<char>(std::toupper(c));
    return text;
}

std::string item(std::string const& tag, std::string const& text) {
    return ".TP\n" + tag + '\n' + plain(text) + '\n';
}

std::string synopsis(CLI::App const& command) {
    std::string text = ".SH SYNOPSIS\n" + bold(fullName(command, ' '));
    if (command.get_parent() == nullptr) return text + ' ' + italic("COMMAND") + " ...\n";
    for (CLI::Option const* option : command.get_options()) {
        bool const isNamed = option->get_required() && !option->get_positional();
        if (isNamed)
            text += ' ' + bold("--" + option->get_lnames().front()) + ' ' + valueOf(*option);
    }
    text += " [" + italic("OPTION") + " ...]";
    for (CLI::Option const* option : command.get_options()) {
        if (option->get_positional()) text += ' ' + tagOf(*option);
    }
    return text + '\n';
}

std::string options(CLI::App const& command) {
    std::string text = ".SH OPTIONS\n";
    for (std::string const& group : command.get_groups()) {
        if (group.empty()) continue;  // hidden
        text += ".SS " + plain(group == "Options" ? "General" : group) + '\n';
        for (CLI::Option const* option : command.get_options()) {
            if (option->get_group() == group)
                text += item(tagOf(*option), option->get_description());
        }
    }
    return text;
}

std::string commands(CLI::App const& app) {
    std::string text = ".SH COMMANDS\n";
    for (CLI::App const* command : app.get_subcommands({}))
        text += item(bold(command->get_name()), command->get_description());
    return text;
}

// "0 alike, 1 different" as a list.
std::string exitStatus(std::string const& text) {
    std::string result = ".SH EXIT STATUS\n";
    for (std::size_t at = 0; at < text.size();) {
        std::size_t const end = std::min(text.find(", ", at), text.size());
        std::size_t const blank = text.find(' ', at);
        result += item(bold(text.substr(at, blank - at)), text.substr(blank + 1, end - blank - 1));
        at = end + 2;
    }
    return result;
}

std::string examples(std::vector<std::string> const& lines) {
    std::string text = ".SH EXAMPLES\n";
    for (std::string const& line : lines)
        text += ".PP\n.nf\n" + plain(line) + "\n.fi\n";
    return text;
}

std::string seeAlso(CLI::App const& program, CLI::App const& command,
                    std::map<CLI::App const*, CommandText> const& texts) {
    std::string text;
    auto const add = [&](CLI::App const& other) {
        if (&other == &command) return;
        text += (text.empty() ? "" : " ,\n") + (".BR " + plain(fullName(other, '-')) + " (1)");
    };
    add(program);
    for (CLI::App const* other : program.get_subcommands({})) {
        if (texts.count(other) > 0) add(*other);
    }
    return ".SH SEE ALSO\n" + text + '\n';
}

}  // namespace

std::string manPage(CLI::App const& program, CLI::App const& command,
                    std::map<CLI::App const*, CommandText> const& texts) {
    std::string const name = fullName(command, '-');
    CommandText const& text = texts.at(&command);
    bool const isProgram = &command == &program;
    return ".TH " + plain(capitals(name)) +
           " 1 \"\" \"near_text " NEAR_TEXT_VERSION "\" \"User Commands\"\n.SH NAME\n" +
           plain(name) + " \\- " + plain(text.summary) + '\n' + synopsis(command) +
           ".SH DESCRIPTION\n" + paragraphs(text.details) + (isProgram ? commands(command) : "") +
           options(command) + exitStatus(text.exitStatus) + ".SH ENVIRONMENT\n" +
           paragraphs(kEnvironment) + examples(text.examples) + seeAlso(program, command, texts);
}

}  // namespace near_text
