// What a run is, for a format that tells.
#pragma once

#include <string>

namespace near_text {

struct About {
    std::string command;      // its name
    std::string commandLine;  // with the options that say what is found, as a shell reads it
    std::string texts;        // the file, or the one text
    std::string entries;      // the file; empty where the texts are the entries
    bool hasTextIds = false;  // by which pairs name them, and not by lines
    bool hasEntryIds = false;
};

}  // namespace near_text
