#include "near_text/entry_list.h"

#include <algorithm>
#include <limits>
#include <stdexcept>

#include "near_text/input.h"
#include "stand_in_host/text_codec.h"
#include "stand_in_host/whitespace.h"

namespace near_text {

namespace {

char16_t unusedUnit(std::u16string_view lines, std::u16string_view exclusions) {
    std::vector<bool> isUsed(std::numeric_limits<char16_t>::max() + std::size_t{1});
    for (std::u16string_view text : {lines, exclusions, std::u16string_view(u"\0\t\n\r ", 5)}) {
        for (char16_t const unit : text)
            isUsed[unit] = true;
    }
    auto const unused = std::find(isUsed.begin(), isUsed.end(), false);
    if (unused == isUsed.end()) throw std::runtime_error("no unit is left to join the entries by");
    return static_cast<char16_t>(unused - isUsed.begin());
}

}  // namespace

std::u16string readLines(TextFile const& file) {
    LineReader reader(file);
    std::u16string text;
    for (Line line; reader.next(line);) {
        try {
            text += lineUnits(line);
        } catch (stand_in_host::NotText const& error) {
            throw std::runtime_error(reader.place() + error.what());
        }
        text += u'\n';
    }
    return text;
}

EntryList entriesFromLines(TextFile const& file, std::u16string_view exclusions) {
    std::u16string lines = readLines(file);
    if (!lines.empty()) lines.pop_back();
    char16_t const separator = unusedUnit(lines, exclusions);
    std::replace(lines.begin(), lines.end(), u'\n', separator);
    return entriesFromList(std::move(lines), separator);
}

EntryList entriesFromFile(TextFile const& file, char16_t separator) {
    std::string const text = readWhole(file);
    try {
        return entriesFromList(stand_in_host::toUnits(text), separator);
    } catch (stand_in_host::NotUtf8 const& error) {
        auto const wrong = text.begin() + static_cast<std::ptrdiff_t>(error.byte) - 1;
        auto const line = std::count(text.begin(), wrong, '\n') + 1;
        auto const start = std::find(std::reverse_iterator(wrong), text.rend(), '\n').base();
        throw std::runtime_error(
            shownName(file.name) + ':' + std::to_string(line) + ": " +
            stand_in_host::NotUtf8(static_cast<std::size_t>(wrong - start) + 1).what());
    }
}

EntryList entriesFromList(std::u16string dictionary, char16_t separator) {
    EntryList list{std::move(dictionary), separator, {}, 0};
    auto const isEnd = [&](char16_t unit) {
        return unit == 0 || (unit == separator && !stand_in_host::isWhitespace(unit));
    };
    auto start = list.dictionary.cbegin();
    while (true) {
        auto const end = std::find_if(start, list.dictionary.cend(), isEnd);
        std::u16string_view const entry(start, end);
        ++list.places;
        if (stand_in_host::holdsWord(entry))
            list.entries.push_back({list.places, stand_in_host::toUtf8(entry)});
        if (end == list.dictionary.cend()) return list;
        start = end + 1;
    }
}

}  // namespace near_text
