#include "host_client/add_in.h"

#include <dlfcn.h>

#include <stdexcept>

#include "host_client/library_file.h"

namespace host_client {

namespace {

template <class Function>
void resolve(void* handle, char const* name, Function& function) {
    function = reinterpret_cast<Function>(dlsym(handle, name));
    if (function == nullptr) throw std::runtime_error(std::string("lacks the function ") + name);
}

}  // namespace

AddIn::AddIn(std::filesystem::path const& file)
    : path(std::filesystem::absolute(file)), handle_(loadLibrary(file)) {
    try {
        resolve(handle_, "GetClassObject", getClassObject);
        resolve(handle_, "DestroyObject", destroyObject);
        resolve(handle_, "GetClassNames", getClassNames);
        resolve(handle_, "SetPlatformCapabilities", setPlatformCapabilities);
    } catch (std::runtime_error const& error) {
        dlclose(handle_);
        throw std::runtime_error(file.string() + ": " + error.what());
    }
}

AddIn::~AddIn() {
    dlclose(handle_);
}

void* AddIn::symbol(char const* name) const {
    return dlsym(handle_, name);
}

}  // namespace host_client
