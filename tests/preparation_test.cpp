#include "near_text/preparation/preparation.h"

#include <random>

#include "near_text/text/code_points.h"
#include "tests/test_support.h"

namespace {

using near_text::Preparation;
using near_text::Preparer;

constexpr Preparation kAll = Preparation::whole();

TEST(Preparation, DoesWhatItIsAskedFor) {
    struct Case {
        Preparation how;
        Text text, prepared;
    } const cases[] = {
        {{}, u"E\u0301-\u0416", u"E\u0301-\u0416"},
        {{.composes = true}, u"E\u0301\u2126\u0418\u0306", u"\u00C9\u03A9\u0419"},
        {{.foldsCase = true},
         u"A\u0416\u00DF\u1E9E\u03C2\u0130\U00010400",
         u"a\u0436\u00DF\u00DF\u03C3\u0130\U00010428"},
        // Symbols stay: they tell things apart.
        {{.blanksPunctuation = true},
         u"a.b,\u00ABc\u2014d\u00BB_#C+$\u2116<\u20AC>",
         u"a b  c d   C+$\u2116<\u20AC>"},
        {{.blanksPunctuation = true}, u"a\U00010100b", u"a  b"},
        // Blanks that the add-in takes for parts of words, and what has no width.
        {{.blanksPunctuation = true},
         u"a\u00A0b\u2003c\u3000d\u202Fe\vf\u200Bg\uFEFFh\u00ADi",
         u"a b c d e fghi"},
        {kAll, u"e\u200D\u0301", u"\u00E9"},
        // The dotted capital I is the same in one unit and in two.
        {kAll, u"I\u0307,\u0130", u"\u0130 \u0130"},
        // Folding leaves an s, which the accent joins.
        {kAll, u"\u017F\u0301", u"\u015B"},
        {kAll, u"\xD83DX\xDE00", u"\xD83Dx\xDE00"},
        {kAll, whole(u"A\0B\u0301"), whole(u"a\0b\u0301")},
    };
    for (auto const& [how, text, prepared] : cases)
        EXPECT_EQ(Preparer(how).prepared(text), prepared) << near_text::toUtf8(text);
}

TEST(Preparation, DropsWordsWithTheWhitespaceAheadOfThem) {
    Preparer preparer(kAll);
    preparer.drop(u"Ltd.  gro\u0308sse\nCO");
    std::pair<Text, Text> const cases[] = {{u"red ltd ball", u"red ball"},
                                           {u"Ltd,red", u"red"},
                                           {u" co  red ", u" red "},
                                           {u"red  ltd\tco  ball", u"red  ball"},
                                           {u"GR\u00D6SSE 5 co", u"5"},
                                           {u"ltd", u""},
                                           {u"co co ", u" "},
                                           {u"company ltds", u"company ltds"},
                                           {u"", u""},
                                           {u" ", u" "}};
    for (auto const& [text, prepared] : cases) {
        EXPECT_EQ(preparer.prepared(text), prepared) << near_text::toUtf8(text);
        EXPECT_EQ(preparer.prepared(prepared), prepared);
    }
}

TEST(Preparation, TwiceIsAsOnce) {
    Preparer const preparers[] = {Preparer(kAll), Preparer({.composes = true})};
    std::mt19937 random(10);
    constexpr near_text::CodePoint kMarks = 0x300, kEnd = 0x20000;
    std::uniform_int_distribution<near_text::CodePoint> any(0, kEnd - 1);
    std::uniform_int_distribution<near_text::CodePoint> anyMark(kMarks, kMarks + 0x6F);
    for (near_text::CodePoint point = 0; point < kEnd; ++point) {
        std::u16string text;
        for (auto const part : {point, anyMark(random), any(random)})
            near_text::append(text, part);
        for (Preparer const& preparer : preparers) {
            std::u16string const once = preparer.prepared(text);
            ASSERT_EQ(preparer.prepared(once), once) << point;
        }
    }
}

}  // namespace
