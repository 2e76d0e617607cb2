// What a library file says about itself, read without loading it. The file is not trusted.
#pragma once

#include <filesystem>
#include <string>

namespace host_client {

// Throws std::runtime_error that names the file and says what is wrong, when it cannot be read, is
// no shared library, is cut off (loading it could end the process) or is for another machine.
void checkLibraryFile(std::filesystem::path const& file);

// The version that the file carries in its package note, as UTF-8 of any content. Throws as above,
// and when there is no such note.
std::string libraryVersion(std::filesystem::path const& file);

}  // namespace host_client
