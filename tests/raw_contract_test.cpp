// The add-in through raw tables of operations and raw bytes, as a host finds it: no class of ours
// has a say here.
#include <array>
#include <cstring>

#include "tests/test_support.h"

namespace {

// Places of the operations in the tables of the three views.
constexpr std::size_t kInit = 2, kSetMemManager = 3, kGetInfo = 4, kDone = 5;
constexpr std::size_t kRegister = 2, kNProps = 3, kFindProp = 4, kPropName = 5, kGetProp = 6,
                      kSetProp = 7, kReadable = 8, kWritable = 9, kNMethods = 10, kFindMethod = 11,
                      kMethodName = 12, kNParams = 13, kDefault = 14, kHasRet = 15, kProc = 16,
                      kFunc = 17;
constexpr std::size_t kSetLocale = 2;

template <class Function>
Function* symbol(char const* name) {
    return reinterpret_cast<Function*>(addIn().symbol(name));
}

// Calls operation `slot` of the view that is `view` words into the object.
template <class Result, class... Arguments>
Result callSlot(void* object, std::size_t view, std::size_t slot, Arguments... arguments) {
    void* self = static_cast<void**>(object) + view;
    auto* const* const table = *static_cast<void* const**>(self);
    return reinterpret_cast<Result (*)(void*, Arguments...)>(table[slot])(self, arguments...);
}

// The lent objects as bare tables, of which only the third entry may be called.
struct RawHost {
    void* connectionTable[3] = {nullptr, nullptr, reinterpret_cast<void*>(&report)};
    void* managerTable[3] = {nullptr, nullptr, reinterpret_cast<void*>(&allocate)};
    void** connection = connectionTable;
    void** manager = managerTable;

    static inline std::u16string description;
    alignas(8) static inline std::array<unsigned char, 256> block;
    static inline unsigned long size = 0;

    static bool report(void*, unsigned short code, char16_t const* source, char16_t const* text,
                       long scode) {
        EXPECT_EQ(code, 1006);
        EXPECT_EQ(scode, 1006);
        EXPECT_EQ(std::u16string(source), u"NearTextComparerExtension");
        description = text;
        return false;
    }
    static bool allocate(void*, void** out, unsigned long bytes) {
        size = bytes;
        *out = block.data();
        return true;
    }
};

struct RawRecord {
    alignas(8) std::array<unsigned char, 64> bytes;

    RawRecord() { bytes.fill(0xA5); }
    template <class Field>
    RawRecord with(std::size_t offset, Field field) const {
        RawRecord record = *this;
        std::memcpy(record.bytes.data() + offset, &field, sizeof field);
        return record;
    }
    RawRecord tagged(std::uint16_t tag) const { return with(60, tag); }
};

RawRecord rawText(std::u16string_view text) {
    auto const length = static_cast<std::uint32_t>(text.size());
    return RawRecord().with(0, text.data()).with(8, length).tagged(22);
}

RawRecord rawNumber(std::int32_t number) {
    return RawRecord().with(0, number).tagged(3);
}

class RawContract : public testing::Test {
protected:
    RawContract() {
        auto* const make = symbol<std::intptr_t(void*, void**)>("GetClassObject");
        std::intptr_t const made = make(nullptr, &object);
        EXPECT_EQ(made, reinterpret_cast<std::intptr_t>(object));
        EXPECT_EQ(make(nullptr, &object), 0);  // the slot is taken
        EXPECT_TRUE(callSlot<bool>(object, 0, kInit, static_cast<void*>(&host.connection)));
        EXPECT_TRUE(callSlot<bool>(object, 0, kSetMemManager, static_cast<void*>(&host.manager)));
    }
    ~RawContract() override {
        auto* const destroy = symbol<long(void**)>("DestroyObject");
        EXPECT_EQ(destroy(&object), 0);
        EXPECT_EQ(object, nullptr);
        EXPECT_EQ(destroy(&object), -1);
    }

