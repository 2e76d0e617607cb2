#include <algorithm>
#include <functional>

#include "near_text/commands/commands.h"
#include "near_text/input/text_codec.h"
#include "near_text/matching/longest_text.h"
#include "near_text/matching/read_entries.h"
#include "near_text/messages/interrupt.h"
#include "near_text/messages/messages.h"
#include "near_text/output/explanation_text.h"
#include "near_text/output/output.h"
#include "near_text/output/text_format.h"
#include "reference/whitespace.h"

namespace near_text {

namespace {

EntryFile readList(TextSearchSettings const& settings, Preparer const& preparer) {
    if (auto const* const file = std::get_if<Source>(&settings.entries))
        return readEntries(*file, preparer);
    return {readWholeList(std::get<WholeList>(settings.entries), preparer), {}};
}

TextFile const& fileOf(std::variant<Source, WholeList> const& entries) {
    auto const* const source = std::get_if<Source>(&entries);
    return source != nullptr ? source->file : std::get<WholeList>(entries).file;
}

std::string commaList(Indices const& indices) {
    std::string text;
    for (unsigned long const index : indices)
        text += (text.empty() ? "" : ",") + std::to_string(index);
    return text.empty() ? text : text + '\n';
}

// The entries in the places that are to be explained.
Indices askedIndices(TextSearchSettings const& settings, EntryList const& list) {
    Indices indices;
    for (std::size_t const place : settings.explainedPlaces) {
        auto const entry = std::find_if(list.entries.begin(), list.entries.end(),
                                        [&](EntryUnits const& e) { return e.place == place; });
        if (entry != list.entries.end()) {
            indices.push_back(static_cast<unsigned long>(entry - list.entries.begin()));
            continue;
        }
        bool const isFile = std::holds_alternative<Source>(settings.entries);
        std::string const name = (isFile ? "line " : "place ") + std::to_string(place);
        if (place > list.places)
            throw std::runtime_error(shownName(fileOf(settings.entries).name) + ": there is no " +
                                     name);
        complain("note: " + name + " contains no word, so it is not an entry and has no index");
    }
    return indices;
}

// Fills in how matches differ from the text; none where that is not shown.
using MarkThem = std::function<void(std::vector<Match>& matches)>;

// Matches, or entries that are asked for, with the reasons.
class ExplainedRows {
public:
    ExplainedRows(Output& output, EntryList const& list, std::u16string_view text,
                  SearchTerms const& terms, MarkThem const& mark)
        : output_(output),
          list_(list),
          excluded_(reference::readExclusions(terms.exclusions, list.separator)),
          explanation_(text, excluded_, terms.threshold, terms.percentages.forShort,
                       terms.percentages.forLong),
          isSameNumbers_(terms.isSameNumbers),
          mark_(mark),
          numbers_(text) {}

    void write(unsigned long index, bool isMatch) {
        if (signalCaught() != 0) {
            output_.flush();
            throw Interrupted();
        }
        reference::SideBySide const sides = explanation_.explain(
            reference::readEntry(list_.units(index), list_.isBehindSeparator(index)));
        requireAgreement(sides, isMatch);
        std::vector<Match> shown = {
            {index, reference::nearness(sides), sides.distance, sides.limit}};
        if (mark_) mark_(shown);
        output_.write(shownMatch(shown[0], list_.entry(index)) + '\n' +
                      explanationText(sides, "text", "entry", mark_ != nullptr));
        Numbers const ofEntry(list_.units(index));
        if (isMatch && isSameNumbers_ && numbers_.contradict(ofEntry))
            output_.write(numbersText(numbers_, ofEntry));
    }

private:
    Output& output_;
    EntryList const& list_;
    reference::ExcludedWords const excluded_;
    reference::SearchExplanation const explanation_;
    bool const isSameNumbers_;
    MarkThem const& mark_;
    Numbers const numbers_;
};

void writeMatches(Output& output, TextSearchSettings const& settings, EntryFile const& entries,
                  std::vector<Match> const& matches) {
    Format const& format = *settings.output.format;
    if (!format.carriesColumns) {
        std::vector<Match> nearestFirst = matches;
        sortByNearness(nearestFirst);
        for (Match const& match : nearestFirst)
            output.write(shownMatch(match, entries.list.entry(match.index)) + '\n');
        return;
    }
    RowLayout layout(false, settings.output.delimiter, {}, entries.keptNames);
    layout.about = {"search", settings.output.commandLine, settings.text,
                    shownName(fileOf(settings.entries).name)};
    TextRow row;
    row.number = 1;
    row.text = settings.text;
    output.write(format.heading(layout) + format.matches(layout, row, entries.list, matches) +
                 format.ending());
}

void writeExplained(Output& output, TextSearchSettings const& settings, EntryList const& list,
                    std::u16string const& text, SearchTerms const& terms, Matcher& matcher,
                    std::vector<Match> matches, Indices const& asked, MarkThem const& mark) {
    ExplainedRows rows(output, list, text, terms, mark);
    if (settings.isExplained) {
        sortByNearness(matches);
        for (Match const& match : matches)
            rows.write(match.index, true);
    }
    for (unsigned long const index : asked)
        rows.write(index, !matcher.search.findAmong(text, terms.percentages, {index}).empty());
}

}  // namespace

Status execute(TextSearchSettings const& settings) {
    auto const component = makeComponent(settings.addIn);
    Preparer const preparer = readPreparer(settings.search);
    std::u16string text = preparer.prepared(toUnits(settings.text));
    if (settings.isTruncating && truncate(text)) {
        complain("note: TEXT cut to " + std::to_string(text.size()) + " units");
    }
    if (!reference::holdsWord(text) && settings.explainedPlaces.empty())
        complain("note: TEXT contains no word, so nothing is similar to it");
    SearchTerms const terms = readTerms(settings.search);
    EntryFile const entries = readList(settings, preparer);
    auto const excluded = reference::readExclusions(terms.exclusions, entries.list.separator);
    Matcher matcher(*component, entries.list, terms, excluded, settings.wanted);
    if (settings.isIndices) {
        Output output;
        Indices const indices = matcher.search.find(text, terms.percentages);
        output.write(commaList(indices));
        output.flush();
        return foundIf(!indices.empty());
    }
    Output output(settings.output.encoding);
    std::vector<Match> matches = matcher.matches(text);
    noteLeftOut(matcher.leftOut());
    MarkThem mark;
    if (settings.output.showsDifferences) {
        mark = [&](std::vector<Match>& some) {
            matcher.markDifferences(some, settings.text, text, preparer);
        };
    }
    Indices const asked = askedIndices(settings, entries.list);
    if (!asked.empty() && !reference::holdsWord(text)) {
        throw std::runtime_error("TEXT contains no word, so there is nothing to explain");
    }
    if (!settings.isExplained && settings.explainedPlaces.empty()) {
        if (mark) mark(matches);
        writeMatches(output, settings, entries, matches);
    } else if (!matches.empty() || !asked.empty()) {
        writeExplained(output, settings, entries.list, text, terms, matcher, matches, asked, mark);
    }
    output.flush();
    return foundIf(!matches.empty());
}

}  // namespace near_text
