// The host of minimal_host.cpp in C: the add-in by its tables of operations alone, as a host in any
// language without C++ classes sees it.
//   cc -std=c11 minimal_host.c -o minimal_host -ldl && ./minimal_host LIBRARY
#include <dlfcn.h>
#include <stdbool.h>
#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <uchar.h>

// One value. 64 bytes, of which the host may use the unnamed ones as it likes.
typedef struct {
    union {
        int32_t number;
        uint8_t boolean;
        char16_t const* text;
        char16_t* block;  // of a result: the host's
        uint64_t whole;
    } value;
    uint32_t length;  // of a text, in 16-bit units
    uint8_t ours[48];
    uint16_t tag;  // 3 a number, 11 a boolean, 22 a text
    uint8_t ours_too[2];
} Record;

// A table of operations. What is lent needs the third alone; no other is called.
typedef void (*Operation)(void);
typedef struct {
    Operation const* table;
} Object;

// A component is three objects, one behind the other; each operation takes the one whose table it
// is in.
enum { kInit, kMethods, kLocale };
enum { kInitSlot = 2, kSetMemManagerSlot = 3 };  // of the first table
enum { kFindMethodSlot = 11, kGetParamDefValueSlot = 14, kCallAsFuncSlot = 17 };  // of the second

typedef intptr_t GetClassObject(void const* ignored, Object** slot);
typedef long DestroyObject(Object** slot);
typedef bool Lend(Object* self, void const* lent);
typedef long FindMethod(Object* self, char16_t const* name);
typedef bool GetParamDefValue(Object* self, long method, long param, Record* value);
typedef bool CallAsFunc(Object* self, long method, Record* result, Record* params, long count);

static void print(char const* before, char16_t const* units, size_t length) {
    printf("%s", before);
    for (size_t i = 0; i < length; ++i)
        putchar(units[i]);  // enough for what this example prints
    putchar('\n');
}

static bool reportError(void* self, unsigned short code, char16_t const* source,
                        char16_t const* text, long scode) {
    (void)self, (void)source, (void)scode;
    size_t length = 0;
    while (text[length] != 0)
        ++length;
    printf("report %u", code);
    print(": ", text, length);  // copy what you keep
    return true;
}

static bool allocate(void* self, void** out, unsigned long size) {
    (void)self;
    *out = malloc(size);  // the host frees it, the library never does
    return *out != NULL;
}

static Record text(char16_t const* units) {
    Record record = {.value = {.text = units}, .tag = 22};
    while (units[record.length] != 0)
        ++record.length;
    return record;
}

static Record number(int32_t value) {
    return (Record){.value = {.number = value}, .tag = 3};
}

int main(int count, char** arguments) {
    if (count != 2) return puts("Usage: minimal_host LIBRARY"), 2;
    void* const library = dlopen(arguments[1], RTLD_NOW);
    if (library == NULL) return puts(dlerror()), 1;
    GetClassObject* make = NULL;
    DestroyObject* end = NULL;
    *(void**)&make = dlsym(library, "GetClassObject");
    *(void**)&end = dlsym(library, "DestroyObject");

    Operation const connectionTable[] = {NULL, NULL, (Operation)reportError};
    Operation const memoryTable[] = {NULL, NULL, (Operation)allocate};
    Object const connection = {connectionTable};
    Object const memory = {memoryTable};
    Object* component = NULL;  // the slot must be empty
    if (make == NULL || make(NULL, &component) == 0) return 1;
    Object* const methods = component + kMethods;
    ((Lend*)component[kInit].table[kInitSlot])(component, &connection);
    ((Lend*)component[kInit].table[kSetMemManagerSlot])(component, &memory);
    FindMethod* const findMethod = (FindMethod*)methods->table[kFindMethodSlot];
    CallAsFunc* const callAsFunc = (CallAsFunc*)methods->table[kCallAsFuncSlot];

    Record result = {.length = 0};
    Record pair[] = {text(u"claw hammer"), text(u"hammer claw"), number(100)};
    long const compare = findMethod(methods, u"StringCompare");
    if (callAsFunc(methods, compare, &result, pair, 3)) printf("alike: %d\n", result.value.boolean);
    pair[2] = number(101);  // not a percentage: a report, and false
    if (!callAsFunc(methods, compare, &result, pair, 3)) puts("refused");

    long const search = findMethod(methods, u"StringSearch");
    Record query[7] = {text(u"hammer claw"), text(u"saw;claw hammer;hammer"),
                       text(u";"),           number(0),
                       number(80),           number(80)};
    ((GetParamDefValue*)methods->table[kGetParamDefValueSlot])(methods, search, 6, &query[6]);
    result =
        (Record){.length = 0};  // a search that finds nothing leaves value and length as they were
    if (callAsFunc(methods, search, &result, query, 7) && result.length > 0) {
        print("entries: ", result.value.text, result.length);
        free(result.value.block);
    }
    end(&component);
    return dlclose(library);
}
