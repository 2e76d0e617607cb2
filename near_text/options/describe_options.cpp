#include "near_text/options/definition.h"

namespace near_text {

namespace {

ReadSettings define(CLI::App& /*command*/) {
    return [](AddInSettings const& addIn) -> Settings { return DescribeSettings{addIn}; };
}

}  // namespace

Definition const kDescribeDefinition = {
    "describe",
    {"show what the add-in says about itself",
     "Shows the path and the version of the library, its names, methods and properties, as a host "
     "finds them.",
     "0 shown, 2 an error or no version in the library",
     {"near_text describe --library ./libNearTextComparerLin64.so"}},
    define};

}  // namespace near_text
