// The least that a host of the add-in does. Usage: minimal_host LIBRARY
#include <dlfcn.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "host/component_base.h"

static std::string ascii(unsigned short const* units, std::size_t length) {
    return {units, units + length};  // enough for what this example prints
}

struct Connection final : HostConnection {
    void notCalled0() override {}
    void notCalled1() override {}
    bool reportError(unsigned short code, unsigned short const*, unsigned short const* text,
                     long) override {
        auto const length = std::char_traits<unsigned short>::length(text);
        std::printf("report %u: %s\n", code, ascii(text, length).c_str());  // copy what you keep
        return true;
    }
};

struct Memory final : HostMemoryManager {
    void notCalled0() override {}
    void notCalled1() override {}
    bool allocate(void** out, unsigned long size) override {
        *out = std::malloc(size);  // the host frees it, the library never does
        return *out != nullptr;
    }
};

static _tVariant text(std::u16string_view units) {
    _tVariant record{};
    record.value.wideString =
        reinterpret_cast<unsigned short*>(const_cast<char16_t*>(units.data()));
    record.length = static_cast<std::uint32_t>(units.size());
    record.tag = TagWideString;
    return record;
}

static _tVariant number(int value) {
    _tVariant record{};
    record.value.int32 = value;
    record.tag = TagInt32;
    return record;
}

int main(int count, char** arguments) {
    if (count != 2) return std::puts("Usage: minimal_host LIBRARY"), 2;
    void* const library = dlopen(arguments[1], RTLD_NOW);
    if (library == nullptr) return std::puts(dlerror()), 1;
    auto* const make = reinterpret_cast<GetClassObjectFunction*>(dlsym(library, "GetClassObject"));
    auto* const end = reinterpret_cast<DestroyObjectFunction*>(dlsym(library, "DestroyObject"));

    Connection connection;
    Memory memory;
    IComponentBase* component = nullptr;  // the slot must be empty
    if (make == nullptr || make(nullptr, &component) == 0) return 1;
    component->Init(static_cast<HostConnection*>(&connection));
    component->setMemManager(static_cast<HostMemoryManager*>(&memory));

    _tVariant result{};
    _tVariant pair[] = {text(u"claw hammer"), text(u"hammer claw"), number(100)};
    long const compare = component->FindMethod(text(u"StringCompare").value.wideString);
    if (component->CallAsFunc(compare, &result, pair, 3)) {
        std::printf("alike: %d\n", result.value.boolean);
    }
    pair[2] = number(101);  // not a percentage: a report, and false
    if (!component->CallAsFunc(compare, &result, pair, 3)) std::puts("refused");

    long const search = component->FindMethod(text(u"StringSearch").value.wideString);
    _tVariant query[] = {text(u"hammer claw"), text(u"saw;claw hammer;hammer"),
                         text(u";"),           number(0),
                         number(80),           number(80),
                         _tVariant{}};
    component->GetParamDefValue(search, 6, &query[6]);  // no exclusions
    result = {};  // a search that finds nothing leaves value and length as they were
    if (component->CallAsFunc(search, &result, query, 7) && result.length > 0) {
        std::printf("entries: %s\n", ascii(result.value.wideString, result.length).c_str());
        std::free(result.value.wideString);
    }
    end(&component);
    return dlclose(library);
}
