// How a text and its matches are written.
//
//   text   for eyes: the text, and below it a line a match, the nearest first
//   tsv    a row a match under a heading; one row with the match left empty where there is none
//   csv    the same
//   json   an object a text, on one line:
//          {"line":3,"text":"red ball","matches":[{"index":0,"line":1,"entry":"ball red",
//           "percent":100,"distance":0,"limit":2},...]}
//
// The columns of a table are line, text, percent, distance, limit, index, entry_line, entry, error,
// and then those that are kept, of the text and of the entry. A text that failed is written with
// the error in place of its text and its matches.
#pragma once

#include <nlohmann/json.hpp>
#include <set>
#include <string>
#include <vector>

#include "near_text/input/text_row.h"
#include "near_text/matching/entry_list.h"
#include "near_text/matching/matches.h"

namespace near_text {

using Json = nlohmann::ordered_json;

// What one run's output is like.
struct Shape {
    // `textNames` and `entryNames` are of the columns that are kept. A name that is taken by
    // another column gets text_ or entry_ ahead, and so do numbers. The other columns are those of
    // matches unless they are given.
    Shape(bool isNumberedOne, char csvDelimiter, std::vector<std::string> const& textNames,
          std::vector<std::string> const& entryNames, std::set<std::string> taken = matchColumns());

    bool isNumbered;  // otherwise no line has its number, and none depends on another
    char delimiter;
    std::vector<std::string> textColumns, entryColumns;

private:
    static std::set<std::string> matchColumns();
};

struct Format {
    char const* name;
    bool carriesColumns;
    bool hasHeading;
    // Ahead of the first text. All texts end with a line feed.
    std::string (*heading)(Shape const& shape);
    // The texts of rows and entries are valid UTF-8.
    std::string (*matches)(Shape const& shape, TextRow const& row, EntryList const& list,
                           std::vector<Match> const& matches);
    std::string (*failure)(Shape const& shape, TextRow const& row, std::string const& error);
    // Any other table: objects with the keys of `like`, of which a heading is made.
    std::string (*table)(Shape const& shape, Json const& like, std::vector<Json> const& rows);
};

// Throws std::out_of_range.
Format const& formatNamed(std::string const& name);
std::vector<std::string> formatNames();

// A match for eyes, on one line.
std::string shownMatch(Match const& match, Entry const& entry);

}  // namespace near_text