    RawHost host;
    void* object = nullptr;
};

TEST_F(RawContract, EveryOperationStandsAtItsPlace) {
    EXPECT_EQ(callSlot<int>(object, 0, kGetInfo), 2004);
    callSlot<void>(object, 0, kDone);
    EXPECT_EQ(callSlot<long>(object, 1, kNProps), 1);
    EXPECT_EQ(callSlot<long>(object, 1, kFindProp, static_cast<char16_t const*>(nullptr)), 0);
    EXPECT_NE(callSlot<char16_t*>(object, 1, kPropName, 0L, 0L), nullptr);
    EXPECT_EQ(RawHost::size, 2U);
    RawRecord untouched;
    EXPECT_FALSE(callSlot<bool>(object, 1, kGetProp, 0L, &untouched));
    EXPECT_FALSE(callSlot<bool>(object, 1, kSetProp, 0L, &untouched));
    EXPECT_EQ(untouched.bytes, RawRecord().bytes);
    EXPECT_FALSE(callSlot<bool>(object, 1, kReadable, 0L));
    EXPECT_FALSE(callSlot<bool>(object, 1, kWritable, 0L));
    EXPECT_EQ(callSlot<long>(object, 1, kNMethods), 2);
    EXPECT_EQ(callSlot<long>(object, 1, kFindMethod, u"НайтиСтроки"), 1);
    EXPECT_STREQ(reinterpret_cast<char const*>(callSlot<char16_t*>(object, 1, kMethodName, 0L, 0L)),
                 "S");
    EXPECT_EQ(RawHost::size, 28U);
    EXPECT_EQ(callSlot<long>(object, 1, kNParams, 1L), 7);
    EXPECT_TRUE(callSlot<bool>(object, 1, kHasRet, 1L));
    RawRecord record;
    EXPECT_TRUE(callSlot<bool>(object, 1, kDefault, 1L, 6L, &record));
    EXPECT_EQ(record.bytes, rawText({}).bytes);
    EXPECT_FALSE(callSlot<bool>(object, 1, kProc, 0L, &record, 3L));
    char16_t* name = nullptr;
    EXPECT_TRUE(callSlot<bool>(object, 1, kRegister, &name));
    EXPECT_EQ(std::u16string(name), u"NearTextComparerExtension");
    EXPECT_EQ(RawHost::size, 52U);
}

TEST_F(RawContract, AComparisonWritesOneByteAndTheTag) {
    RawRecord params[] = {rawText(u"alpha beta"), rawText(u"beta alpha"), rawNumber(100)};
    RawRecord result;
    EXPECT_TRUE(callSlot<bool>(object, 1, kFunc, 0L, &result, params, 3L));
    EXPECT_EQ(result.bytes, RawRecord().with(0, std::uint8_t{1}).tagged(11).bytes);
}

TEST_F(RawContract, ASearchWritesPointerLengthAndTag) {
    RawRecord params[] = {rawText(u"red ball"), rawText(u"ball red;blue;red ball"),
                          rawText(u";"),        rawNumber(10),
                          rawNumber(100),       rawNumber(100),
                          rawText({})};
    RawRecord result;
    EXPECT_TRUE(callSlot<bool>(object, 1, kFunc, 1L, &result, params, 7L));
    auto const* const text = reinterpret_cast<char16_t const*>(RawHost::block.data());
    EXPECT_EQ(result.bytes, rawText({text, 3}).bytes);
    EXPECT_EQ(std::memcmp(text, u"0,2", 8), 0);
    EXPECT_EQ(RawHost::size, 8U);

    // Nothing found: the tag and no more.
    params[0] = rawText(u"green");
    RawRecord nothing;
    EXPECT_TRUE(callSlot<bool>(object, 1, kFunc, 1L, &nothing, params, 7L));
    EXPECT_EQ(nothing.bytes, RawRecord().tagged(22).bytes);
}

TEST_F(RawContract, AFaultIsReportedInTheLanguageThatWasSet) {
    RawRecord params[] = {rawText(u"a"), rawText(u"b"), rawNumber(-1)};
    RawRecord result;
    EXPECT_FALSE(callSlot<bool>(object, 1, kFunc, 0L, &result, params, 3L));
    EXPECT_EQ(RawHost::description, u"Input parameters error");
    callSlot<void>(object, 2, kSetLocale, u"ru_RU");
    callSlot<void>(object, 2, kSetLocale, u"en");
    EXPECT_FALSE(callSlot<bool>(object, 1, kFunc, 0L, &result, params, 3L));
    EXPECT_EQ(RawHost::description, u"Ошибка входных параметров");
    EXPECT_EQ(result.bytes, RawRecord().bytes);
}

// Exported members that no method of the host's reaches, by the names that a linker gives them.
TEST(ExportedOperations, AnswerThroughTheDynamicSymbols) {
    using Size = unsigned long;
    using Texts = std::vector<Utf16String>;
    std::vector<Size> distance(1001 * 1001 + 1, 77);
    symbol<void(void*)>("_ZN26DamerauLevenshteinDistanceC1Ev")(distance.data());
    EXPECT_EQ(distance[1000 * 1001], 1000U);
    EXPECT_EQ(distance[1000], 1000U);
    EXPECT_EQ(distance[1002], 77U);
    EXPECT_EQ(distance.back(), 77U);

    auto* const compare =
        symbol<bool(void*, char16_t const*, Size, Size, char16_t const*, Size, Size, Size)>(
            "_ZN26DamerauLevenshteinDistance14compareStringsEPKtmmS1_mmm");
    EXPECT_TRUE(compare(distance.data(), u"abcd", 4, 4, u"badc", 4, 4, 50));
    EXPECT_FALSE(compare(distance.data(), u"abcd", 4, 4, u"badc", 4, 4, 51));

    std::vector<Size> found = {9};
    symbol<void(void*, std::vector<Size>&, char16_t const*, Size, Texts const&, Size, Size, Size,
                Texts const&)>(
        "_ZN26DamerauLevenshteinDistance15serchDuplicatesERSt6vectorImSaImEEPKtmRKS0"
        "_INSt7__cxx1112basic_stringItSt11char_traitsItESaItEEESaISB_EEmmmSF_")(
        distance.data(), found, u"abcd", 4,
        {units(u"abcx"), units(u"abcdefgh"), units(u"abcdxyz"), units(u"abyx")}, 4, 70, 40, {});
    EXPECT_EQ(found, (std::vector<Size>{9, 0, 1, 2}));

    Texts parts;
    for (auto const* text : {u";a;;b;", u";", u"", u"abc"})
        symbol<void(void*, char16_t const*, char16_t, Texts&)>(
            "_ZN16NearTextComparer5splitEPKttRSt6vectorINSt7__cxx1112basic_stringItSt11char_"
            "traitsItESaItEEESaIS8_EE")(nullptr, text, u';', parts);
    EXPECT_EQ(parts, (Texts{units(u"a"), units(u"b"), units(u"abc")}));
}

TEST(Unloading, TakesTheLibraryOutOfTheProcess) {
    // A copy under another name, since other tests hold the library itself.
    auto const copy = fileOf("libUnloading.so", contentOf(NEAR_TEXT_LIBRARY));
    auto const isMapped = [&] {
        return contentOf("/proc/self/maps").find(copy) != std::string::npos;
    };
    for (int round = 0; round < 100; ++round) {
        {
            host_client::AddIn library(copy);
            Component component(library);
            EXPECT_EQ(component.search({u"ab", u"ab;b", u';', 9, 0, 0, {}}), "0,1");
            EXPECT_FALSE(component.compare(u"a", u"b", 101));
            EXPECT_EQ(component.connection.reports.size(), 1U);
            EXPECT_TRUE(isMapped());
        }
        ASSERT_FALSE(isMapped());
    }
}

}  // namespace
