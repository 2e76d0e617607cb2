// The component object: the objects it borrows, its call entry and its language.
#include "host/near_text_comparer.h"

#include <cwchar>
#include <locale>

#include "host/text_width.h"

namespace {

// The names under which the host asks for Russian messages.
constexpr wchar_t const* kLocaleNames[] = {L"ru",  L"ru_ru",   L"ru_RU",
                                           L"rus", L"rus_rus", L"rus_RUS"};

}  // namespace

// The constructor of a stream that names no mode is a newer symbol than any other here, where a
// compiler does not inline it.
NearTextComparer::NearTextComparer()
    : connection_(nullptr),
      memManager_(nullptr),
      russianLocale_(false),
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

void NearTextComparer::setRussianLocaleFlag(unsigned short const* locale) {
    auto const name = widen(locale);
    for (wchar_t const* russian : kLocaleNames) {
        if (std::wcscmp(name.get(), russian) == 0) {
            russianLocale_ = true;
            return;
        }
    }
}
