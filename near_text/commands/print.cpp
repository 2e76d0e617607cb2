#include "near_text/commands/commands.h"
#include "near_text/output/output.h"

namespace near_text {

Status execute(PrintSettings const& settings) {
    Output output;
    output.write(settings.text);
    output.flush();
    return Status::Found;
}

}  // namespace near_text
