// The least that a host of the add-in does. Usage: minimal_host LIBRARY
#include <dlfcn.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include "host/component_base.h"

static std::string asText(unsigned short const* units, std::size_t length) {
    return {units, units + length};  // enough for the Latin text of this example
}
static std::string asText(unsigned short const* units) {
    return asText(units, std::char_traits<unsigned short>::length(units));
}

struct Connection : HostConnection {
    void notCalled0() override {}
    void notCalled1() override {}
    bool reportError(unsigned short code, unsigned short const* source,
                     unsigned short const* description, long) override {
        std::printf("report %u from %s: %s\n", code, asText(source).c_str(),
                    asText(description).c_str());  // the texts die with this call
        return true;
    }
};

struct Memory : HostMemoryManager {
    void notCalled0() override {}
    void notCalled1() override {}
    bool allocate(void** out, unsigned long size) override {
        *out = std::malloc(size);  // the host's own from here on
        return *out != nullptr;
    }
};

static _tVariant textRecord(std::u16string& text) {
    _tVariant record{};
    record.value.wideString = reinterpret_cast<unsigned short*>(text.data());
    record.length = static_cast<std::uint32_t>(text.size());
    record.tag = TagWideString;
    return record;
}
static _tVariant numberRecord(int number) {
    _tVariant record{};
    record.value.int32 = number;
    record.tag = TagInt32;
    return record;
}

int main(int, char** arguments) {
    void* const library = dlopen(arguments[1], RTLD_NOW);
    if (library == nullptr) return std::puts(dlerror()), 2;
    auto* const make = reinterpret_cast<GetClassObjectFunction*>(dlsym(library, "GetClassObject"));
    auto* const destroy = reinterpret_cast<DestroyObjectFunction*>(dlsym(library, "DestroyObject"));

    IComponentBase* component = nullptr;  // an empty slot
    if (make(nullptr, &component) == 0) return 2;
    Connection connection;
    Memory memory;
    component->Init(static_cast<HostConnection*>(&connection));
    component->setMemManager(static_cast<HostMemoryManager*>(&memory));  // before any name or list

    std::u16string first = u"claw hammer", second = u"hammer claw", name = u"StringCompare";
    long const compare = component->FindMethod(textRecord(name).value.wideString);
    _tVariant pair[] = {textRecord(first), textRecord(second), numberRecord(100)};
    _tVariant result{};
    if (component->CallAsFunc(compare, &result, pair, 3)) {
        std::printf("alike: %d\n", result.value.boolean);
    }

    std::u16string list = u"saw;claw hammer;hammer", separator = u";";
    long const search = 1;  // StringSearch; all seven records must be there
    _tVariant records[] = {textRecord(second),
                           textRecord(list),
                           textRecord(separator),
                           numberRecord(0),
                           numberRecord(80),
                           numberRecord(80),
                           {}};
    component->GetParamDefValue(search, 6, &records[6]);
    result = {};  // a search without a match leaves value and length as they were
    if (component->CallAsFunc(search, &result, records, 7) && result.length > 0) {
        std::printf("entries: %s\n", asText(result.value.wideString, result.length).c_str());
        std::free(result.value.wideString);
    }

    pair[2] = numberRecord(101);
    if (!component->CallAsFunc(compare, &result, pair, 3)) std::puts("refused");
    destroy(&component);
    return dlclose(library);
}
