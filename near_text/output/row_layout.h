// How a run's rows are laid out: in the columns of matches, and then those that are kept, of the
// text and of the entry.
#pragma once

#include <set>
#include <string>

#include "near_text/output/about.h"
#include "near_text/output/columns.h"

namespace near_text {

struct RowLayout {
    // `textNames` and `entryNames` are of the columns that are kept. A name that is taken by
    // another column gets text_ or entry_ ahead, and so do numbers. The other columns are those of
    // matches unless they are given.
    RowLayout(bool isNumberedOne, char csvDelimiter, Cells const& textNames,
              Cells const& entryNames, std::set<std::string> taken = matchColumns(false));
    static std::set<std::string> matchColumns(bool hasDecisions);

    static constexpr char const* kColumns[] = {
        "line", "text", "percent", "distance", "limit", "index", "entry_line", "entry", "error"};

    static constexpr char const* kDecisionColumn = "decision";  // behind those, if it is taken
    static constexpr char const* kAccepted = "accepted";

    bool isNumbered;  // otherwise no line has its number, and none depends on another
    char delimiter;
    bool hasDecisions;
    Cells textColumns, entryColumns;
    About about;
};

}  // namespace near_text
