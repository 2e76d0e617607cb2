// A loaded add-in: the library file in this process, and its four exported functions.
#pragma once

#include <filesystem>

#include "host/component_base.h"

namespace host_client {

class AddIn {
public:
    // Loads the library at run time, as a host does. Throws std::runtime_error that says why the
    // file cannot be loaded, or which function it lacks.
    explicit AddIn(std::filesystem::path const& file);
    ~AddIn();
    AddIn(AddIn const&) = delete;
    AddIn& operator=(AddIn const&) = delete;

    // The address of a defined symbol, or null.
    void* symbol(char const* name) const;

    std::filesystem::path const path;  // absolute

    GetClassObjectFunction* getClassObject;
    DestroyObjectFunction* destroyObject;
    GetClassNamesFunction* getClassNames;
    SetPlatformCapabilitiesFunction* setPlatformCapabilities;

private:
    void* handle_;
};

}  // namespace host_client
