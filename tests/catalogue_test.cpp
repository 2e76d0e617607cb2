// What the host finds by name, what a call at fault answers, and what comes of lending too little.
#include <cstring>
#include <map>

#include "host/parameters.h"
#include "tests/test_support.h"

using namespace comparer;

namespace {

using Answer = host_client::Memory::Answer;
using Params = std::vector<_tVariant>;

constexpr auto kBad = u"Input parameters error";
constexpr auto kLong = u"String length must be no longer 1000 characters";
constexpr auto kInternal = u"Internal error. Try to rerun";

class Catalogue : public WithComponent {};

TEST_F(Catalogue, FindsNamesInBothLanguagesAndNothingElse) {
    std::u16string const names[][2] = {{u"StringCompare", u"СравнитьСтроки"},
                                       {u"StringSearch", u"НайтиСтроки"}};
    for (long const index : {0, 1}) {
        for (long const alias : {0, 1}) {
            std::u16string const& name = names[index][alias];
            EXPECT_EQ(component->FindMethod(hostUnits(name.c_str())), index);
            EXPECT_EQ(fromHost(component->GetMethodName(index, alias)), name);
            EXPECT_EQ(component.memory.lastSize, 2 * (name.size() + 1));
        }
    }
    for (auto const* name : {u"stringcompare", u"найтистроки", u"StringCompar", u"StringCompares",
                             u"", static_cast<char16_t const*>(nullptr)}) {
        EXPECT_EQ(component->FindMethod(hostUnits(name)), -1);
        EXPECT_EQ(component->FindProp(hostUnits(name)), name == nullptr || *name == 0 ? 0 : -1);
    }
    component.memory.requests = 0;
    for (long const outside : {std::numeric_limits<long>::min(), -1L, 2L, 1L << 32}) {
        for (long const inside : {0L, 1L}) {
            EXPECT_EQ(component->GetMethodName(outside, inside), nullptr);
            EXPECT_EQ(component->GetMethodName(inside, outside), nullptr);
            EXPECT_EQ(component->GetPropName(0, outside), nullptr);
            EXPECT_EQ(component->GetPropName(outside == 2 ? 1 : outside, inside), nullptr);
        }
        EXPECT_EQ(component->GetNParams(outside), -1);
        EXPECT_FALSE(component->HasRetVal(outside));
    }
    EXPECT_EQ(component.memory.requests, 0U);
}

TEST_F(Catalogue, OnlyTheExclusionsHaveADefault) {
    for (auto const& [method, param] :
         {std::pair{1L, 5L}, {0L, 2L}, {2L, 6L}, {1L, 7L}, {-1L, 6L}}) {
        _tVariant record = host_client::garbageRecord();
        _tVariant expected = record;
        expected.tag = TagEmpty;
        EXPECT_FALSE(component->GetParamDefValue(method, param, &record));
        EXPECT_EQ(std::memcmp(&record, &expected, sizeof record), 0);
    }
}

TEST_F(Catalogue, GoesOnWhenTheHostLendsNoMemory) {
    unsigned short mark = 0;
    unsigned short* name = &mark;

    component.memory.answer = Answer::Refusal;
    EXPECT_EQ(component->GetMethodName(0, 0), nullptr);
    EXPECT_TRUE(component->RegisterExtensionAs(&name));
    EXPECT_EQ(name, &mark);

    component.memory.answer = Answer::EmptyClaim;
    std::unique_ptr<unsigned short const[]> own(component->GetMethodName(1, 1));
    EXPECT_EQ(fromHost(own.get()), u"НайтиСтроки");
    name = nullptr;
    EXPECT_TRUE(component->RegisterExtensionAs(&name));
    own.reset(name);
    EXPECT_EQ(fromHost(name), u"NearTextComparerExtension");

    EXPECT_FALSE(component->setMemManager(nullptr));
    EXPECT_EQ(component->GetMethodName(0, 0), nullptr);
    name = &mark;
    EXPECT_FALSE(component->RegisterExtensionAs(&name));
    EXPECT_EQ(name, &mark);
}

TEST(Locale, OnlyItsOwnNamesTurnReportsRussian) {
    std::u16string const endless(100'000, u'r');
    std::vector<char16_t const*> const russian = {u"ru",  u"ru_ru",   u"ru_RU",
                                                  u"rus", u"rus_rus", u"rus_RUS"};
    std::vector<char16_t const*> const others = {u"RU", u"Ru_RU", u"ru_RU.UTF-8", u"ru-RU",
                                                 u"r",  u"",      nullptr,        endless.c_str()};
    for (auto const& names : {russian, others}) {
        for (auto const* name : names) {
            Component component(addIn());
            component->SetLocale(hostUnits(name));
            component->SetLocale(hostUnits(u"en_US"));
            component.compare(u"", u"", 101);
            EXPECT_EQ(component.connection.reports.at(0).description,
                      names == russian ? u"Ошибка входных параметров" : kBad);
        }
    }
}

TEST(Library, AnswersBeforeAnyComponentExists) {
    EXPECT_EQ(addIn().setPlatformCapabilities(0), 1);
    EXPECT_EQ(fromHost(addIn().getClassNames()), u"NearTextComparer");
}

class Calls : public WithComponent {
protected:
    // The number of records tells the method.
    bool call(Params params) {
        component.connection.reports.clear();
        result = host_client::garbageRecord();
        long const count = std::ssize(params);
        return component->CallAsFunc(count == 3 ? 0 : 1, &result, params.data(), count);
    }

    // Expects this report alone, and that nothing is written but, at times, a tag.
    void expectFailure(Params const& params, std::u16string_view description,
                       std::uint16_t tag = 0xA5A5) {
        EXPECT_FALSE(call(params));
        _tVariant expected = host_client::garbageRecord();
        expected.tag = tag;
        EXPECT_EQ(std::memcmp(&result, &expected, sizeof result), 0);
        ASSERT_EQ(component.connection.reports.size(), 1U);
        EXPECT_EQ(component.connection.reports[0].description, description);
    }

    std::u16string longText = std::u16string(1001, u'a');
    _tVariant tooLong = textRecord(longText);
    _tVariant atLimit = textRecord({longText.data(), 1000});
    _tVariant full = numberRecord(100);
    Params comparison = {textRecord(u"a"), textRecord(u"a"), full};
    Params search = {
        textRecord(u"ab"), textRecord(u"ab;ab"), textRecord(u";"), numberRecord(10), full, full,
        textRecord(u"")};
    _tVariant result{};
};

TEST_F(Calls, FaultsAreReportedInTheirOrder) {
    for (auto params : {comparison, search}) {
        for (auto& record : params) {
            auto const tag = record.tag;
            for (unsigned const wrong : {0U, 5U, 11U, 25U - tag, 65535U}) {
                record.tag = static_cast<std::uint16_t>(wrong);
                expectFailure(params, kBad);
            }
            record.tag = tag;
        }
    }
    auto const over = numberRecord(101);
    auto const under = numberRecord(-1);
    auto const none = textRecord(u"");
    std::tuple<Params, std::map<std::size_t, _tVariant>, char16_t const*> const cases[] = {
        {comparison, {{0, tooLong}, {2, over}}, kBad},
        {comparison, {{2, under}}, kBad},
        {comparison, {{0, tooLong}, {1, atLimit}}, kLong},
        {comparison, {{0, atLimit}, {1, tooLong}}, kLong},
        {search, {{4, over}}, kBad},
        {search, {{4, under}}, kBad},
        {search, {{2, none}}, kBad},
        {search, {{2, textRecord(u";;")}, {0, tooLong}}, kBad},
        {search, {{0, tooLong}, {1, none}}, kLong}};
    for (auto [params, replaced, description] : cases) {
        for (auto const& [index, record] : replaced)
            params[index] = record;
        expectFailure(params, description);
    }
    EXPECT_TRUE(call({atLimit, atLimit, full}));
    // Nothing to search among is an empty text, written out.
    EXPECT_TRUE(call({atLimit, none, search[2], full, full, full, none}));
    auto const written = textRecord({});
    EXPECT_EQ(std::memcmp(&result, &written, sizeof result), 0);
}

// The name tables and those of tags are held equal where they are compiled. What else a method or a
// parameter more would need is named here.
TEST_F(Calls, EveryMethodIsCarriedOutWithTheTypesOfItsTable) {
    ASSERT_EQ(component->GetNMethods(), std::ssize(kMethodTags));
    for (long method = 0; method < std::ssize(kMethodTags); ++method) {
        auto const tags = kMethodTags[method];
        EXPECT_EQ(component->GetNParams(method), std::ssize(tags));
        Params params;
        for (VariantTag const tag : tags)
            params.push_back(tag == TagInt32 ? full : textRecord(u"a"));
        EXPECT_TRUE(component->CallAsFunc(method, &result, params.data(), std::ssize(params)))
            << "MethodIndex and CallAsFunc have a line for each method; is it there?";
    }
}

TEST_F(Calls, WithoutABlockASearchIsAnInternalError) {
    for (auto const answer : {Answer::Refusal, Answer::EmptyClaim}) {
        component.memory.answer = answer;
        expectFailure(search, kInternal, TagWideString);
    }
    component->setMemManager(nullptr);
    expectFailure(search, kInternal, TagWideString);
    component->setMemManager(static_cast<HostMemoryManager*>(&component.memory));
    component.memory.answer = Answer::Block;
    EXPECT_EQ(component.search({u"ab", u"ab;ab", u';', 9, 100, 100, u""}), "0,1");
}

TEST_F(Calls, ThatAreNoCallsAreSilent) {
    EXPECT_TRUE(call(comparison));
    auto* const params = comparison.data();
    result = host_client::garbageRecord();
    EXPECT_FALSE(component->CallAsFunc(0, &result, nullptr, 3));
    EXPECT_FALSE(component->CallAsFunc(0, &result, params, 0));
    EXPECT_FALSE(component->CallAsFunc(0, nullptr, params, 3));
    for (long const method : {-1L, 2L, 1L << 32})
        EXPECT_FALSE(component->CallAsFunc(method, &result, params, 3));
    EXPECT_EQ(result.tag, 0xA5A5);
    EXPECT_TRUE(component->CallAsFunc(0, &result, params, 1));  // the count says no more than that
    component->Done();
    EXPECT_FALSE(component->Init(nullptr));
    EXPECT_EQ(component.compare(u"a", u"b", 101), std::nullopt);
    EXPECT_TRUE(component.connection.reports.empty());
    EXPECT_TRUE(component->Init(static_cast<HostConnection*>(&component.connection)));
    expectFailure({full, full, full}, kBad);
}

}  // namespace
