// The contract with the host: the record that carries every value, the two objects that the host
// lends to a component, and the three interfaces by which it reaches one.
//
// The host knows these classes by position alone. The bytes of a record, the order of operations
// within a table and the order of the tables within an object are therefore fixed: nothing here may
// be reordered, and no interface may gain a field.
//
// Text that crosses the boundary is a run of 16-bit code units; a length counts units, never bytes.
#pragma once

#include <cstddef>
#include <cstdint>

// The type of the value that a record holds. Other tags exist; the component knows these alone.
enum VariantTag : std::uint16_t {
    TagEmpty = 0,
    TagInt32 = 3,
    TagBool = 11,
    TagWideString = 22,
};

// One value on its way between host and component. The host makes every record and owns it; an
// array of records has a stride of 64 bytes. The bytes that have no name here are the host's: they
// may hold anything and are never read or written.
struct _tVariant {
    union Value {
        std::uint64_t whole;
        std::int32_t int32;
        std::uint32_t uint32;
        std::uint8_t boolean;        // 0 or 1; the other seven bytes are not part of the value
        unsigned short* wideString;  // may be null when `length` is 0
    } value;
    std::uint32_t length;  // of a text, in units, its terminator not counted
    std::uint8_t hostBytes[48];
    std::uint16_t tag;  // a VariantTag
    std::uint8_t hostTail[2];
};

static_assert(sizeof(_tVariant) == 64 && sizeof(_tVariant::Value) == 8);
static_assert(offsetof(_tVariant, value) == 0 && offsetof(_tVariant, length) == 8);
static_assert(offsetof(_tVariant, tag) == 60);

// Lent by the host; receives error reports. Only the third operation of its table is ever called,
// and the object is never destroyed from here.
class HostConnection {
public:
    virtual void notCalled0() = 0;
    virtual void notCalled1() = 0;

    // Both texts end in a zero unit, belong to the caller and die when the call returns.
    virtual bool reportError(unsigned short code, unsigned short const* source,
                             unsigned short const* description, long scode) = 0;

protected:
    ~HostConnection() = default;
};

// Lent by the host; the only source of blocks that outlive a call. Only the third operation of its
// table is ever called, and the object is never destroyed from here.
class HostMemoryManager {
public:
    virtual void notCalled0() = 0;
    virtual void notCalled1() = 0;

    // True when `*out` now holds a block of at least `size` bytes. The block is the host's from
    // then on: whoever called fills it and never releases it.
    virtual bool allocate(void** out, unsigned long size) = 0;

protected:
    ~HostMemoryManager() = default;
};

class IInitDoneBase {
public:
    virtual ~IInitDoneBase() {}

    virtual bool Init(void* hostConnection) = 0;
    virtual bool setMemManager(void* hostMemoryManager) = 0;
    virtual long GetInfo() = 0;
    virtual void Done() = 0;
};

class ILanguageExtenderBase {
public:
    virtual ~ILanguageExtenderBase() {}

    virtual bool RegisterExtensionAs(unsigned short** out) = 0;
    virtual long GetNProps() = 0;
    virtual long FindProp(unsigned short const* name) = 0;
    virtual unsigned short const* GetPropName(long index, long alias) = 0;
    virtual bool GetPropVal(long index, _tVariant* value) = 0;
    virtual bool SetPropVal(long index, _tVariant* value) = 0;
    virtual bool IsPropReadable(long index) = 0;
    virtual bool IsPropWritable(long index) = 0;
    virtual long GetNMethods() = 0;
    virtual long FindMethod(unsigned short const* name) = 0;
    virtual unsigned short const* GetMethodName(long index, long alias) = 0;
    virtual long GetNParams(long method) = 0;
    virtual bool GetParamDefValue(long method, long param, _tVariant* value) = 0;
    virtual bool HasRetVal(long method) = 0;
    virtual bool CallAsProc(long method, _tVariant* params, long count) = 0;
    virtual bool CallAsFunc(long method, _tVariant* ret, _tVariant* params, long count) = 0;
};

class LocaleBase {
public:
    virtual ~LocaleBase() {}

    virtual void SetLocale(unsigned short const* locale) = 0;
};

// One component as the host holds it. The address of the whole object is also the address of its
// first interface.
class IComponentBase : public IInitDoneBase, public ILanguageExtenderBase, public LocaleBase {};

// The four functions that the library exports, under these names less `Function` and unmangled.
//
// GetClassObject makes a component into `*slot`, which must be null, and gives its address; it
// gives 0, and changes nothing, when the slot is not empty. The first argument is never read.
// std::bad_alloc propagates, and leaves the slot empty.
using GetClassObjectFunction = std::intptr_t(void const* ignored, IComponentBase** slot);
// Ends the component in `*slot` and empties it: 0, or -1 when it was empty.
using DestroyObjectFunction = long(IComponentBase** slot);
// The one class name, ended by a zero unit. The library's, for reading only, as long as it is
// loaded. The first call of a process must not race with another.
using GetClassNamesFunction = unsigned short const*();
// Always 1. The argument is never read.
using SetPlatformCapabilitiesFunction = int(int ignored);
