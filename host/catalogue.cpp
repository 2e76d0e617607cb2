// The catalogue by which the host finds the methods: two of them under two names each, and one
// property without a name. All of it is constant; only handing out text needs the memory manager.
#include <algorithm>
#include <cwchar>

#include "host/near_text_comparer.h"
#include "host/parameters.h"
#include "host/text_width.h"

using namespace comparer;

namespace {

constexpr wchar_t const* kMethodNamesRu[] = {L"СравнитьСтроки", L"НайтиСтроки"};
constexpr wchar_t const* kMethodNamesEn[] = {L"StringCompare", L"StringSearch"};
constexpr wchar_t const* kPropNamesRu[] = {L""};
constexpr wchar_t const* kPropNamesEn[] = {L""};

constexpr long kMethodCount = std::size(kMethodNamesEn);
constexpr long kPropCount = std::size(kPropNamesEn);
static_assert(std::size(kMethodNamesRu) == kMethodCount && std::size(kMethodTags) == kMethodCount);
static_assert(std::size(kPropNamesRu) == kPropCount);

constexpr bool isIndexBelow(long index, long count) {
    return index >= 0 && index < count;
}

// The text of `index` in the table that `alias` picks, null when either is out of range.
wchar_t const* pickName(wchar_t const* const* english, wchar_t const* const* russian, long count,
                        long index, long alias) {
    if (!isIndexBelow(index, count)) return nullptr;
    if (alias == 0) return english[index];
    if (alias == 1) return russian[index];
    return nullptr;
}

// Gives `text` out in a block from the manager, as far as that gives one. A manager may claim
// success and leave no block; the text then goes out in an array of the library's own, so that the
// host still finds the name. After a refusal nothing is written.
void giveOut(HostMemoryManager& manager, void** block, wchar_t const* text) {
    std::size_t const units = wideLength(text) + 1;
    if (!manager.allocate(block, units * sizeof(unsigned short))) return;
    if (*block == nullptr) *block = new unsigned short[units];
    narrowWithTerminator(static_cast<unsigned short*>(*block), text);
}

}  // namespace

bool NearTextComparer::RegisterExtensionAs(unsigned short** out) {
    if (memManager_ == nullptr) return false;
    // A refusal leaves the host without the name, yet the extension is registered.
    giveOut(*memManager_, reinterpret_cast<void**>(out), kExtensionName);
    return true;
}

unsigned short const* NearTextComparer::nameForHost(wchar_t const* name) {
    if (name == nullptr || memManager_ == nullptr) return nullptr;
    void* block = nullptr;
    giveOut(*memManager_, &block, name);
    return static_cast<unsigned short const*>(block);
}

long NearTextComparer::GetNProps() {
    return kPropCount;
}

long NearTextComparer::FindProp(unsigned short const* name) {
    return findInEitherTable(kPropNamesRu, kPropNamesEn, name, kPropCount);
}

unsigned short const* NearTextComparer::GetPropName(long index, long alias) {
    return nameForHost(pickName(kPropNamesEn, kPropNamesRu, kPropCount, index, alias));
}

bool NearTextComparer::GetPropVal(long, _tVariant*) {
    return false;
}

bool NearTextComparer::SetPropVal(long, _tVariant*) {
    return false;
}

bool NearTextComparer::IsPropReadable(long) {
    return false;
}

bool NearTextComparer::IsPropWritable(long) {
    return false;
}

long NearTextComparer::GetNMethods() {
    return kMethodCount;
}

long NearTextComparer::FindMethod(unsigned short const* name) {
    return findInEitherTable(kMethodNamesRu, kMethodNamesEn, name, kMethodCount);
}

unsigned short const* NearTextComparer::GetMethodName(long index, long alias) {
    return nameForHost(pickName(kMethodNamesEn, kMethodNamesRu, kMethodCount, index, alias));
}

long NearTextComparer::GetNParams(long method) {
    return isIndexBelow(method, kMethodCount) ? std::ssize(kMethodTags[method]) : -1;
}

bool NearTextComparer::GetParamDefValue(long method, long param, _tVariant* value) {
    value->tag = TagEmpty;
    bool const isExclusions = method == StringSearch && param == kExclusionsParam;
    if (!isExclusions) return false;
    value->value.whole = 0;
    value->length = 0;
    value->tag = TagWideString;
    return true;
}

bool NearTextComparer::HasRetVal(long method) {
    return isIndexBelow(method, kMethodCount);
}

long NearTextComparer::findInEitherTable(wchar_t const* const* russian,
                                         wchar_t const* const* english, unsigned short const* name,
                                         unsigned int count) const {
    auto const wide = widen(name);
    long const found = findName(russian, wide.get(), count);
    return found != -1 ? found : findName(english, wide.get(), count);
}

long NearTextComparer::findName(wchar_t const* const* table, wchar_t const* name,
                                unsigned int count) const {
    auto const* const found = std::find_if(table, table + count, [name](wchar_t const* entry) {
        return std::wcscmp(entry, name) == 0;
    });
    return found == table + count ? -1 : found - table;
}
