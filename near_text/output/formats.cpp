#include <stdexcept>

#include "near_text/output/format.h"

namespace near_text {

// Each is defined in its format's file.
Format const& textFormat();
Format const& tsvFormat();
Format const& csvFormat();
Format const& jsonFormat();
Format const& htmlFormat();

namespace {

constexpr Format const& (*kFormats[])() = {textFormat, tsvFormat, csvFormat, jsonFormat,
                                           htmlFormat};

}  // namespace

Format const& formatNamed(std::string const& name) {
    for (auto const format : kFormats) {
        if (format().name == name) return format();
    }
    throw std::out_of_range("no format " + name);
}

std::vector<std::string> formatNames() {
    std::vector<std::string> names;
    for (auto const format : kFormats)
        names.emplace_back(format().name);
    return names;
}

}  // namespace near_text
