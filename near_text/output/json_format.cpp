// An object a text, on one line:
//
//   {"line":3,"text":"red ball","matches":[{"index":0,"entry_line":1,"entry":"ball red",
//    "percent":100,"distance":0,"limit":2},...]}
#include <algorithm>

#include "near_text/output/format.h"
#include "near_text/output/json_writer.h"

namespace near_text {

namespace {

void openRow(JsonWriter& json, RowLayout const& layout, TextRow const& row) {
    json.open('{');
    if (layout.isNumbered) json.member("line", row.number);
}

void addKept(JsonWriter& json, Cells const& names, Cells const& kept) {
    std::size_t const count = std::min(names.size(), kept.size());
    if (count == 0) return;
    json.name("kept");
    json.open('{');
    for (std::size_t i = 0; i < count; ++i)
        json.member(names[i], kept[i]);
    json.close('}');
}

void addMatch(JsonWriter& json, RowLayout const& layout, Match const& match, Entry const& entry) {
    json.open('{');
    json.member("index", match.index);
    json.member("entry_line", entry.place);
    json.member("entry", entry.text);
    json.member("percent", static_cast<unsigned long>(match.percent));
    json.member("distance", match.distance);
    json.member("limit", match.limit);
    if (match.isAccepted) json.member(RowLayout::kDecisionColumn, RowLayout::kAccepted);
    addKept(json, layout.entryColumns, entry.kept);
    json.close('}');
}

std::string closedLine(JsonWriter& json) {
    json.close('}');
    json.endLine();
    return json.take();
}

class JsonFormat final : public Format {
public:
    constexpr JsonFormat() : Format("json", true) {}

    std::string matches(RowLayout const& layout, TextRow const& row, EntryList const& list,
                        std::vector<Match> const& matches) const override {
        JsonWriter json;
        openRow(json, layout, row);
        json.member("text", row.text);
        addKept(json, layout.textColumns, row.kept);
        json.name("matches");
        json.open('[');
        for (Match const& match : matches)
            addMatch(json, layout, match, list.entry(match.index));
        json.close(']');
        return closedLine(json);
    }

    std::string failure(RowLayout const& layout, TextRow const& row,
                        std::string const& error) const override {
        JsonWriter json;
        openRow(json, layout, row);
        json.member("error", error);
        addKept(json, layout.textColumns, row.kept);
        return closedLine(json);
    }

    std::string table(char /*delimiter*/, Table const& table) const override {
        JsonWriter json;
        for (Cells const& row : table.rows) {
            json.open('{');
            for (std::size_t i = 0; i < row.size(); ++i) {
                json.name(table.columns[i].name);
                table.columns[i].isNumber ? json.digits(row[i].empty() ? "null" : row[i])
                                          : json.value(row[i]);
            }
            json.close('}');
            json.endLine();
        }
        return json.take();
    }
};

}  // namespace

Format const& jsonFormat() {
    static constexpr JsonFormat format;
    return format;
}

}  // namespace near_text
