// Every allocation of a call fails once. This program replaces the global allocation functions,
// which the loaded library then uses too: it lets the n-th allocation of a call fail, for every n,
// and counts bytes.
#include <malloc.h>

#include <cstdlib>
#include <functional>
#include <new>

#include "tests/random_text.h"
#include "tests/test_support.h"

namespace {

long failAt = -1;  // how many allocations are still to succeed before one fails; below 0 none does
long liveBlocks = 0;
unsigned long allocations = 0;
unsigned long liveBytes = 0;
unsigned long peakBytes = 0;

void release(void* block) {
    if (block != nullptr) --liveBlocks;
    liveBytes -= malloc_usable_size(block);
    std::free(block);
}

}  // namespace

void* operator new(std::size_t size) {
    void* const block = failAt >= 0 && failAt-- == 0 ? nullptr : std::malloc(size);
    if (block == nullptr) throw std::bad_alloc();
    ++liveBlocks;
    ++allocations;
    liveBytes += malloc_usable_size(block);
    peakBytes = std::max(peakBytes, liveBytes);
    return block;
}
void* operator new[](std::size_t size) {
    return operator new(size);
}
// The standard library's own would not fit the releases below.
void* operator new(std::size_t size, std::nothrow_t const&) noexcept {
    try {
        return operator new(size);
    } catch (std::bad_alloc const&) {
        return nullptr;
    }
}
void operator delete(void* block) noexcept {
    release(block);
}
void operator delete[](void* block) noexcept {
    release(block);
}
void operator delete(void* block, std::size_t) noexcept {
    release(block);
}
void operator delete[](void* block, std::size_t) noexcept {
    release(block);
}

namespace {

// Lends one block and makes none.
struct FixedMemory final : HostMemoryManager {
    void notCalled0() override { std::abort(); }
    void notCalled1() override { std::abort(); }
    bool allocate(void** out, unsigned long size) override {
        *out = size <= sizeof block ? block : nullptr;
        return *out != nullptr;
    }

    unsigned short block[1 << 14];
};

// Lets the n-th allocation of `call` fail. False when there are not so many.
template <class Call>
bool failNth(long n, Call const& call) {
    failAt = n;
    try {
        call();
    } catch (std::bad_alloc const&) {
        failAt = -1;
    }
    bool const hasFailed = failAt < 0;
    failAt = -1;
    return hasFailed;
}

class Allocations : public testing::Test {
protected:
    Allocations() {
        addIn();  // loaded before anything is counted
        for (int i = 0; i < 1000; ++i)
            dictionary += u"z;";
        for (int i = 0; i < 50; ++i)
            dictionary += u"red ball number;";
    }

    // Entries beyond the thousandth match: their numbers need memory of their own.
    bool search(Component& component) const {
        auto const list =
            component.search({u"number red ballx", dictionary, u';', 90, 85, 85, u"ltd;inc co"});
        return list && list->size() == 50 * 5 - 1 && list->starts_with("1000,1001,") &&
               list->ends_with(",1049");
    }

    // Lets each allocation of `call` fail in turn, each time on a new component. The call either
    // throws, or it was done already and answers rightly; the component then answers again, and
    // when it is gone no block is left behind.
    void expectSafe(char const* what, std::function<bool(Component&)> const& call) {
        bool hasFailed = true;
        for (long n = 0; hasFailed; ++n) {
            long const before = liveBlocks;
            {
                Component component(addIn());
                component->setMemManager(static_cast<HostMemoryManager*>(&memory));
                bool isRightOrThrown = true;
                hasFailed = failNth(n, [&] { isRightOrThrown = call(component); });
                EXPECT_TRUE(isRightOrThrown) << what << ", allocation " << n;
                ASSERT_TRUE(search(component)) << what << ", allocation " << n;
                ASSERT_EQ(component.compare(u"red red ball", u"ball red red", 100), true) << n;
            }
            ASSERT_EQ(liveBlocks, before) << what << ", allocation " << n;
        }
    }

