// Values that are more than a text, and what is said of those that cannot be taken.
#pragma once

#include <CLI/App.hpp>
#include <limits>
#include <string>
#include <vector>

namespace near_text {

// An option that would do nothing or contradicts another, with the reason. Throws
// std::runtime_error.
[[noreturn]] void refuse(std::string const& option, std::string const& reason);

// How alike texts must be where it is not said.
inline constexpr int kDefaultPercent = 80;

// For options that take a whole number in this range; what passes has no leading zeros.
CLI::Validator numberCheck(int least, int most = std::numeric_limits<int>::max());
inline CLI::Validator percentCheck() {
    return numberCheck(0, 100);
}

// What separates columns: the name of a character.
CLI::Validator delimiterCheck();

// An option whose values are given in one argument, with commas between them, or one by one. They
// are quoted as in a row of a table.
CLI::Option& addCommaList(CLI::App& command, std::string const& name,
                          std::vector<std::string>& values, std::string const& text);

// A text of the command line as units. Throws std::runtime_error that calls it `name`.
std::u16string argumentUnits(std::string const& name, std::string const& text);

}  // namespace near_text
