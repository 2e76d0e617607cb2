// The four functions by which the host finds the library's class and makes and ends components.
#include <cstdint>
#include <new>

#include "host/near_text_comparer.h"
#include "host/text_width.h"

using namespace comparer;

namespace {

// The class name in the host's units, made by the first call that asks and kept for the life of the
// process: the host reads it at any time. Set without a lock, so first calls must not race.
unsigned short* classNamesBuffer = nullptr;

}  // namespace

extern "C" {

[[gnu::visibility("default")]] GetClassObjectFunction GetClassObject;
[[gnu::visibility("default")]] DestroyObjectFunction DestroyObject;
[[gnu::visibility("default")]] GetClassNamesFunction GetClassNames;
[[gnu::visibility("default")]] SetPlatformCapabilitiesFunction SetPlatformCapabilities;

std::intptr_t GetClassObject(void const*, IComponentBase** slot) {
    if (*slot != nullptr) return 0;
    *slot = new NearTextComparer;
    return reinterpret_cast<std::intptr_t>(*slot);
}

long DestroyObject(IComponentBase** slot) {
    if (*slot == nullptr) return -1;
    delete *slot;
    *slot = nullptr;
    return 0;
}

unsigned short const* GetClassNames() {
    if (classNamesBuffer == nullptr) classNamesBuffer = narrow(kClassName).release();
    return classNamesBuffer;
}

// Nothing here depends on what the host can do.
int SetPlatformCapabilities(int) {
    return 1;
}

}  // extern "C"
