// Lists of entries for the tests of the program's modules.
#pragma once

#include "near_text/entry_list.h"
#include "stand_in_host/whitespace.h"

// A list as the add-in would read it. Throws where no entry holds a word.
inline near_text::EntryList listOf(std::u16string_view dictionary, char16_t separator) {
    near_text::EntryListBuilder builder({}, separator);
    std::size_t begin = 0;
    for (std::size_t end = 0; end <= dictionary.size(); ++end) {
        bool const isEnd =
            end == dictionary.size() || dictionary[end] == 0 ||
            (dictionary[end] == separator && !stand_in_host::isWhitespace(separator));
        if (!isEnd) continue;
        char16_t const joint = begin > 0 ? dictionary[begin - 1] : u'\0';
        builder.add(end + 1, dictionary.substr(begin, end - begin), {}, {}, joint);
        begin = end + 1;
    }
    return builder.take("the test");
}
