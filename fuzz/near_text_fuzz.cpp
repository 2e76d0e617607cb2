// Bytes to records of any tag, length, percentage and text, given to both methods through the
// host's entry. Where the records are without fault the answer must be the plain computation's;
// where they are not, there is one report and nothing is written.
#include <fuzzer/FuzzedDataProvider.h>

#include <cstring>
#include <memory>
#include <vector>

#include "host_client/component.h"
#include "host_client/lent_objects.h"
#include "near_text/input/text_codec.h"
#include "reference/explanation.h"

extern "C" std::intptr_t GetClassObject(void const*, IComponentBase** slot);

namespace {

void require(bool isTrue) {
    if (!isTrue) __builtin_trap();
}

// A record's index, and what to make it: a text of up to so many units, or a number.
using Wish = std::pair<std::size_t, std::size_t>;
constexpr std::size_t kNumber = ~std::size_t{0};

struct Call {
    // Makes the records in the order of the wishes, nearly always of the type that each must be.
    Call(FuzzedDataProvider& data, std::vector<Wish> const& wishes)
        : params(wishes.size(), host_client::garbageRecord()), blocks(wishes.size()) {
        for (auto const& [index, longest] : wishes) {
            _tVariant& record = params[index];
            if (longest != kNumber) {
                makeText(data, longest, record, blocks[index]);
            } else if (data.ConsumeProbability<float>() < 0.9F) {
                record.value.int32 = data.ConsumeIntegralInRange<int>(0, 100);
            } else {
                record.value.int32 = data.ConsumeIntegral<int>();
            }
            std::uint16_t const tag = longest == kNumber ? TagInt32 : TagWideString;
            bool const isKept = data.ConsumeProbability<float>() < 0.98F;
            record.tag = isKept ? tag : data.ConsumeIntegral<std::uint16_t>();
            isTyped = isTyped && record.tag == tag;
        }
        // One component for all calls: nothing of one may show in the next.
        if (component == nullptr) GetClassObject(nullptr, &component);
        component->Init(static_cast<HostConnection*>(&connection));
        component->setMemManager(static_cast<HostMemoryManager*>(&memory));
    }

    // Into a block of exactly its size: one unit read too far is one too many.
    static void makeText(FuzzedDataProvider& data, std::size_t longest, _tVariant& record,
                         std::unique_ptr<char16_t[]>& block) {
        std::size_t const length = data.ConsumeIntegralInRange<std::size_t>(0, longest);
        std::u16string text;
        while (text.size() < length && data.remaining_bytes() > 0) {
            // Mostly a few letters and separators, so that words repeat; at times any unit.
            constexpr char16_t kUnits[] = u"aab \t\n\r;,\0\u0431\u0461\xD83D";
            auto const byte = data.ConsumeIntegral<unsigned char>();
            text += byte < 250 ? kUnits[byte % (std::size(kUnits) - 1)]
                               : data.ConsumeIntegral<char16_t>();
        }
        if (!text.empty() || data.ConsumeBool()) block.reset(new char16_t[text.size()]);
        std::copy(text.begin(), text.end(), block.get());
        record.value.wideString = host_client::hostUnits(block.get());
        record.length = static_cast<std::uint32_t>(text.size());
    }

    std::u16string_view text(std::size_t index) const {
        return {blocks[index].get(), params[index].length};
    }
    int number(std::size_t index) const { return params[index].value.int32; }

    // False when a report was due, and came alone.
    bool isAnswered(long method, bool isInRange) {
        _tVariant const untouched = result;
        bool const isDone =
            component->CallAsFunc(method, &result, params.data(), std::ssize(params));
        require(isDone == (isTyped && isInRange));
        require(connection.reports.size() == (isDone ? 0 : 1));
        require(isDone || std::memcmp(&result, &untouched, sizeof result) == 0);
        return isDone;
    }

    std::vector<_tVariant> params;
    std::vector<std::unique_ptr<char16_t[]>> blocks;
    bool isTyped = true;
    host_client::Connection connection;
    host_client::Memory memory;
    static inline IComponentBase* component = nullptr;
    _tVariant result = host_client::garbageRecord();
};

void fuzzCompare(FuzzedDataProvider& data) {
    Call call(data, {{2, kNumber}, {1, 1010}, {0, 1010}});
    auto const percent = call.params[2].value.uint32;
    bool const isShort = std::max(call.text(0).size(), call.text(1).size()) <= 1000;
    if (!call.isAnswered(0, percent <= 100 && isShort)) return;
    auto const plain = reference::explainCompare(call.text(0), call.text(1), percent);
    require(call.result.tag == TagBool && call.result.value.boolean == (plain.isAlike ? 1 : 0));
}

void fuzzSearch(FuzzedDataProvider& data) {
    std::size_t const separators = data.ConsumeProbability<float>() < 0.98F ? 1 : 3;
    std::size_t const longest = data.ConsumeBool() ? 40 : 1010;
    std::size_t const exclusions = data.ConsumeBool() ? 0 : 30;
    Call call(data, {{3, kNumber},
                     {4, kNumber},
                     {5, kNumber},
                     {2, separators},
                     {0, longest},
                     {6, exclusions},
                     {1, 3000}});
    bool const isInRange = call.text(2).size() == 1 && call.params[4].value.uint32 <= 100 &&
                           call.text(0).size() <= 1000;
    if (!call.isAnswered(1, isInRange)) return;
    std::u16string expected;
    auto const plain =
        reference::explainSearch({call.text(0), call.text(1), call.text(2)[0], call.number(3),
                                  call.number(4), call.number(5), call.text(6)});
    for (std::size_t i = 0; i < plain.size(); ++i) {
        if (plain[i].isAlike) expected += near_text::toUnits(std::to_string(i)) + u',';
    }
    require(call.result.tag == TagWideString);
    require(call.memory.requests == (expected.empty() ? 0 : 1));
    if (expected.empty()) return;
    require(call.memory.lastSize == 2 * expected.size());
    expected.back() = 0;
    require(call.result.length == expected.size() - 1);
    require(host_client::fromHost(call.result.value.wideString, expected.size()) == expected);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* bytes, std::size_t size) {
    FuzzedDataProvider data(bytes, size);
    data.ConsumeBool() ? fuzzCompare(data) : fuzzSearch(data);
    return 0;
}
