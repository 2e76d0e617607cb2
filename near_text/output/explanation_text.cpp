#include "near_text/output/explanation_text.h"

#include <stdexcept>

#include "near_text/input/text_codec.h"
#include "near_text/matching/difference.h"
#include "near_text/output/terminal_marks.h"

namespace near_text {

namespace {

constexpr std::size_t kLabelWidth = 18;

// The value is on one line.
std::string row(std::string label, std::string const& value) {
    label.resize(std::max(kLabelWidth, label.size() + 2), ' ');
    return "    " + label + value + '\n';
}

std::string listed(reference::Words const& words) {
    std::string text;
    for (std::u16string_view const word : words)
        text += (text.empty() ? "" : " ") + toUtf8(word);
    return words.empty() ? "-" : text;
}

// Dim where it is marked.
std::string shownWords(reference::Words const& words, bool isMarked) {
    std::string const text = listed(words);
    return firstMarked(text, isMarked ? Spans{{0, text.size(), Mark::Cancelled}} : Spans());
}

}  // namespace

std::string explanationText(reference::SideBySide const& sides, std::string const& firstName,
                            std::string const& secondName, bool isMarked) {
    std::string const rule = "what " + std::to_string(sides.percent) + " percent leaves of " +
                             std::to_string(sides.length) +
                             (sides.length == 1 ? " unit" : " units");
    LeftOvers const left(sides);
    auto const [first, second] = isMarked ? left.difference() : Difference();
    return row("words cancelled", shownWords(sides.cancelled, isMarked)) +
           row("words excluded", shownWords(sides.excluded, isMarked)) +
           row("left of " + firstName, '"' + firstMarked(left.first, first) + '"') +
           row("left of " + secondName, '"' + secondMarked(left.second, second) + '"') +
           row("limit", std::to_string(sides.limit) + " (" + rule + ")") +
           row("distance",
               std::to_string(sides.distance) + (sides.isAlike ? " (alike)" : " (different)")) +
           row("alike up to", std::to_string(reference::nearness(sides)) + " percent");
}

std::string numbersText(Numbers const& ofText, Numbers const& ofEntry) {
    return row("numbers", "left out: only text has " + ofText.notIn(ofEntry) + ", only entry has " +
                              ofEntry.notIn(ofText));
}

void requireAgreement(reference::SideBySide const& sides, bool isAlike) {
    if (sides.isAlike == isAlike) return;
    throw std::runtime_error("the explanation and the add-in's answer disagree");
}

}  // namespace near_text
