// A library file, opened by a path that somebody gave.
#pragma once

#include <filesystem>
#include <string>

namespace host_client {

// A handle for dlsym and dlclose. Throws std::runtime_error that names the file and says what is
// wrong, also when it is cut off, of which the loader would die, or for another machine.
void* loadLibrary(std::filesystem::path const& file);

// The version that the file carries in its package note, as UTF-8 of any content. Throws as above,
// and when there is no such note.
std::string libraryVersion(std::filesystem::path const& file);

}  // namespace host_client
