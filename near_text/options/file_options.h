// The options that name files and say how they are read.
#pragma once

#include <CLI/App.hpp>
#include <string>
#include <vector>

#include "near_text/input/source.h"
#include "near_text/matching/known_pairs.h"

namespace near_text {

inline constexpr char const* kFilesGroup = "Files";

// As given.
struct GivenSource {
    std::string file;
    std::vector<std::string> columns;
    std::vector<std::string> keep;
    std::string id;                               // the column of ids
    std::string delimiter;                        // of this one alone
    std::string delimiterOption = "--delimiter";  // that gives it
    std::string encoding;                         // likewise
    std::string encodingOption = "--encoding";    // that gives it

    bool isTable() const { return !columns.empty(); }
};

class FileOptions {
public:
    void addTexts(CLI::App& command, bool hasKeep = true);
    void addEntries(CLI::App& command, bool hasKeep = true);
    // The columns of ids by which pairs name texts and entries.
    void addIds(CLI::App& command);
    // After those.
    void addReading(CLI::App& command);
    // The one file of a command that has one, in place of all three.
    void addFile(CLI::App& command);

    // Throws std::runtime_error where an option has no effect; csv output makes use of a delimiter.
    void validate(bool isCsvOutput) const;

    // Where the texts are searched for in themselves.
    void validateWithin() const;

    bool hasEntries() const { return !entries_.file.empty(); }
    bool hasKept() const { return !texts_.keep.empty() || !entries_.keep.empty(); }
    bool hasKeptOfEntries() const { return !entries_.keep.empty(); }
    bool hasEntryColumn() const { return entries_.isTable(); }

    // With what `addIds` takes.
    KnownPairs::Naming pairNaming(bool isWithin = false, bool hasDecisions = false) const;
    // `users` are the options that make use of ids; `hasPairs` says whether one is given.
    void validateIds(bool hasPairs, std::string const& users) const;

    Source texts(bool isPart = false) const;
    Source entries() const { return source(entries_, "--entry-column", texts_); }
    // Any other file of the command.
    TextFile other(std::string const& file) const { return {file, encoding_}; }
    // Of the output in columns.
    char delimiter() const;

private:
    Source source(GivenSource const& given, std::string const& columnOption,
                  GivenSource const& other) const;

    GivenSource texts_;
    GivenSource entries_;
    bool hasHeader_ = false;
    std::string delimiter_;
    std::string encoding_;
};

}  // namespace near_text
