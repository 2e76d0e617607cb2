#include "near_text/options/values.h"

#include <charconv>
#include <sstream>

#include "near_text/input/table.h"
#include "near_text/input/text_codec.h"

namespace near_text {

void refuse(std::string const& option, std::string const& reason) {
    throw std::runtime_error(option + ": " + reason);
}

CLI::Validator percentCheck() {
    return CLI::Validator(
        [](std::string const& text) {
            int percent = -1;
            char const* const end = text.data() + text.size();
            auto const read = std::from_chars(text.data(), end, percent);
            bool const isPercentage =
                read.ec == std::errc() && read.ptr == end && percent >= 0 && percent <= 100;
            return isPercentage ? std::string()
                                : '\'' + text + "' is not a whole number from 0 to 100";
        },
        "");
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
            bool const isLacking = (',' + list + ',').find(",,") != std::string::npos;
            if (isLacking && !list.empty())
                refuse(shown, '\'' + list + "' has a comma without a value");
            std::istringstream stream(list);
            for (std::string value; std::getline(stream, value, ',');)
                values.push_back(value);
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
