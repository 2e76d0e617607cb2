#include "near_text/entry_list.h"

#include <algorithm>
#include <stdexcept>

#include "near_text/input.h"
#include "stand_in_host/text_codec.h"
#include "stand_in_host/whitespace.h"

namespace near_text {

namespace {

constexpr char16_t kJoint = 0;

}  // namespace

std::u16string readLines(std::string const& file) {
    LineReader reader(file);
    std::u16string text;
    for (Line line; reader.next(line);) {
        try {
            text += lineUnits(line.text);
        } catch (stand_in_host::NotText const& error) {
            throw std::runtime_error(reader.place() + error.what());
        }
        text += u'\n';
    }
    return text;
}

EntryList entriesFromLines(std::string const& file) {
    std::u16string lines = readLines(file);
    if (!lines.empty()) lines.pop_back();
    std::replace(lines.begin(), lines.end(), u'\n', kJoint);
    return entriesFromList(std::move(lines), kJoint);
}

EntryList entriesFromFile(std::string const& file, char16_t separator) {
    std::string const text = readWhole(file);
    try {
        return entriesFromList(stand_in_host::toUnits(text), separator);
    } catch (stand_in_host::NotUtf8 const& error) {
        auto const wrong = text.begin() + static_cast<std::ptrdiff_t>(error.byte) - 1;
        auto const line = std::count(text.begin(), wrong, '\n') + 1;
        auto const start = std::find(std::reverse_iterator(wrong), text.rend(), '\n').base();
        throw std::runtime_error(
            shownName(file) + ':' + std::to_string(line) + ": " +
            stand_in_host::NotUtf8(static_cast<std::size_t>(wrong - start) + 1).what());
    }
}

EntryList entriesFromList(std::u16string dictionary, char16_t separator) {
    EntryList list{std::move(dictionary), separator, {}, 0};
    std::u16string_view const whole = list.dictionary;
    auto const isEnd = [&](char16_t unit) {
        return unit == 0 || (unit == separator && !stand_in_host::isWhitespace(unit));
    };
    for (std::size_t begin = 0; begin <= whole.size();) {
        auto const end =
            std::find_if(whole.begin() + static_cast<std::ptrdiff_t>(begin), whole.end(), isEnd);
        std::size_t const length = static_cast<std::size_t>(end - whole.begin()) - begin;
        std::u16string_view const entry = whole.substr(begin, length);
        ++list.places;
        if (stand_in_host::holdsWord(entry)) {
            list.entries.push_back({list.places, stand_in_host::toUtf8(entry), begin, length});
        }
        begin += length + 1;
    }
    return list;
}

}  // namespace near_text
