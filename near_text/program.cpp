#include "near_text/program.h"

#include "near_text/commands/commands.h"
#include "near_text/options/command_line.h"

namespace near_text {

namespace {

// Beside the program, or else where an installation with this program has its libraries.
std::filesystem::path defaultLibrary() {
    constexpr char const* kLibraryFile = "libNearTextComparerLin64.so";
    auto const folder = std::filesystem::read_symlink("/proc/self/exe").parent_path();
    auto const installed = folder.parent_path() / NEAR_TEXT_LIBRARY_FOLDER / kLibraryFile;
    bool const isBeside = std::filesystem::exists(folder / kLibraryFile);
    return isBeside || !std::filesystem::exists(installed) ? folder / kLibraryFile : installed;
}

}  // namespace

Status runProgram(int argc, char** argv) {
    Settings const settings = readCommandLine(argc, argv, defaultLibrary());
    return std::visit([](auto const& ofCommand) { return execute(ofCommand); }, settings);
}

}  // namespace near_text
