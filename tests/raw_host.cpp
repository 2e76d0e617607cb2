// A host that knows the add-in by its tables of operations and its bytes alone, and is compiled by
// whatever system it runs on: g++ -std=c++17 raw_host.cpp -ldl. Usage: raw_host LIBRARY
#include <dlfcn.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string>

static long failAt = -1;  // how many allocations are still to succeed before one fails

void* operator new(std::size_t size) {
    void* const block = failAt >= 0 && failAt-- == 0 ? nullptr : std::malloc(size);
    if (block == nullptr) throw std::bad_alloc();
    return block;
}
void operator delete(void* block) noexcept {
    std::free(block);
}
void operator delete(void* block, std::size_t) noexcept {
    std::free(block);
}

namespace {

struct Record {
    std::uint64_t value;
    std::uint32_t length;
    char other[48];
    std::uint16_t tag;
    char tail[2];
};
static_assert(sizeof(Record) == 64, "the host's own layout");

Record textOf(std::u16string const& text) {
    auto const length = static_cast<std::uint32_t>(text.size());
    return {reinterpret_cast<std::uint64_t>(text.data()), length, {}, 22, {}};
}

Record numberOf(int number) {
    return {static_cast<std::uint64_t>(number), 0, {}, 3, {}};
}

std::u16string reported;
char16_t block[64];

bool report(void*, unsigned short, char16_t const*, char16_t const* text, long) {
    reported = text;
    return true;
}

bool allocate(void*, void** out, unsigned long size) {
    *out = size <= sizeof block ? block : nullptr;
    return *out != nullptr;
}

void require(bool condition, char const* what) {
    if (condition) return;
    std::printf("FAILED: %s\n", what);
    std::exit(1);
}

}  // namespace

int main(int, char** argv) {
    void* const library = dlopen(argv[1], RTLD_NOW | RTLD_LOCAL);
    require(library != nullptr, library != nullptr ? "" : dlerror());
    void** object = nullptr;
    auto* const make =
        reinterpret_cast<std::intptr_t (*)(void const*, void***)>(dlsym(library, "GetClassObject"));
    require(make(nullptr, &object) != 0, "a component is made");

    // The third operation of each lent object is the one that is called. Of the component, the
    // first view takes the objects and the second answers.
    void* connectionTable[] = {nullptr, nullptr, reinterpret_cast<void*>(&report)};
    void* memoryTable[] = {nullptr, nullptr, reinterpret_cast<void*>(&allocate)};
    void* connection = connectionTable;
    void* memory = memoryTable;
    auto* const lend = static_cast<void**>(object[0]);
    for (int i : {0, 1}) {
        reinterpret_cast<bool (*)(void*, void*)>(lend[2 + i])(object,
                                                              i == 0 ? &connection : &memory);
    }
    auto const call = [&](long method, Record* params, long count, Record& result) {
        auto* const table = static_cast<void**>(object[1]);
        return reinterpret_cast<bool (*)(void*, long, Record*, Record*, long)>(table[17])(
            object + 1, method, &result, params, count);
    };

    std::u16string const text = u"red ball", list = u"ball red;blue;red ball", separator = u";",
                         none;
    std::u16string const turned = u"ball red";
    Record compared[] = {textOf(text), textOf(turned), numberOf(100)};
    Record result = {};
    require(call(0, compared, 3, result) && result.tag == 11 && (result.value & 0xFF) == 1,
            "two texts are alike");

    Record searched[] = {textOf(text),  textOf(list),  textOf(separator), numberOf(10),
                         numberOf(100), numberOf(100), textOf(none)};
    result = {};
    require(
        call(1, searched, 7, result) && result.length == 3 && std::u16string(block, 3) == u"0,2",
        "a search finds both");

    compared[2] = numberOf(101);
    require(!call(0, compared, 3, result) && reported == u"Input parameters error",
            "an error is reported");

    // The search finds two entries, and so cannot do without memory.
    bool isCaught = false;
    failAt = 0;
    try {
        call(1, searched, 7, result);
    } catch (std::bad_alloc const&) {
        isCaught = true;
    }
    failAt = -1;
    require(isCaught, "an allocation that fails is caught outside");
    require(call(1, searched, 7, result), "the next call is answered");
    std::puts("answers");
}
