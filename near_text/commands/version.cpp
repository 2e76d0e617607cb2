#include "host_client/library_file.h"
#include "near_text/commands/commands.h"
#include "near_text/messages/messages.h"
#include "near_text/output/output.h"

namespace near_text {

// The library's is the one that a command would load.
Status execute(VersionSettings const& settings) {
    Output output;
    output.write("near_text " NEAR_TEXT_VERSION "\n");
    output.flush();
    std::filesystem::path const& library = settings.addIn.library;
    output.write(onOneLine("libNearTextComparerLin64.so " + host_client::libraryVersion(library) +
                           " (" + absolute(library).string() + ")") +
                 '\n');
    output.flush();
    return Status::Found;
}

}  // namespace near_text
