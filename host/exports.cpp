// The four functions by which the host finds the library's class and makes and ends components.
#include <cstdint>
#include <new>

#include "host/near_text_comparer.h"
#include "host/text_width.h"

namespace {

// The class name in the host's units, made by the first call that asks and kept for the life of the
// process: the host reads it at any time. Set without a lock, so first calls must not race.
unsigned short* classNamesBuffer = nullptr;

}  // namespace

extern "C" {

// Makes a component into an empty `slot`. The result is its address, or 0 when the slot is not
// empty.
[[gnu::visibility("default")]] std::intptr_t GetClassObject(void const*, IComponentBase** slot) {
    if (*slot != nullptr) return 0;
    *slot = new NearTextComparer;
    return reinterpret_cast<std::intptr_t>(*slot);
}

// Ends the component in `slot` and empties it: 0, or -1 when it was empty already.
[[gnu::visibility("default")]] long DestroyObject(IComponentBase** slot) {
    if (*slot == nullptr) return -1;
    delete *slot;
    *slot = nullptr;
    return 0;
}

// The class name, ended by zero; the library's, for reading only.
[[gnu::visibility("default")]] unsigned short const* GetClassNames() {
    if (classNamesBuffer == nullptr) classNamesBuffer = narrow(kClassName).release();
    return classNamesBuffer;
}

// Nothing here depends on what the host can do.
[[gnu::visibility("default")]] int SetPlatformCapabilities(int) {
    return 1;
}

}  // extern "C"
