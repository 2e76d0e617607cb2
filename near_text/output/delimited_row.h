// Rows of a table as they are written, with a line feed at the end.
//
// In tsv a backslash, a tab, a line feed and a carriage return become \\, \t, \n and \r, so that
// each row is a line. In csv a field is quoted where it has to be: for a delimiter, a quote, a line
// feed, a carriage return or a blank at an end; so is the only field of a row when it is empty.
#pragma once

#include <string>
#include <vector>

namespace near_text {

std::string tsvRow(std::vector<std::string> const& fields);
std::string csvRow(std::vector<std::string> const& fields, char delimiter = ',');

}  // namespace near_text
