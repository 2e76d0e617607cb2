// What the command line asks for, a struct a command. They are made once, of values that have been
// validated together, and never change.
#pragma once

#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "near_text/input/source.h"
#include "near_text/matching/add_in.h"
#include "near_text/matching/entry_list.h"
#include "near_text/matching/known_pairs.h"
#include "near_text/matching/search_terms.h"
#include "near_text/matching/steps.h"
#include "near_text/output/format.h"
#include "near_text/run/run.h"

namespace near_text {

struct OutputSettings {
    Format const* format;
    char delimiter;           // of csv
    std::string encoding;     // empty for UTF-8
    std::string commandLine;  // what was given, as a shell reads it
    bool showsDifferences;    // of texts and their matches
};

struct CompareSettings {
    AddInSettings addIn;
    std::u16string first;
    std::u16string second;
    int percent;
    Preparer preparer;
    bool isExplained;
    bool isColoured;
};

struct TextSearchSettings {
    AddInSettings addIn;
    std::string text;
    std::variant<Source, WholeList> entries;
    SearchSettings search;
    Wanted wanted;
    OutputSettings output;
    bool isIndices;                            // print the add-in's own answer
    bool isExplained;                          // each match
    std::vector<std::size_t> explainedPlaces;  // besides, whether they match or not
    bool isTruncating;                         // a text that is too long
};

struct MatchSettings {
    AddInSettings addIn;
    Source texts;
    Source entries;
    SearchSettings search;
    Wanted wanted;
    OutputSettings output;
    RunSettings run;
    bool isPart;           // of a list whose other parts other runs answer
    bool printsMatched;    // texts with a match
    bool printsUnmatched;  // those without
    bool isMutual;         // the best alone that are so in both directions
    std::vector<TextFile> decisions;
    KnownPairs::Naming pairNaming;
};

struct DuplicatesSettings {
    AddInSettings addIn;
    Source texts;
    SearchSettings search;
    OutputSettings output;
    RunSettings run;
    bool isGrouped;
};

struct SweepSettings {
    AddInSettings addIn;
    Source texts;
    std::optional<Source> entries;  // otherwise the texts among themselves
    SearchSettings search;          // at the lowest percentage
    std::vector<int> percents;      // ascending, and not empty
    Steps steps;                    // what each of them means
    std::optional<TextFile> pairs;
    KnownPairs::Naming pairNaming;
    bool hasAllColumns;
    OutputSettings output;
    RunSettings run;
};

struct DescribeSettings {
    AddInSettings addIn;
};

struct VersionSettings {
    AddInSettings addIn;
};

// Help, or a man page.
struct PrintSettings {
    std::string text;
};

using Settings =
    std::variant<CompareSettings, TextSearchSettings, MatchSettings, DuplicatesSettings,
                 SweepSettings, DescribeSettings, VersionSettings, PrintSettings>;

}  // namespace near_text
