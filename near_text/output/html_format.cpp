// A page with its data, a line of JSON a text, as the run gives them:
//
//   {"command":"match",...}
//   [3,"red ball",[[100,"ball red",1,0,2,"","",0],...]]
//   [4,"not valid UTF-8 at byte 1",0]
//   {"complete":true}
//
// A text has its line, itself and its matches, the nearest first, or 0 where it failed; a match its
// nearness, the entry, its line, distance, limit, the marks on text and entry, and whether it was
// accepted before. Both end with the id, where there are ids, and the kept cells. Nothing in the
// data is markup: it has no "<".
#include <cstdio>

#include "near_text/output/format.h"
#include "near_text/output/json_writer.h"
#include "near_text/output/review_page.h"
#include "near_text/text/code_points.h"

namespace near_text {

namespace {

// For within a script element. Outside of its strings JSON has none of these.
std::string forScript(std::string const& json) {
    std::string text;
    for (std::size_t i = 0; i < json.size();) {
        std::size_t const start = i;
        CodePoint const point = nextCodePoint(std::string_view(json), i);
        if (point == '<' || point == 0x2028 || point == 0x2029) {
            char code[16];
            std::snprintf(code, sizeof code, "\\u%04x", static_cast<unsigned>(point));
            text += code;
        } else {
            text.append(json, start, i - start);
        }
    }
    return text;
}

std::string closedLine(JsonWriter& json, char bracket) {
    json.close(bracket);
    json.endLine();
    return forScript(json.take());
}

char letterOf(Mark mark) {
    switch (mark) {
        case Mark::Same:
            return '=';
        case Mark::Extra:
            return '+';
        case Mark::Replaced:
            return '~';
        default:
            return '-';
    }
}

// A number of units and a sign for each stretch; where all the rest is '-' nothing.
std::string marksOf(std::string const& text, Spans const& spans) {
    std::string marks;
    std::size_t units = 0;
    char sign = '-';
    for (Span const& span : spans) {
        if (letterOf(span.mark) != sign) {
            if (units > 0) marks += std::to_string(units) + sign;
            units = 0;
            sign = letterOf(span.mark);
        }
        for (std::size_t at = span.begin; at < span.end; ++units) {
            if (!U_IS_BMP(nextCodePoint(std::string_view(text), at))) ++units;
        }
    }
    if (sign != '-') marks += std::to_string(units) + sign;
    return marks;
}

void addNumber(JsonWriter& json, unsigned long number) {
    json.digits(std::to_string(number));
}

void addCells(JsonWriter& json, Cells const& cells) {
    json.open('[');
    for (std::string const& cell : cells)
        json.value(cell);
    json.close(']');
}

// What ends a text or a match.
void addNames(JsonWriter& json, bool hasIds, std::string const& id, Cells const& kept) {
    if (hasIds) json.value(id);
    if (!kept.empty()) addCells(json, kept);
}

void addMatch(JsonWriter& json, RowLayout const& layout, std::string const& text,
              Match const& match, Entry const& entry) {
    json.open('[');
    addNumber(json, static_cast<unsigned long>(match.percent));
    json.value(entry.text);
    addNumber(json, entry.place);
    addNumber(json, match.distance);
    addNumber(json, match.limit);
    json.value(marksOf(text, match.difference.first));
    json.value(marksOf(entry.text, match.difference.second));
    addNumber(json, match.isAccepted ? 1 : 0);
    addNames(json, layout.about.hasEntryIds, entry.id, entry.kept);
    json.close(']');
}

class HtmlFormat final : public Format {
public:
    constexpr HtmlFormat() : Format("html", true, true) {}

    std::string heading(RowLayout const& layout) const override {
        About const& about = layout.about;
        JsonWriter json;
        json.open('{');
        json.member("command", about.command);
        json.member("line", about.commandLine);
        json.member("texts", about.texts);
        json.member("entries", about.entries);
        json.member("textIds", about.hasTextIds ? 1 : 0);
        json.member("entryIds", about.hasEntryIds ? 1 : 0);
        json.name("textColumns");
        addCells(json, layout.textColumns);
        json.name("entryColumns");
        addCells(json, layout.entryColumns);
        return kReviewPage + closedLine(json, '}');
    }

    std::string matches(RowLayout const& layout, TextRow const& row, EntryList const& list,
                        std::vector<Match> const& matches) const override {
        std::vector<Match> nearestFirst = matches;
        sortByNearness(nearestFirst);
        JsonWriter json;
        json.open('[');
        addNumber(json, row.number);
        json.value(row.text);
        json.open('[');
        for (Match const& match : nearestFirst)
            addMatch(json, layout, row.text, match, list.entry(match.index));
        json.close(']');
        addNames(json, layout.about.hasTextIds, row.id, row.kept);
        return closedLine(json, ']');
    }

    std::string failure(RowLayout const& layout, TextRow const& row,
                        std::string const& error) const override {
        JsonWriter json;
        json.open('[');
        addNumber(json, row.number);
        json.value(error);
        addNumber(json, 0);
        addNames(json, layout.about.hasTextIds, row.id, row.kept);
        return closedLine(json, ']');
    }

    std::string ending() const override {
        return "{\"complete\":true}\n</script>\n</body>\n</html>\n";
    }

    std::string table(char /*delimiter*/, Table const& /*table*/) const override { return {}; }
};

}  // namespace

Format const& htmlFormat() {
    static constexpr HtmlFormat format;
    return format;
}

}  // namespace near_text
