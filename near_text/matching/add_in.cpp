#include "near_text/matching/add_in.h"

namespace near_text {

host_client::AddIn const& loadedAddIn(AddInSettings const& settings) {
    static host_client::AddIn const& loaded = *new host_client::AddIn(settings.library);
    return loaded;
}

std::unique_ptr<host_client::Component> makeComponent(AddInSettings const& settings) {
    auto component = std::make_unique<host_client::Component>(loadedAddIn(settings));
    component->setLocale(settings.locale);
    return component;
}

}  // namespace near_text
