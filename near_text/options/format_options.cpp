#include "near_text/options/format_options.h"

namespace near_text {

void FormatOptions::addTo(CLI::App& command) {
    command
        .add_option(
            "-f,--format", name,
            "text, for reading; tsv, with \\\\, \\t, \\n and \\r for characters that would break "
            "columns; csv; or json, one object on each line. Default: text")
        ->type_name("FORMAT")
        ->check(CLI::IsMember(formatNames()))
        ->group(kOutputGroup);
    command
        .add_option("--output-encoding", encoding,
                    "The encoding of the output, for programs that do not read UTF-8")
        ->type_name("NAME")
        ->group(kOutputGroup);
}

void FormatOptions::applyTo(Output& output) const {
    if (!encoding.empty()) output.encodeAs(encoding);
}

}  // namespace near_text