    FixedMemory memory;
    std::u16string dictionary;
};

TEST_F(Allocations, FailInEveryPlaceWithoutHarm) {
    std::u16string many;
    std::u16string other;
    for (char16_t unit = 0x430; many.size() < 950; ++unit) {
        many += std::u16string{unit, unit, u'x', u'x', u' '};
        other += std::u16string{u'y', unit, u'y', unit, u' '};
    }
    auto const compare = [&](char const* what, std::u16string_view first,
                             std::u16string_view second, int percent) {
        expectSafe(what, [=](Component& c) { return c.compare(first, second, percent) == true; });
    };
    compare("short comparison", u"red car steelframe", u"car red steelframes", 85);
    compare("repeated words", u"red red carriage", u"red carriage", 60);
    compare("long comparison", many, other, 30);
    std::u16string pages;
    for (char16_t unit = 0x400; pages.size() < 60; unit += 64)
        pages += unit;
    compare("units on many pages", pages + u'x', u'y' + pages, 85);
    std::u16string const entries = many.substr(300) + other.substr(0, 600) + u';' + other;
    SearchArguments const longSearch{many, entries, u';', 0, 75, 75, u""};
    auto const found = Component(addIn()).search(longSearch);
    expectSafe("long search", [&](Component& c) { return c.search(longSearch) == found; });
    expectSafe("search", [&](Component& c) { return search(c); });
    expectSafe("report", [](Component& c) {
        return !c.compare(u"", u"", 101) && c.connection.reports.size() == 1;
    });
    expectSafe("look-up", [](Component& c) {
        return c->FindMethod(hostUnits(u"НайтиСтроки")) == 1 && c->FindProp(hostUnits(u"x")) == -1;
    });
    expectSafe("locale", [](Component& c) { return c->SetLocale(hostUnits(u"ru")), true; });
}

TEST(Memory, OfASearchIsSmallWhateverTheTextsAre) {
    // 500 words of one unit, one of 1000, 60 of a few, 250 of three.
    std::u16string texts[4];
    for (char16_t unit = 0x4E00; texts[0].size() < 1000; ++unit)
        texts[0] += std::u16string{unit, u' '};
    for (std::size_t i = 0; i < 1000; ++i)
        texts[1] += static_cast<char16_t>(u'a' + i * i % 23);
    for (std::size_t i = 0; i < 60; ++i)
        texts[2] += u"word" + texts[1].substr(i, 4) + u" ";
    for (std::size_t i = 0; i < 250; ++i)
        texts[3] += texts[1].substr(i, 2) + static_cast<char16_t>(0x400 + i) + u' ';
    std::u16string dictionary;
    for (auto const& text : texts) {
        for (std::size_t const length : {100U, 600U, 700U, 800U, 900U, 1000U})
            dictionary += text.substr(0, text[1] == u' ' ? length / 2 : length) + u'x' +
                          text.substr(1, 8) + u';';
    }
    for (int i = 0; i < 400; ++i)
        dictionary += std::u16string(3000, u'z') + u';';
    std::u16string exclusions;
    for (int i = 0; i < 40; ++i)
        exclusions += std::u16string{u'l', static_cast<char16_t>(u'a' + i), u'd', u';'};
    Component component(addIn());
    for (auto const& text : texts) {
        for (int const percent : {40, 85, 100}) {
            std::vector<_tVariant> params = {textRecord(text),      textRecord(dictionary),
                                             textRecord(u";"),      numberRecord(5000),
                                             numberRecord(percent), numberRecord(percent),
                                             textRecord(exclusions)};
            _tVariant result = host_client::garbageRecord();
            // Few match, and the host gives no block for them.
            component.memory.answer = host_client::Memory::Answer::Refusal;
            peakBytes = liveBytes;
            unsigned long const before = liveBytes;
            component->CallAsFunc(1, &result, params.data(), std::ssize(params));
            EXPECT_LE(peakBytes - before, 64 * 1024) << percent;
        }
    }
}

// What one entry needs is kept for the next, whatever words the lists are made of.
TEST(Memory, IsNotTakenForEachEntry) {
    std::u16string exclusions;
    for (auto const& word : collidingWords())
        exclusions += word + u';';
    std::u16string dictionary;
    for (int i = 0; i < 100; ++i)
        dictionary += u"red ball;" + exclusions.substr(0, 400);
    Component component(addIn());
    for (auto const& text : {std::u16string(u"red ball"), exclusions.substr(2, 700)}) {
        std::replace(exclusions.begin(), exclusions.end(), u' ', u';');
        allocations = 0;
        component.search({text, dictionary, u';', 0, 90, 90, exclusions});
        EXPECT_LE(allocations, 1500U);
    }
}

TEST_F(Allocations, FailWhenNamesComeFromTheLibrary) {
    Component component(addIn());
    component.memory.answer = host_client::Memory::Answer::EmptyClaim;
    for (long n = 0; n < 3; ++n) {
        long const before = liveBlocks;
        unsigned short* name = nullptr;
        unsigned short const* method = nullptr;
        failNth(n, [&] {
            component->RegisterExtensionAs(&name);
            method = component->GetMethodName(0, 0);
        });
        EXPECT_EQ(name != nullptr, n > 0);
        EXPECT_EQ(method != nullptr, n > 1);
        delete[] name;
        delete[] method;
        EXPECT_EQ(liveBlocks, before);
    }
}

TEST_F(Allocations, FailWhenAComponentIsMade) {
    bool hasFailed = true;
    for (long n = 0; hasFailed; ++n) {
        long const before = liveBlocks;
        IComponentBase* slot = nullptr;
        hasFailed = failNth(n, [&] { addIn().getClassObject(nullptr, &slot); });
        EXPECT_EQ(slot == nullptr, hasFailed);
        addIn().destroyObject(&slot);
        EXPECT_EQ(liveBlocks, before);
    }
}

}  // namespace
