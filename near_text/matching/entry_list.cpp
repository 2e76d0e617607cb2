#include "near_text/matching/entry_list.h"

#include <algorithm>
#include <limits>
#include <stdexcept>

#include "near_text/input/source.h"
#include "near_text/input/text_codec.h"
#include "near_text/matching/longest_text.h"
#include "near_text/messages/messages.h"
#include "reference/whitespace.h"

namespace near_text {

namespace {

// Cut where the add-in will cut it; an entry that is prepared may come to hold the separator, so
// NULs join those.
EntryList cut(std::u16string_view whole, char16_t separator, Preparer const& preparer,
              std::string const& source) {
    bool const isWhitespace = reference::isWhitespace(separator);
    if (isWhitespace) {
        complain("note: whitespace does not separate entries");
    } else if (whole.find(separator) == std::u16string_view::npos) {
        complain("note: the separator does not occur in " + source + ", so it is a single entry");
    }
    EntryListBuilder builder(preparer, preparer.isIdle() ? separator : u'\0');
    char16_t joint = 0;
    std::size_t place = 0;
    for (std::size_t begin = 0; begin <= whole.size();) {
        std::u16string_view const rest = whole.substr(begin);
        auto const end = std::find_if(rest.begin(), rest.end(), [&](char16_t unit) {
            return unit == 0 || (unit == separator && !isWhitespace);
        });
        auto const length = static_cast<std::size_t>(end - rest.begin());
        std::u16string_view const entry = rest.substr(0, length);
        builder.add(++place, entry, toUtf8(entry), {}, preparer.isIdle() ? joint : u'\0');
        begin += length + 1;
        if (end != rest.end()) joint = *end;
    }
    return builder.take(source);
}

}  // namespace

std::u16string readLines(TextFile const& file) {
    RowReader reader({file, {}, {}, {}});
    std::u16string text;
    for (TextRow line; reader.next(line);) {
        try {
            text += lineUnits(line);
        } catch (NotText const& error) {
            throw std::runtime_error(reader.place() + error.what());
        }
        text += u'\n';
    }
    return text;
}

EntryList readWholeList(WholeList const& whole, Preparer const& preparer) {
    std::string const text = readWhole(whole.file);
    std::string const name = shownName(whole.file.name);
    try {
        return cut(toUnits(text), whole.separator, preparer, name);
    } catch (NotUtf8 const& error) {
        auto const wrong = text.begin() + static_cast<std::ptrdiff_t>(error.byte) - 1;
        auto const line = std::count(text.begin(), wrong, '\n') + 1;
        auto const start = std::find(std::reverse_iterator(wrong), text.rend(), '\n').base();
        throw std::runtime_error(name + ':' + std::to_string(line) + ": " +
                                 NotUtf8(static_cast<std::size_t>(wrong - start) + 1).what());
    }
}

Entry EntryList::entry(std::size_t index) const {
    Entry entry;
    entry.place = entries.at(index).place;
    std::size_t cell = index * cellsOfEntry;
    std::size_t const end = cell + cellsOfEntry;
    auto const nextCell = [&] {
        std::size_t const begin = cell == 0 ? 0 : cellEnds[cell - 1];
        return std::string(std::string_view(cells).substr(begin, cellEnds[cell++] - begin));
    };
    entry.text = hasTexts ? nextCell() : toUtf8(units(index));
    if (hasIds) entry.id = nextCell();
    while (cell < end)
        entry.kept.push_back(nextCell());
    return entry;
}

void EntryList::add(std::size_t place, std::u16string_view units) {
    entries.push_back({place, static_cast<std::uint32_t>(dictionary.size()),
                       static_cast<std::uint32_t>(units.size())});
    dictionary.append(units);
}

void EntryListBuilder::add(std::size_t place, std::u16string_view units, std::string_view text,
                           std::vector<std::string> const& kept, char16_t joint,
                           std::string_view id) {
    if (list_.places > 0) list_.dictionary.append({&joint, 1});
    list_.places = place;
    std::u16string compared;
    if (list_.hasTexts) {
        compared = preparer_.prepared(units);
        if (isCutting_) truncate(compared);
        units = compared;
    }
    if (list_.dictionary.size() + units.size() > std::numeric_limits<std::uint32_t>::max())
        throw std::runtime_error(
            "the entries are more than 4 billion units, too long for a search");
    if (!reference::holdsWord(units)) return list_.dictionary.append(units);
    list_.add(place, units);
    addCells(text, id, kept);
}

void EntryListBuilder::addCells(std::string_view text, std::string_view id,
                                std::vector<std::string> const& kept) {
    std::size_t const before = list_.cellEnds.size();
    auto const add = [&](std::string_view cell) {
        list_.cells.append(cell);
        list_.cellEnds.push_back(list_.cells.size());
    };
    if (list_.hasTexts) add(text);
    if (list_.hasIds) add(id);
    std::for_each(kept.begin(), kept.end(), add);
    list_.cellsOfEntry = list_.cellEnds.size() - before;
}

EntryList EntryListBuilder::take(std::string const& source) {
    if (list_.entries.empty()) {
        throw std::runtime_error(source + " contains no entries" +
                                 (preparer_.isIdle() ? "" : ", or none with a word once prepared"));
    }
    return std::move(list_);
}

}  // namespace near_text
