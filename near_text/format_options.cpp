#include "near_text/format_options.h"

namespace near_text {

void FormatOptions::addTo(CLI::App& command) {
    constexpr char const* kGroup = "Output";
    command
        .add_option(
            "-f,--format", name,
            "text for eyes; tsv, in which \\\\, \\t, \\n and \\r stand for what would break "
            "columns; csv; or json, an object a line. Default: text")
        ->type_name("FORMAT")
        ->check(CLI::IsMember(formatNames()))
        ->group(kGroup);
    command
        .add_option("--output-encoding", encoding,
                    "The encoding of the output, for programs that do not take UTF-8")
        ->type_name("NAME")
        ->group(kGroup);
}

void FormatOptions::applyTo(Output& output) const {
    if (!encoding.empty()) output.encodeAs(encoding);
}

}  // namespace near_text
