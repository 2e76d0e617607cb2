// Every allocation of a call fails once. This program replaces the global allocation functions,
// which the loaded library then uses too: it lets the n-th allocation of a call fail, for every n.
#include <cstdlib>
#include <functional>
#include <new>

#include "tests/test_support.h"

namespace {

long failAt = -1;  // how many allocations are still to succeed before one fails; below 0 none does
long liveBlocks = 0;

void* allocate(std::size_t size) {
    if (failAt >= 0 && failAt-- == 0) throw std::bad_alloc();
    void* const block = std::malloc(size);
    if (block == nullptr) throw std::bad_alloc();
    ++liveBlocks;
    return block;
}

void release(void* block) {
    if (block == nullptr) return;
    --liveBlocks;
    std::free(block);
}

}  // namespace

void* operator new(std::size_t size) {
    return allocate(size);
}
void* operator new[](std::size_t size) {
    return allocate(size);
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

using stand_in_host::hostUnits;

// Lends no memory of its own making, so that every block counted is the library's.
class FixedHost final : public HostConnection, public HostMemoryManager {
public:
    void notCalled0() override { std::abort(); }
    void notCalled1() override { std::abort(); }
    bool reportError(unsigned short, unsigned short const*, unsigned short const*, long) override {
        ++reports;
        return true;
    }
    bool allocate(void** out, unsigned long size) override {
        if (!hasBlock) return true;
        *out = size <= sizeof block ? block : nullptr;
        return *out != nullptr;
    }

    bool hasBlock = true;
    unsigned short block[1 << 14];
    long reports = 0;
};

class Allocations : public testing::Test {
protected:
    Allocations() {
        addIn();  // loaded before anything is counted
        for (int i = 0; i < 1000; ++i)
            dictionary += u"z;";
        for (int i = 0; i < 50; ++i)
            dictionary += u"red ball number;";
    }
    ~Allocations() override { addIn().destroyObject(&component); }

    void makeComponent() {
        addIn().destroyObject(&component);
        addIn().getClassObject(nullptr, &component);
        component->Init(static_cast<HostConnection*>(&host));
        component->setMemManager(static_cast<HostMemoryManager*>(&host));
    }

    bool compare(std::u16string_view first, std::u16string_view second, int percent) {
        _tVariant params[] = {stand_in_host::textRecord(first), stand_in_host::textRecord(second),
                              stand_in_host::numberRecord(percent)};
        if (!component->CallAsFunc(0, &result, params, 3)) return false;
        return result.value.boolean != 0;
    }

    // Entries beyond the thousandth match: their numbers need memory of their own.
    bool search() {
        _tVariant params[] = {stand_in_host::textRecord(u"number red ballx"),
                              stand_in_host::textRecord(dictionary),
                              stand_in_host::textRecord(u";"),
                              stand_in_host::numberRecord(90),
                              stand_in_host::numberRecord(85),
                              stand_in_host::numberRecord(85),
                              stand_in_host::textRecord(u"ltd;inc co")};
        if (!component->CallAsFunc(1, &result, params, 7)) return false;
        auto const list = stand_in_host::fromHost(host.block, result.length);
        return list.size() == 50 * 5 - 1 && list.substr(0, 10) == u"1000,1001," &&
               list.substr(list.size() - 5) == u",1049";
    }

    // Lets each allocation of `call` fail in turn, each time on a new component. The call either
    // throws, or it was done already and answers rightly; the component then answers again, and
    // when it is gone no block is left behind.
    void expectSafe(char const* what, std::function<bool()> const& call) {
        bool isAnyLeft = true;
        for (long n = 0; isAnyLeft; ++n) {
            addIn().destroyObject(&component);
            long const before = liveBlocks;
            makeComponent();
            failAt = n;
            bool isRightOrThrown = true;
            try {
                isRightOrThrown = call();
            } catch (std::bad_alloc const&) {
            }
            isAnyLeft = failAt < 0;
            failAt = -1;
            EXPECT_TRUE(isRightOrThrown) << what << ", allocation " << n;
            ASSERT_TRUE(search() && compare(u"red red ball", u"ball red red", 100)) << what << n;
            addIn().destroyObject(&component);
            ASSERT_EQ(liveBlocks, before) << what << ", allocation " << n;
        }
    }

    FixedHost host;
    IComponentBase* component = nullptr;
    _tVariant result{};
    std::u16string dictionary;
};

TEST_F(Allocations, FailInEveryPlaceWithoutHarm) {
    std::u16string many;
    std::u16string other;
    for (char16_t unit = 0x430; many.size() < 950; ++unit) {
        many += std::u16string{unit, unit, u'x', u'x', u' '};
        other += std::u16string{u'y', unit, u'y', unit, u' '};
    }
    makeComponent();
    ASSERT_TRUE(search());
    expectSafe("short comparison",
               [&] { return compare(u"red car steelframe", u"car red steelframes", 85); });
    expectSafe("repeated words", [&] { return compare(u"red red carriage", u"red carriage", 60); });
    expectSafe("long comparison", [&] { return compare(many, other, 30); });
    expectSafe("search", [&] { return search(); });
    expectSafe("report", [&] {
        long const before = host.reports;
        return !compare(u"", u"", 101) && host.reports == before + 1;
    });
    expectSafe("look-up", [&] { return component->FindMethod(hostUnits(u"НайтиСтроки")) == 1; });
    expectSafe("property", [&] { return component->FindProp(hostUnits(u"x")) == -1; });
    expectSafe("locale", [&] { return component->SetLocale(hostUnits(u"ru")), true; });
}

TEST_F(Allocations, FailWhenNamesComeFromTheLibrary) {
    for (long n = 0; n < 3; ++n) {
        makeComponent();
        host.hasBlock = false;
        long const before = liveBlocks;
        unsigned short* name = nullptr;
        unsigned short const* method = nullptr;
        failAt = n;
        try {
            component->RegisterExtensionAs(&name);
            method = component->GetMethodName(0, 0);
        } catch (std::bad_alloc const&) {
        }
        failAt = -1;
        EXPECT_EQ(name != nullptr, n > 0);
        EXPECT_EQ(method != nullptr, n > 1);
        delete[] name;
        delete[] method;
        EXPECT_EQ(liveBlocks, before);
    }
}

TEST_F(Allocations, FailWhenAComponentIsMade) {
    for (long n = 0;; ++n) {
        long const before = liveBlocks;
        IComponentBase* slot = nullptr;
        failAt = n;
        bool isThrown = false;
        try {
            addIn().getClassObject(nullptr, &slot);
        } catch (std::bad_alloc const&) {
            isThrown = true;
        }
        failAt = -1;
        EXPECT_EQ(slot == nullptr, isThrown);
        addIn().destroyObject(&slot);
        EXPECT_EQ(liveBlocks, before);
        if (!isThrown) break;
    }
}

}  // namespace
