#include "near_text/output/row_layout.h"

#include <iterator>

namespace near_text {

std::set<std::string> RowLayout::matchColumns(bool hasDecisions) {
    std::set<std::string> columns = {std::begin(kColumns), std::end(kColumns)};
    if (hasDecisions) columns.insert(kDecisionColumn);
    return columns;
}

RowLayout::RowLayout(bool isNumberedOne, char csvDelimiter, Cells const& textNames,
                     Cells const& entryNames, std::set<std::string> taken)
    : isNumbered(isNumberedOne),
      delimiter(csvDelimiter),
      hasDecisions(taken.count(kDecisionColumn) > 0) {
    auto const free = [&](std::string name, std::string const& prefix) {
        bool const isNumber = name.find_first_not_of("0123456789") == std::string::npos;
        if (isNumber) name.insert(0, prefix);
        while (!taken.insert(name).second)
            name.insert(0, prefix);
        return name;
    };
    for (std::string const& name : textNames)
        textColumns.push_back(free(name, "text_"));
    for (std::string const& name : entryNames)
        entryColumns.push_back(free(name, "entry_"));
}

}  // namespace near_text
