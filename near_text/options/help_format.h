// Help texts folded to the width of a terminal.
#pragma once

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <string>

namespace near_text {

// Breaks lines at blanks so that each has at most `width` characters where a blank allows it.
std::string folded(std::string const& text, std::size_t width = 80);

class HelpFormat : public CLI::Formatter {
public:
    HelpFormat();
    std::string make_option_desc(CLI::Option const* option) const override;
};

}  // namespace near_text
