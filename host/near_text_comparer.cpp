// The component object: the objects it borrows and its call entry.
#include "host/near_text_comparer.h"

#include <locale>

// The constructor of a stream that names no mode is a newer symbol than any other here, where a
// compiler does not inline it.
NearTextComparer::NearTextComparer()
    : connection_(nullptr),
      memManager_(nullptr),
      numberStream_(std::ios_base::in | std::ios_base::out) {
    // The host's process may have set a global locale that groups digits.
    numberStream_.imbue(std::locale::classic());
    // Stream operators swallow what is thrown inside them unless told to pass it on.
    numberStream_.exceptions(std::ios_base::badbit | std::ios_base::failbit);
}

bool NearTextComparer::Init(void* hostConnection) {
    connection_ = static_cast<HostConnection*>(hostConnection);
    return connection_ != nullptr;
}

bool NearTextComparer::setMemManager(void* hostMemoryManager) {
    memManager_ = static_cast<HostMemoryManager*>(hostMemoryManager);
    return memManager_ != nullptr;
}

long NearTextComparer::GetInfo() {
    return 2004;
}

void NearTextComparer::Done() {}

bool NearTextComparer::CallAsProc(long, _tVariant*, long) {
    return false;
}

bool NearTextComparer::CallAsFunc(long method, _tVariant* ret, _tVariant* params, long count) {
    if (params == nullptr || count == 0 || ret == nullptr) return false;
    switch (method) {
        case StringCompare:
            return compareString(params, ret);
        case StringSearch:
            return searchString(params, ret);
        default:
            return false;
    }
}

void NearTextComparer::SetLocale(unsigned short const* locale) {
    setRussianLocaleFlag(locale);
}
