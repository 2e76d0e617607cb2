// What the program does: each command by its settings. All throw what ends the program:
// std::exception with a message for the user, or BrokenPipe.
#pragma once

#include "near_text/messages/status.h"
#include "near_text/options/settings.h"

namespace near_text {

Status execute(CompareSettings const& settings);
Status execute(TextSearchSettings const& settings);
Status execute(MatchSettings const& settings);
Status execute(DuplicatesSettings const& settings);
Status execute(SweepSettings const& settings);
Status execute(DescribeSettings const& settings);
Status execute(VersionSettings const& settings);
Status execute(PrintSettings const& settings);

}  // namespace near_text
