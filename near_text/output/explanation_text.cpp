#include "near_text/output/explanation_text.h"

#include <stdexcept>

#include "near_text/input/text_codec.h"
#include "near_text/messages/messages.h"

namespace near_text {

namespace {

constexpr std::size_t kLabelWidth = 18;

std::string row(std::string label, std::string const& value) {
    label.resize(std::max(kLabelWidth, label.size() + 2), ' ');
    return "    " + label + onOneLine(value) + '\n';
}

std::string listed(reference::Words const& words) {
    std::string text;
    for (std::u16string_view const word : words)
        text += (text.empty() ? "" : " ") + toUtf8(word);
    return words.empty() ? "-" : text;
}

std::string quoted(std::u16string const& text) {
    return "\"" + toUtf8(text) + '"';
}

}  // namespace

std::string explanationText(reference::SideBySide const& sides, std::string const& firstName,
                            std::string const& secondName) {
    std::string const rule = "what " + std::to_string(sides.percent) + " percent leaves of " +
                             std::to_string(sides.length) +
                             (sides.length == 1 ? " unit" : " units");
    return row("words cancelled", listed(sides.cancelled)) +
           row("words excluded", listed(sides.excluded)) +
           row("left of " + firstName, quoted(reference::joined(sides.first.left))) +
           row("left of " + secondName, quoted(reference::joined(sides.second.left))) +
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
