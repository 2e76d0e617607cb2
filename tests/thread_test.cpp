// A small program of its own, since the thread sanitizer builds nothing else.
#include <thread>

#include "tests/test_support.h"

namespace {

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
