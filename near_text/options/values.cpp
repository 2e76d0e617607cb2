#include "near_text/options/values.h"

#include <algorithm>

#include "near_text/input/number.h"
#include "near_text/input/row_parser.h"
#include "near_text/input/table.h"
#include "near_text/input/text_codec.h"

namespace near_text {

void refuse(std::string const& option, std::string const& reason) {
    throw std::runtime_error(option + ": " + reason);
}

// The parser reads a number that begins with a zero as an octal one.
CLI::Validator numberCheck(int least, int most) {
    return {[=](std::string& text) {
                auto const number = parseNumber<int>(text, least, most);
                if (!number) {
                    return '\'' + text + "' is not a whole number from " + std::to_string(least) +
                           " to " + std::to_string(most);
                }
                text = std::to_string(*number);
                return std::string();
            },
            ""};
}

CLI::Validator delimiterCheck() {
    return CLI::Validator(
        [](std::string const& name) {
            try {
                // That nothing is given is told of all options in one way.
                if (!name.empty()) delimiterOf(name);
            } catch (std::runtime_error const& error) {
                return std::string(error.what());
            }
            return std::string();
        },
        "");
}

// The parser would leave out an empty value, as a variable of a script that is not set makes it.
CLI::Option& addCommaList(CLI::App& command, std::string const& name,
                          std::vector<std::string>& values, std::string const& text) {
    auto const split = [shown = name.substr(name.find("--")),
                        &values](std::vector<std::string> const& lists) {
        for (std::string const& list : lists) {
            RowParser parser(',');
            parser.begin();
            if (!parser.take(list) || !parser.endLine({}))
                refuse(shown, '\'' + list + "' has a quote that closes nothing or stays open");
            std::vector<std::string> const some = parser.takeFields();
            if (some.size() > 1 && std::ranges::count(some, "") > 0)
                refuse(shown, '\'' + list + "' has a comma without a value");
            values.insert(values.end(), some.begin(), some.end());
        }
    };
    return *command.add_option_function<std::vector<std::string>>(name, split, text)
                ->allow_extra_args(false);
}

std::u16string argumentUnits(std::string const& name, std::string const& text) {
    try {
        return toUnits(text);
    } catch (NotText const& error) {
        throw std::runtime_error(name + ": " + error.what());
    }
}

}  // namespace near_text
