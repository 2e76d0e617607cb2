#include <map>
#include <thread>

#include "near_text/commands.h"
#include "near_text/input.h"
#include "near_text/interrupt.h"
#include "near_text/match_delivery.h"
#include "near_text/match_format.h"
#include "near_text/ordered_work.h"
#include "near_text/search_options.h"
#include "stand_in_host/text_codec.h"

namespace near_text {

namespace {

struct MatchCommand {
    std::string textsFile;
    std::string entriesFile;
    SearchOptions search;
    std::string format = "text";
    bool isUnnumbered = false;
    unsigned jobs = std::max(1U, std::thread::hardware_concurrency());
    bool isStrict = false;
};

// Far above what the add-in takes, so that it is the add-in that refuses a line too long.
constexpr std::size_t kLongestLine = 1 << 16;

// What all workers share and none changes.
struct Matching {
    SearchOptions const& options;
    std::u16string const exclusions;
    EntryList const list;
    MatchFormat const how;

    LineResult match(stand_in_host::Component& component, Line const& line) const {
        try {
            std::u16string const text = lineUnits(line);
            auto const answer = component.search(options.arguments(text, list, exclusions));
            if (!answer) return failed(line, component.lastReport());
            auto const indices = stand_in_host::parseIndexList(*answer);
            return {formatMatches(how, line, list, indices), {}, !indices.empty()};
        } catch (stand_in_host::NotText const& error) {
            return failed(line, error.what());
        }
    }

    LineResult failed(Line const& line, std::string const& error) const {
        return {formatFailure(how, line, error), error, false};
    }
};

Matching prepare(MatchCommand const& options) {
    std::map<std::string, Format> const formats = {
        {"text", Format::Text}, {"tsv", Format::Tsv}, {"json", Format::Json}};
    std::u16string exclusions = options.search.exclusions();
    EntryList list = entriesFromLines(options.entriesFile, exclusions);
    return {options.search,
            std::move(exclusions),
            std::move(list),
            {formats.at(options.format), !options.isUnnumbered}};
}

int match(Program& program, MatchCommand const& options) {
    Matching const matching = prepare(options);
    std::vector<std::unique_ptr<stand_in_host::Component>> components;
    for (unsigned i = 0; i < options.jobs; ++i)
        components.push_back(program.makeComponent());

    // What is wrong with the switches is wrong for every line, so it is told before the first.
    EntryList const anything{u"-", u',', {}, 0};
    if (!components[0]->search(options.search.arguments(u"-", anything, {}))) {
        throw std::runtime_error(components[0]->lastReport());
    }
    Interrupt const interrupt;
    LineReader reader(options.textsFile, kLongestLine, interrupt.descriptor());
    MatchDelivery delivery(program.output, options.textsFile, options.isStrict, interrupt);
    OrderedWork work(
        options.jobs,
        [&](std::size_t worker, Line const& line) {
            return matching.match(*components[worker], line);
        },
        [&](LineResult const& result) { return delivery.deliver(result); });
    for (Line line; interrupt.signal() == 0 && reader.next(line);) {
        if (!work.add(std::move(line))) break;
    }
    interrupt.signal() == 0 ? work.finish() : work.stop();
    return delivery.close();
}

}  // namespace

void addMatch(Program& program) {
    auto const options = std::make_shared<MatchCommand>();
    CLI::App& command = program.addCommand(
        "match", "Search for each line of one file among the lines of another",
        "Prints a line for each line of texts, in their order and each as soon as it is done, with "
        "its matches as INDEX:LINE:ENTRY: the add-in's index, the entry's line number, the entry. "
        "A line of texts that is too long, holds a NUL or is not valid UTF-8 is reported, and its "
        "line of output holds the error.\n\n"
        "Exit status: 0 any text matched, 1 none did, 2 a line or the run failed, 128 and the "
        "signal's number when interrupted. What was finished by then is out, and no line is torn.",
        "near_text match --texts supplier.txt --entries catalogue.txt --short 75 --format tsv");
    command.add_option("--texts", options->textsFile, "Texts, one a line; - reads them in")
        ->type_name("FILE")
        ->required();
    command.add_option("--entries", options->entriesFile, "Entries, one a line; - reads them in")
        ->type_name("FILE")
        ->required();
    options->search.addTo(command);
    command
        .add_option(
            "--format", options->format,
            "text for eyes; tsv, in which \\\\, \\t and \\r stand for what would break columns; or "
            "json, an object a line. Default: text")
        ->type_name("FORMAT")
        ->check(CLI::IsMember({"text", "tsv", "json"}));
    command.add_flag(
        "--no-numbers", options->isUnnumbered,
        "Leave the line numbers of the texts out, so that parts of a file give the same "
        "lines as the whole");
    command.add_option("--jobs", options->jobs, "Threads to search with. Default: one a processor")
        ->type_name("N")
        ->check(CLI::Range(1U, 256U));
    command.add_flag("--strict", options->isStrict,
                     "Stop at the first line that is too long or no text, instead of going on");
    command.callback([&program, options] {
        program.command = [&program, options] { return match(program, *options); };
    });
}

}  // namespace near_text
