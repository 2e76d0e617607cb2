// The component: what the host makes, lends its objects to and calls.
//
// A component holds everything that it owns, the distance table included, so it is large (8 MB) and
// lives on the heap. Calls on one component must not overlap: the table and the number stream are
// its state. Components share nothing but constants, so each may live on a thread of its own.
//
// Nothing of one call passes into the next, the language of reports excepted. No operation enforces
// an order: without a connection reports are dropped, without a memory manager there is no way to
// hand out text.
#pragma once

#include <sstream>
#include <vector>

#include "compare/damerau_levenshtein_distance.h"
#include "compare/utf16_string.h"
#include "host/component_base.h"

inline constexpr wchar_t kClassName[] = L"NearTextComparer";
inline constexpr wchar_t kExtensionName[] = L"NearTextComparerExtension";

class NearTextComparer : public IComponentBase {
public:
    // The methods by their place in the catalogue.
    enum MethodIndex : long { StringCompare = 0, StringSearch = 1 };

    // Thrown by value within a search and caught there; none ever reaches the host.
    enum Error : int {
        StringTooLong = 0,
        BadParameters = 1,
        InternalError = 2,
        NothingToSearch = 1000,  // no fault of the host's, and so without a message
    };

    NearTextComparer();

    // Lending. Each stores the pointer, null included, and is true when it is not null. The objects
    // stay the host's and must outlive their use here.
    bool Init(void* hostConnection) override;
    bool setMemManager(void* hostMemoryManager) override;
    long GetInfo() override;
    void Done() override;

    // The catalogue. Text is handed out in a block from the memory manager, which the host owns;
    // null means that there is none. A name or number that is not in the catalogue gives -1, null
    // or false.
    bool RegisterExtensionAs(unsigned short** out) override;
    long GetNProps() override;
    long FindProp(unsigned short const* name) override;
    unsigned short const* GetPropName(long index, long alias) override;
    bool GetPropVal(long index, _tVariant* value) override;
    bool SetPropVal(long index, _tVariant* value) override;
    bool IsPropReadable(long index) override;
    bool IsPropWritable(long index) override;
    long GetNMethods() override;
    long FindMethod(unsigned short const* name) override;
    unsigned short const* GetMethodName(long index, long alias) override;
    long GetNParams(long method) override;
    bool GetParamDefValue(long method, long param, _tVariant* value) override;
    bool HasRetVal(long method) override;

    // The calls. `params` holds as many records as GetNParams says, whatever `count` says; `ret`
    // receives the result. False means that nothing was carried out; a report tells why, except
    // where there is no such method, no `params`, no `ret` or a `count` of 0. When an allocation
    // fails std::bad_alloc propagates, and the component stays fit for the next call.
    bool CallAsProc(long method, _tVariant* params, long count) override;
    bool CallAsFunc(long method, _tVariant* ret, _tVariant* params, long count) override;

    void SetLocale(unsigned short const* locale) override;

    // Appends to `parts` each stretch of `text` (ended by NUL, not null) between separators; a
    // separator beside another, or at an end, adds nothing.
    [[gnu::visibility("default")]] void split(unsigned short const* text, unsigned short separator,
                                              std::vector<Utf16String>& parts);

private:
    bool compareString(_tVariant const* params, _tVariant* ret);
    bool searchString(_tVariant const* params, _tVariant* ret);
    // The indices ascend. A list of more units than a record can tell is an internal error, as is a
    // block that the host does not lend.
    bool createReturnString(_tVariant* ret, std::vector<unsigned long> const& indices);

    wchar_t const* getErrorDescr(Error error) const;
    void addError(unsigned int code, wchar_t const* source, wchar_t const* description, long scode);
    // The one form that every report has.
    void reportFailure(Error error);

    void setRussianLocaleFlag(unsigned short const* locale);
    long findName(wchar_t const* const* table, wchar_t const* name, unsigned int count) const;
    long findInEitherTable(wchar_t const* const* russian, wchar_t const* const* english,
                           unsigned short const* name, unsigned int count) const;
    unsigned short const* nameForHost(wchar_t const* name);

    // Rows are the values 0 to 2 of Error, columns the values of `russianLocale_`.
    static wchar_t const kErrorMessages[3][2][500];

    HostConnection* connection_;
    HostMemoryManager* memManager_;
    bool russianLocale_ = false;
    DamerauLevenshteinDistance distance_;
    std::basic_stringstream<wchar_t> numberStream_;  // turns numbers into text
};
