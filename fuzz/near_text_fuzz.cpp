// Bytes to records of any tag, length, percentage and text, given to both methods through the
// host's entry. Where the records are without fault the answer must be the plain computation's;
// where they are not, there is one report and nothing is written.
#include <fuzzer/FuzzedDataProvider.h>

#include <cstring>
#include <memory>
#include <vector>

#include "stand_in_host/explanation.h"
#include "stand_in_host/text_codec.h"

extern "C" std::intptr_t GetClassObject(void const*, IComponentBase** slot);
extern "C" long DestroyObject(IComponentBase** slot);

namespace {

using stand_in_host::fromHost;

void require(bool isTrue) {
    if (!isTrue) __builtin_trap();
}

// A record and its text, in a block of exactly its size: one unit read too far is one too many.
struct Record {
    _tVariant variant = stand_in_host::garbageRecord();
    std::unique_ptr<char16_t[]> block;

    std::u16string_view text() const { return {block.get(), variant.length}; }
};

Record makeText(FuzzedDataProvider& data, std::size_t longest) {
    Record record;
    std::size_t const length = data.ConsumeIntegralInRange<std::size_t>(0, longest);
    std::u16string text;
    while (text.size() < length && data.remaining_bytes() > 0) {
        // Mostly a few letters and separators, so that words repeat; at times any unit.
        constexpr char16_t kUnits[] = u"aab \t\n\r;,\0\u0431\u0461\xD83D";
        auto const byte = data.ConsumeIntegral<unsigned char>();
        text +=
            byte < 250 ? kUnits[byte % (std::size(kUnits) - 1)] : data.ConsumeIntegral<char16_t>();
    }
    if (!text.empty() || data.ConsumeBool()) record.block.reset(new char16_t[text.size()]);
    std::copy(text.begin(), text.end(), record.block.get());
    record.variant.value.wideString = stand_in_host::hostUnits(record.block.get());
    record.variant.length = static_cast<std::uint32_t>(text.size());
    record.variant.tag = data.ConsumeProbability<float>() < 0.98F
                             ? TagWideString
                             : data.ConsumeIntegral<std::uint16_t>();
    return record;
}

Record makeNumber(FuzzedDataProvider& data) {
    Record record;
    record.variant.value.int32 = data.ConsumeProbability<float>() < 0.9F
                                     ? data.ConsumeIntegralInRange<int>(0, 100)
                                     : data.ConsumeIntegral<int>();
    record.variant.tag =
        data.ConsumeProbability<float>() < 0.98F ? TagInt32 : data.ConsumeIntegral<std::uint16_t>();
    return record;
}

struct Call {
    Call() {
        GetClassObject(nullptr, &component);
        component->Init(static_cast<HostConnection*>(&connection));
        component->setMemManager(static_cast<HostMemoryManager*>(&memory));
    }
    ~Call() { DestroyObject(&component); }

    bool run(long method, std::vector<Record> const& records) {
        std::vector<_tVariant> params;
        for (Record const& record : records)
            params.push_back(record.variant);
        return component->CallAsFunc(method, &result, params.data(), std::ssize(params));
    }

    void requireReportAlone() {
        _tVariant const untouched = stand_in_host::garbageRecord();
        require(connection.reports.size() == 1);
        require(std::memcmp(&result, &untouched, sizeof result) == 0);
    }

    stand_in_host::Connection connection;
    stand_in_host::Memory memory;
    _tVariant result = stand_in_host::garbageRecord();
    IComponentBase* component = nullptr;
};

void fuzzCompare(FuzzedDataProvider& data) {
    std::vector<Record> in;
    in.push_back(makeNumber(data));
    for (int i = 0; i < 2; ++i)
        in.insert(in.begin() + i, makeText(data, 1010));
    bool const isGood = in[0].variant.tag == TagWideString && in[1].variant.tag == TagWideString &&
                        in[2].variant.tag == TagInt32 && in[2].variant.value.uint32 <= 100 &&
                        in[0].variant.length <= 1000 && in[1].variant.length <= 1000;
    Call call;
    require(call.run(0, in) == isGood);
    if (!isGood) return call.requireReportAlone();
    auto const plain =
        stand_in_host::explainCompare(in[0].text(), in[1].text(), in[2].variant.value.uint32);
    require(call.result.tag == TagBool && call.result.value.boolean == (plain.isAlike ? 1 : 0));
}

void fuzzSearch(FuzzedDataProvider& data) {
    std::vector<Record> in(7);
    for (std::size_t const i : {3U, 4U, 5U})
        in[i] = makeNumber(data);
    in[2] = makeText(data, data.ConsumeProbability<float>() < 0.98F ? 1 : 3);
    in[0] = makeText(data, data.ConsumeBool() ? 40 : 1010);
    in[6] = makeText(data, data.ConsumeBool() ? 0 : 30);
    in[1] = makeText(data, 3000);
    bool isGood = in[2].variant.length == 1 && in[4].variant.value.uint32 <= 100 &&
                  in[0].variant.length <= 1000;
    for (std::size_t const i : {0U, 1U, 2U, 6U})
        isGood = isGood && in[i].variant.tag == TagWideString;
    for (std::size_t const i : {3U, 4U, 5U})
        isGood = isGood && in[i].variant.tag == TagInt32;
    Call call;
    require(call.run(1, in) == isGood);
    if (!isGood) return call.requireReportAlone();
    auto const plain = stand_in_host::explainSearch(
        {in[0].text(), in[1].text(), in[2].text()[0], in[3].variant.value.int32,
         in[4].variant.value.int32, in[5].variant.value.int32, in[6].text()});
    std::u16string expected;
    for (std::size_t i = 0; i < plain.size(); ++i) {
        if (!plain[i].isAlike) continue;
        if (!expected.empty()) expected += u',';
        expected += stand_in_host::toUnits(std::to_string(i));
    }
    require(call.result.tag == TagWideString);
    if (!expected.empty()) {
        require(call.memory.lastSize == 2 * (expected.size() + 1));
        require(fromHost(call.result.value.wideString, call.result.length) == expected);
        require(call.result.value.wideString[expected.size()] == 0);
    } else {
        require(call.memory.requests == 0);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* bytes, std::size_t size) {
    FuzzedDataProvider data(bytes, size);
    data.ConsumeBool() ? fuzzCompare(data) : fuzzSearch(data);
    return 0;
}
