// A higher percentage finds nothing that a lower one does not find, so each text is searched for in
// the whole list at the lowest percentage, and then, from one to the next, among what is left.
#include <algorithm>
#include <charconv>
#include <mutex>
#include <set>

#include "near_text/commands.h"
#include "near_text/run.h"
#include "near_text/search_options.h"
#include "near_text/source.h"

namespace near_text {

namespace {

struct SweepOptions {
    SourceOptions sources;
    SearchOptions search;
    std::vector<int> percents = {95, 90, 85, 80, 75, 70, 65, 60, 55, 50};
    std::string pairsFile;
    FormatOptions format;
    JobOptions jobs;
};

using Pair = std::pair<std::size_t, std::size_t>;  // lines of the text and of the entry

// "3<tab>17", with anything after it; the first line may be a heading.
std::set<Pair> readPairs(TextFile const& file) {
    std::set<Pair> pairs;
    LineReader reader(file);
    for (Line line; reader.next(line);) {
        Pair pair;
        char const* const end = line.text.data() + line.text.size();
        auto const first = std::from_chars(line.text.data(), end, pair.first);
        bool const isSeparated =
            first.ec == std::errc() && first.ptr < end &&
            std::string_view("\t,;").find(*first.ptr) != std::string_view::npos;
        if (isSeparated && std::from_chars(first.ptr + 1, end, pair.second).ec == std::errc()) {
            pairs.insert(pair);
        } else if (line.number > 1) {
            throw std::runtime_error(
                reader.place() + "expected the line number of a text, a tab and that of an entry");
        }
    }
    if (pairs.empty()) throw std::runtime_error(shownName(file.name) + " contains no pairs");
    return pairs;
}

// Of the matches of some texts.
struct Count {
    std::size_t matches = 0;
    std::size_t known = 0;       // among the pairs
    std::size_t textsRight = 0;  // that have a match among the pairs

    void add(std::vector<Match> const& found, EntryList const& list, std::size_t line,
             std::set<Pair> const& pairs) {
        auto const isKnown = [&](Match const& match) {
            return pairs.count({line, list.entries[match.index].place}) > 0;
        };
        auto const count =
            static_cast<std::size_t>(std::count_if(found.begin(), found.end(), isKnown));
        matches += found.size();
        known += count;
        if (count > 0) ++textsRight;
    }
};

struct PercentCount {
    std::size_t none = 0, one = 0, several = 0;  // texts that find so many entries
    Count all, best;
};

class Sweep {
public:
    Sweep(SweepOptions const& options, EntryList const& entryList)
        : list(entryList), percents(options.percents), counts(percents.size()) {
        if (!options.pairsFile.empty()) pairs = readPairs({options.pairsFile, options.sources.reading.encoding});
    }

    // Whether it finds anything at the lowest percentage. From any number of threads.
    bool add(Matcher& matcher, std::size_t line, std::u16string_view text) {
        std::vector<Match> matches = matcher.matches(text);
        bool const isFound = !matches.empty();
        for (std::size_t i = 0; i < percents.size(); ++i) {
            if (i > 0) narrow(matcher, text, percents[i], matches);
            std::lock_guard const lock(mutex);
            tell(counts[i], line, matches);
        }
        return isFound;
    }

    std::vector<Json> rows() const {
        std::vector<Json> rows;
        for (std::size_t i = percents.size(); i-- > 0;) {
            PercentCount const& count = counts[i];
            Json row = {{"percent", percents[i]},
                        {"none", count.none},
                        {"one", count.one},
                        {"several", count.several},
                        {"matches", count.all.matches},
                        {"best_matches", count.best.matches}};
            if (!pairs.empty()) addPairs(row, count);
            rows.push_back(std::move(row));
        }
        return rows;
    }

private:
    static void narrow(Matcher& matcher, std::u16string_view text, int percent,
                       std::vector<Match>& matches) {
        if (matches.empty()) return;
        Indices indices;
        for (Match const& match : matches)
            indices.push_back(match.index);
        indices = matcher.search.findAmong(text, {percent, percent}, indices);
        std::erase_if(matches, [&](Match const& match) {
            return !std::binary_search(indices.begin(), indices.end(), match.index);
        });
    }

