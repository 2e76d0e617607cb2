#include "near_text/options/help_format.h"

namespace near_text {

namespace {

constexpr std::size_t kNameWidth = 24;

}  // namespace

std::string folded(std::string const& text, std::size_t width) {
    std::string result = text;
    std::size_t lineStart = 0;
    std::size_t blank = 0;  // the last one of the line, or the line's start
    for (std::size_t i = 0; i < result.size(); ++i) {
        if (i - lineStart >= width && blank > lineStart) {
            result[blank] = '\n';
            lineStart = blank + 1;
        }
        if (result[i] == '\n') lineStart = i + 1;
        if (result[i] == ' ') blank = i;
    }
    return result;
}

HelpFormat::HelpFormat() {
    column_width(kNameWidth);
}

std::string HelpFormat::make_option_desc(CLI::Option const* option) const {
    return folded(CLI::Formatter::make_option_desc(option), 80 - kNameWidth);
}

}  // namespace near_text
