// One component, driven as a host drives it: made, lent its objects, called by index, destroyed.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host_client/add_in.h"
#include "host_client/host_text.h"
#include "host_client/lent_objects.h"
#include "host_client/search_arguments.h"

namespace host_client {

// Records as a host fills them. Bytes that are not part of a value hold garbage. A text stays the
// caller's and must outlive the record; one of 2^32 units or more throws std::runtime_error.
_tVariant textRecord(std::u16string_view text);
_tVariant numberRecord(int number);
_tVariant garbageRecord();

class Component {
public:
    // `library` must outlive the component. Throws std::runtime_error when none can be made.
    explicit Component(AddIn const& library);
    ~Component();
    Component(Component const&) = delete;
    Component& operator=(Component const&) = delete;

    // Each of these two calls drops what was reported before it.

    // Whether the texts are alike; nothing when the add-in reported an error instead.
    std::optional<bool> compare(std::u16string_view first, std::u16string_view second, int percent);

    // The index list as the add-in gave it; nothing when it reported an error instead.
    std::optional<std::string> search(SearchArguments const& arguments);

    // The language of later reports; a name that the add-in does not know changes nothing.
    void setLocale(std::u16string const& name) { object_->SetLocale(hostUnits(name.c_str())); }

    // What the add-in said when it last reported an error, in the last call if that failed.
    std::u16string lastReport() const;

    IComponentBase* operator->() const { return object_; }

    Connection connection;
    Memory memory;

private:
    AddIn const& addIn_;
    IComponentBase* object_ = nullptr;
};

// "3,14" as numbers.
std::vector<unsigned long> parseIndexList(std::string_view list);

}  // namespace host_client