    void tell(PercentCount& count, std::size_t line, std::vector<Match> const& matches) {
        ++(matches.empty() ? count.none : matches.size() == 1 ? count.one : count.several);
        count.all.add(matches, list, line, pairs);
        std::vector<Match> best = matches;
        keepWanted(best, {Wanted::kAll, true});
        count.best.add(best, list, line, pairs);
    }

    void addPairs(Json& row, PercentCount const& count) const {
        std::set<std::size_t> texts;
        for (Pair const& pair : pairs)
            texts.insert(pair.first);
        row.update({{"pairs", pairs.size()},
                    {"found", count.all.known},
                    {"others", count.all.matches - count.all.known},
                    {"best_found", count.best.known},
                    {"best_others", count.best.matches - count.best.known},
                    {"texts", texts.size()},
                    {"best_texts", count.best.textsRight}});
    }

    EntryList const& list;
    std::set<Pair> pairs;
    std::vector<int> const percents;  // ascending
    std::mutex mutex;
    std::vector<PercentCount> counts;
};

Status sweep(Program& program, SweepOptions const& options) {
    Preparation const& preparation = options.search.preparing.preparation;
    SearchTerms terms = options.search.terms(options.sources.reading.encoding);
    terms.percentages = {options.percents[0], options.percents[0]};
    auto const file = readEntries(options.sources.entries, options.sources.reading, preparation);
    Sweep counts(options, file.list);
    Matchers matchers(program, options.jobs, file.list, terms, {});
    Interrupt const interrupt;
    RowReader reader(options.sources.texts, options.sources.reading, kLongestText,
                     interrupt.descriptor());
    MatchWriter writer(program.output, options.sources.texts.file, options.jobs.isStrict,
                       interrupt);
    Status const status = run(
        matchers, preparation, [&](TextRow& row) { return reader.next(row); },
        [&](Matcher& matcher, TextRow const& row, std::u16string const& units) -> LineResult {
            return {{}, {}, counts.add(matcher, row.number, units)};
        },
        [](TextRow const&, std::string const&) { return std::string(); }, writer, interrupt);
    if (interrupt.signal() == 0) {
        options.format.applyTo(program.output);
        Shape const shape(true, options.format.delimiter, {}, {});
        program.output.write(options.format.format().table(shape, counts.rows()));
    }
    return status;
}

}  // namespace

void addSweep(Program& program) {
    auto const options = std::make_shared<SweepOptions>();
    CLI::App& command = program.addCommand(
        "sweep",
        {"count what a match finds at several percentages",
         "Helps to choose a percentage. For each one it prints how many texts find no entry, one "
         "and several, how many matches there are, and how many of them remain if only the best of "
         "each text are kept.\n\n"
         "With --pairs it also prints how many of the known pairs are found and how many other "
         "matches there are, for all matches and for the best alone, and for how many of the texts "
         "that have a known pair the best matches include one.",
         "0 something was found at the lowest percentage, 1 nothing was found, 2 a line or the run "
         "failed, 128 plus the signal's number if interrupted",
         {"near_text sweep --texts supplier.txt --entries catalogue.txt --prepare --pairs "
          "pairs.tsv"}});
    options->sources.addTexts(command, false);
    options->sources.addEntries(command, false);
    command.get_option("--entries")->required();
    options->sources.addReading(command);
    command
        .add_option("-p,--percent", options->percents,
                    "Percentages, separated by commas. Default: 95 to 50 in steps of 5")
        ->type_name("PERCENTS")
        ->delimiter(',')
        ->allow_extra_args(false)
        ->check(percentCheck())
        ->group("Which entries match");
    command
        .add_option("--pairs", options->pairsFile,
                    "Known pairs: a table whose first two columns are the line of the text and "
                    "the line of the entry")
        ->type_name("FILE")
        ->group("Files");
    options->search.addTo(command, false);
    options->format.addTo(command);
    options->jobs.addTo(command);
    command.callback([&program, options] {
        options->sources.settle(options->format);
        options->search.settle();
        std::sort(options->percents.begin(), options->percents.end());
        program.command = [&program, options] { return sweep(program, *options); };
    });
}

}  // namespace near_text
