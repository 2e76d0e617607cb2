// How a line of texts and its matches are written: always as one line.
//
//   text  3  red ball  =>  0:1:ball red | 7:9:red balls     "-" where nothing matches
//   tsv   3 <tab> red ball <tab> 0:1:ball red <tab> 7:9:red balls
//   json  {"line":3,"text":"red ball","matches":[{"index":0,"line":1,"entry":"ball red"},...]}
//
// A match is the add-in's index, the line number of the entry and the entry. In tsv a backslash, a
// tab and a carriage return are written as \\, \t and \r. A line that failed is written without its
// text and with the error in place of the matches: "error: ..." in text and tsv, the key "error" in
// json.
#pragma once

#include <string>
#include <vector>

#include "near_text/entry_list.h"
#include "near_text/input.h"

namespace near_text {

enum class Format { Text, Tsv, Json };

struct MatchFormat {
    Format format = Format::Text;
    bool isNumbered =
        true;  // otherwise a line's number is left out, and no line depends on another
};

// With the line feed. `line.text` is valid UTF-8.
std::string formatMatches(MatchFormat how, Line const& line, EntryList const& list,
                          std::vector<unsigned long> const& indices);
std::string formatFailure(MatchFormat how, Line const& line, std::string const& error);

}  // namespace near_text
