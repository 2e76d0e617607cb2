// What the host finds by name, and what it gets when it lends too little.
#include <thread>

#include "tests/test_support.h"

namespace {

using stand_in_host::Component;
using stand_in_host::fromHost;
using stand_in_host::hostUnits;
using stand_in_host::Memory;

TEST(Catalogue, FindsMethodsInBothLanguagesAndNothingElse) {
    Component component(addIn());
    struct {
        char16_t const* name;
        long index;
    } const cases[] = {{u"StringCompare", 0}, {u"СравнитьСтроки", 0},  {u"StringSearch", 1},
                       {u"НайтиСтроки", 1},   {u"stringcompare", -1},  {u"найтистроки", -1},
                       {u"StringCompar", -1}, {u"StringCompares", -1}, {u"", -1},
                       {nullptr, -1}};
    for (auto const& [name, index] : cases) {
        EXPECT_EQ(component->FindMethod(hostUnits(name)), index);
        bool const isEmpty = name == nullptr || *name == 0;
        EXPECT_EQ(component->FindProp(hostUnits(name)), isEmpty ? 0 : -1);
    }
}

TEST(Catalogue, HandsOutNamesInBlocksOfTheirSize) {
    Component component(addIn());
    struct {
        long index, alias;
        char16_t const* name;
    } const cases[] = {{0, 0, u"StringCompare"},
                       {1, 0, u"StringSearch"},
                       {0, 1, u"СравнитьСтроки"},
                       {1, 1, u"НайтиСтроки"}};
    for (auto const& [index, alias, name] : cases) {
        EXPECT_EQ(fromHost(component->GetMethodName(index, alias)), name);
        EXPECT_EQ(component.memory.lastSize, 2 * (std::u16string_view(name).size() + 1));
    }
    component.memory.requests = 0;
    constexpr long kEnds[] = {std::numeric_limits<long>::min(), -1, 2,
                              std::numeric_limits<long>::max()};
    for (long const outside : kEnds) {
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

TEST(Catalogue, OnlyTheExclusionsHaveADefault) {
    Component component(addIn());
    for (auto const& [method, param] :
         {std::pair{1L, 5L}, {0L, 2L}, {2L, 6L}, {1L, 7L}, {-1L, 6L}}) {
        _tVariant record = stand_in_host::numberRecord(7);
        record.length = 5;
        EXPECT_FALSE(component->GetParamDefValue(method, param, &record));
        EXPECT_EQ(record.tag, TagEmpty);
        EXPECT_EQ(record.value.int32, 7);
        EXPECT_EQ(record.length, 5U);
    }
}

TEST(Catalogue, GoesOnWhenTheHostLendsNoMemory) {
    Component component(addIn());
    unsigned short mark = 0;
    unsigned short* name = &mark;

    component.memory.answer = Memory::Answer::Refusal;
    EXPECT_EQ(component->GetMethodName(0, 0), nullptr);
    EXPECT_TRUE(component->RegisterExtensionAs(&name));
    EXPECT_EQ(name, &mark);

    component.memory.answer = Memory::Answer::EmptyClaim;
    std::unique_ptr<unsigned short const[]> own(component->GetMethodName(1, 1));
    EXPECT_EQ(fromHost(own.get()), u"НайтиСтроки");
    name = nullptr;
    EXPECT_TRUE(component->RegisterExtensionAs(&name));
    own.reset(name);
    EXPECT_EQ(fromHost(name), u"NearTextComparerExtension");

    EXPECT_FALSE(component->setMemManager(nullptr));
    EXPECT_EQ(component->GetMethodName(0, 0), nullptr);
    EXPECT_EQ(component->GetPropName(0, 0), nullptr);
    name = &mark;
    EXPECT_FALSE(component->RegisterExtensionAs(&name));
    EXPECT_EQ(name, &mark);
}

TEST(Catalogue, OnlyItsOwnLocaleNamesTurnReportsRussian) {
    auto const speaksRussian = [](char16_t const* locale) {
        Component component(addIn());
        component->SetLocale(hostUnits(locale));
        component->SetLocale(hostUnits(u"en_US"));
        component.compare(u"", u"", 101);
        return component.connection.reports.at(0).description == u"Ошибка входных параметров";
    };
    for (auto const* name : {u"ru", u"ru_ru", u"ru_RU", u"rus", u"rus_rus", u"rus_RUS"}) {
        EXPECT_TRUE(speaksRussian(name));
    }
    std::u16string const endless(100'000, u'r');
    for (auto const* name : {u"RU", u"Ru_RU", u"ru_RU.UTF-8", u"ru-RU", u"r", u"русский", u"",
                             endless.c_str(), static_cast<char16_t const*>(nullptr)}) {
        EXPECT_FALSE(speaksRussian(name));
    }
}

TEST(Library, AnswersBeforeAnyComponentExists) {
    EXPECT_EQ(addIn().setPlatformCapabilities(0), 1);
    EXPECT_EQ(fromHost(addIn().getClassNames()), u"NearTextComparer");
    EXPECT_EQ(addIn().getClassNames(), addIn().getClassNames());
}

// Two components on two threads, both methods, an error among them. The process that runs this
// under the thread sanitizer proves that they share nothing.
TEST(Components, OnDifferentThreadsAreIndependent) {
    auto const work = [](char16_t const* locale) {
        Component component(addIn());
        component->SetLocale(hostUnits(locale));
        for (int round = 0; round < 300; ++round) {
            ASSERT_EQ(
                component.search({u"red ball", u"ball red;blue;red bal", u';', 5, 90, 85, u"x"}),
                "0,2");
            ASSERT_EQ(component.compare(u"red ball", u"bal red", 85), true);
            ASSERT_FALSE(component.compare(u"", u"", -1));
        }
    };
    std::thread other(work, u"ru");
    work(u"en");
    other.join();
}

}  // namespace
