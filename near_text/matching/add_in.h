// The add-in that a run asks.
#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "host_client/component.h"

namespace near_text {

struct AddInSettings {
    std::filesystem::path library;
    std::u16string locale;  // the language of its reports; empty for its own choice
};

// Loaded at the first call and for good: the add-in keeps a text for as long as its process lives.
// There is one in a process. Throws std::runtime_error.
host_client::AddIn const& loadedAddIn(AddInSettings const& settings);

std::unique_ptr<host_client::Component> makeComponent(AddInSettings const& settings);

}  // namespace near_text
