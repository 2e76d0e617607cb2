#include "host_client/component.h"

#include <charconv>
#include <cstring>
#include <limits>
#include <stdexcept>

namespace host_client {

namespace {

constexpr long kStringCompare = 0;
constexpr long kStringSearch = 1;

}  // namespace

_tVariant garbageRecord() {
    _tVariant record;
    std::memset(&record, 0xA5, sizeof record);
    return record;
}

_tVariant textRecord(std::u16string_view text) {
    if (text.size() > std::numeric_limits<std::uint32_t>::max()) {
        throw std::runtime_error("a text is too long for a record");
    }
    _tVariant record = garbageRecord();
    record.value.wideString = hostUnits(text.data());
    record.length = static_cast<std::uint32_t>(text.size());
    record.tag = TagWideString;
    return record;
}

_tVariant numberRecord(int number) {
    _tVariant record = garbageRecord();
    record.value.int32 = number;
    record.tag = TagInt32;
    return record;
}

Component::Component(AddIn const& library) : addIn_(library) {
    if (addIn_.getClassObject(nullptr, &object_) == 0) throw std::runtime_error("no component");
    object_->Init(static_cast<HostConnection*>(&connection));
    object_->setMemManager(static_cast<HostMemoryManager*>(&memory));
}

Component::~Component() {
    addIn_.destroyObject(&object_);
}

std::optional<bool> Component::compare(std::u16string_view first, std::u16string_view second,
                                       int percent) {
    _tVariant params[] = {textRecord(first), textRecord(second), numberRecord(percent)};
    _tVariant result = garbageRecord();
    connection.reports.clear();  // they would heap up over a long run
    if (!object_->CallAsFunc(kStringCompare, &result, params, std::size(params))) return {};
    return result.value.boolean != 0;
}

std::optional<std::string> Component::search(SearchArguments const& arguments) {
    _tVariant params[] = {textRecord(arguments.text),
                          textRecord(arguments.dictionary),
                          textRecord({&arguments.separator, 1}),
                          numberRecord(arguments.lengthThreshold),
                          numberRecord(arguments.percentShort),
                          numberRecord(arguments.percentLong),
                          textRecord(arguments.exclusions)};
    // A search without a match leaves value and length as they were, so they must be empty before
    // it.
    _tVariant result = garbageRecord();
    result.value.whole = 0;
    result.length = 0;
    connection.reports.clear();
    bool const isDone = object_->CallAsFunc(kStringSearch, &result, params, std::size(params));
    std::string list;
    if (isDone) {
        auto const units = fromHost(result.value.wideString, result.length);
        list.assign(units.begin(), units.end());  // digits and commas
    }
    memory.freeAll();
    if (!isDone) return {};
    return list;
}

std::u16string Component::lastReport() const {
    if (connection.reports.empty()) return u"the add-in failed and reported nothing";
    return connection.reports.back().description;
}

std::vector<unsigned long> parseIndexList(std::string_view list) {
    std::vector<unsigned long> indices;
    char const* const end = list.data() + list.size();
    for (char const* at = list.data(); at < end; ++at) {
        at = std::from_chars(at, end, indices.emplace_back()).ptr;
    }
    return indices;
}

}  // namespace host_client
