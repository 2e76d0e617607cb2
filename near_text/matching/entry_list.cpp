#include "near_text/matching/entry_list.h"

#include <algorithm>
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

void EntryListBuilder::add(std::size_t place, std::u16string_view units, std::string text,
                           std::vector<std::string> kept, char16_t joint, std::string id) {
    if (list_.places > 0) list_.dictionary += joint;
    list_.places = place;
    std::u16string prepared = preparer_.prepared(units);
    if (isCutting_) truncate(prepared);
    if (reference::holdsWord(prepared)) {
        list_.entries.push_back({place, std::move(text), std::move(kept), list_.dictionary.size(),
                                 prepared.size(), std::move(id)});
    }
    list_.dictionary += prepared;
}

EntryList EntryListBuilder::take(std::string const& source) {
    if (list_.entries.empty()) {
        throw std::runtime_error(source + " contains no entries" +
                                 (preparer_.isIdle() ? "" : ", or none with a word once prepared"));
    }
    return std::move(list_);
}

}  // namespace near_text
