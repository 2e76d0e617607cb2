// Tables that are read as if they were lists of lines.
#pragma once

#include "near_text/input/source.h"

namespace near_text {

// Notes on standard error when a file seems to be a table but no column of it is asked for: nothing
// would be found, in silence. A name that ends with .csv or .tsv tells, or a first line with fields
// where the other file is read by column. The options are those that ask for a column.
void noteTable(Source const& source, std::string const& option, bool isOtherTable = false);
void noteTables(Source const& texts, Source const& entries);

}  // namespace near_text
