// For eyes: the text, and below it a line a match, the nearest first. Of a table, numbers stand to
// the right and words to the left.
#include "near_text/output/text_format.h"

#include <cstdio>

#include "near_text/messages/messages.h"
#include "near_text/output/format.h"
#include "near_text/output/terminal_marks.h"

namespace near_text {

namespace {

std::string number(RowLayout const& layout, TextRow const& row) {
    return layout.isNumbered ? std::to_string(row.number) + "  " : std::string();
}

class TextFormat final : public Format {
public:
    constexpr TextFormat() : Format("text", false) {}

    std::string matches(RowLayout const& layout, TextRow const& row, EntryList const& list,
                        std::vector<Match> const& matches) const override {
        std::vector<Match> nearestFirst = matches;
        sortByNearness(nearestFirst);
        // Its marks differ from match to match. Those against the nearest stand right above it; of
        // all of them together nobody could tell which belongs to which.
        Spans const marks = matches.empty() ? Spans() : nearestFirst[0].difference.first;
        std::string text = number(layout, row) + firstMarked(row.text, marks) + '\n';
        for (Match const& match : nearestFirst)
            text += "    " + shownMatch(match, list.entry(match.index)) + '\n';
        if (matches.empty()) text += "       -\n";
        return text;
    }

    std::string failure(RowLayout const& layout, TextRow const& row,
                        std::string const& error) const override {
        return number(layout, row) + "error: " + error + '\n';
    }

    std::string table(char /*delimiter*/, Table const& table) const override {
        if (table.rows.empty()) return {};
        std::vector<bool> isRight;
        std::vector<Cells> lines(1);
        for (Table::Column const& column : table.columns) {
            isRight.push_back(column.isNumber);
            lines[0].push_back(column.name);
        }
        for (Cells const& row : table.rows) {
            Cells& line = lines.emplace_back(row);
            for (std::size_t i = 0; i < line.size(); ++i)
                line[i] = isRight[i] && line[i].empty() ? "-" : onOneLine(line[i]);
        }
        return inColumns(lines, isRight);
    }
};

}  // namespace

std::string shownMatch(Match const& match, Entry const& entry) {
    char numbers[160];
    std::snprintf(numbers, sizeof numbers, "%3d%%  %2lu of %-2lu  line %-5zu  index %-5lu  ",
                  match.percent, match.distance, match.limit, entry.place, match.index);
    return numbers + secondMarked(entry.text, match.difference.second) +
           (match.isAccepted ? "  [accepted]" : "");
}

Format const& textFormat() {
    static constexpr TextFormat format;
    return format;
}

}  // namespace near_text
