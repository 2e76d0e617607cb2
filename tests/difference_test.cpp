#include "near_text/matching/difference.h"

#include <algorithm>

#include "near_text/text/code_points.h"
#include "tests/random_text.h"

namespace {

using near_text::Mark;
using near_text::Preparation;
using near_text::Preparer;
using near_text::PrintedText;

// (ignored) {cancelled} same [extra] <replaced>. The spans cover the text.
std::string shown(std::string const& text, near_text::Spans const& spans) {
    constexpr std::string_view kBrackets[] = {"()", "{}", "", "[]", "<>"};
    std::string marked;
    std::size_t end = 0;
    for (near_text::Span const& span : spans) {
        auto const brackets = kBrackets[static_cast<std::size_t>(span.mark)];
        std::string const inside = text.substr(span.begin, span.end - span.begin);
        EXPECT_EQ(span.begin, end);
        end = span.end;
        marked += brackets.substr(0, 1);
        marked += inside;
        marked += brackets.empty() ? "" : brackets.substr(1);
    }
    EXPECT_EQ(end, text.size());
    return marked;
}

near_text::Difference searched(PrintedText const& text, PrintedText const& entry) {
    reference::ExcludedWords const excluded = {u"ltd"};
    reference::SearchExplanation const search(text.units, excluded, 0, 80, 80);
    return differenceOf(text, entry, search.explain(reference::readEntry(entry.units, true)));
}

TEST(Difference, MarksTheTextsAsTheyArePrinted) {
    Preparer preparer(Preparation::whole());
    preparer.drop(u"the");
    struct Case {
        std::string text, entry, marked, markedEntry;
    } const cases[] = {
        {"16 oz steel clow hamer", "STEEL claw, hammer (16 oz)",
         "{16}( ){oz}( ){steel}( )cl<o>w( )hamer",
         "{STEEL}( )cl<a>w(, )ha[m]mer( (){16}( ){oz}())"},
        // What is dropped, excluded or said again does not count.
        {"The  Ball-Ltd. red red blue", "ball the red", "(The  ){Ball}(-Ltd. ){red}( red )[blue]",
         "{ball}( the ){red}"},
        {"ab ab", "ax ay", "a<b>( ab)", "[ax]( )a<y>"},
        // Characters are marked as wholes.
        {"cafe\u0301 x\U0001F600", "cafe x\U0001F601", "caf<e\u0301>( )x<\U0001F600>",
         "caf<e>( )x<\U0001F601>"},
    };
    for (auto const& [text, entry, marked, markedEntry] : cases) {
        PrintedText const first(text, preparer), second(entry, preparer);
        auto const difference = searched(first, second);
        EXPECT_EQ(shown(text, difference.first), marked);
        EXPECT_EQ(shown(entry, difference.second), markedEntry);
    }
}

struct Counted {
    std::u16string marked[5];  // units by their marks
    std::u16string left;

    Counted(PrintedText const& text, near_text::Spans const& spans) {
        for (auto const& [begin, end, mark] : spans) {
            for (std::size_t i = 0; i < text.units.size(); ++i) {
                if (text.origins[i].begin < begin || text.origins[i].begin >= end) continue;
                marked[static_cast<std::size_t>(mark)] += text.units[i];
                if (mark > Mark::Cancelled) left += text.units[i];
            }
        }
    }
    std::u16string const& operator[](Mark mark) const {
        return marked[static_cast<std::size_t>(mark)];
    }
};

// The marks say what the plain explanation says, and their edits are as few as its distance.
TEST(Difference, HasAsManyEditsAsTheDistance) {
    RandomText random{11};
    Preparer const asItIs{{}};
    for (int round = 0; round < roundsOf(4000); ++round) {
        RandomPair pair(random, 1 + random.below(8), 1 + random.below(20));
        // Half a pair marks the other half too.
        for (std::u16string* const text : {&pair.first, &pair.second})
            std::replace_if(text->begin(), text->end(), near_text::isHalfPair, u'x');
        PrintedText const first(near_text::toUtf8(pair.first), asItIs);
        PrintedText const second(near_text::toUtf8(pair.second), asItIs);
        auto const sides = reference::explainCompare(first.units, second.units, 0);
        auto const difference = differenceOf(first, second, sides);
        Counted const one(first, difference.first), other(second, difference.second);
        SCOPED_TRACE(::shown(pair.first) + ::shown(pair.second));
        ASSERT_EQ(one.left, reference::joined(sides.first.left));
        ASSERT_EQ(other.left, reference::joined(sides.second.left));
        ASSERT_EQ(one[Mark::Cancelled].size(), reference::joined(sides.cancelled).size());
        ASSERT_EQ(other[Mark::Cancelled].size(), one[Mark::Cancelled].size());
        ASSERT_EQ(one[Mark::Same], other[Mark::Same]);
        ASSERT_EQ(one[Mark::Replaced].size(), other[Mark::Replaced].size());
        ASSERT_EQ(one[Mark::Replaced].size() + one[Mark::Extra].size() + other[Mark::Extra].size(),
                  sides.distance);
    }
}

// Whatever is prepared piece by piece is what is prepared as a whole.
TEST(Difference, FollowsEachUnitBackToItsCharacters) {
    RandomText random{12};
    constexpr std::u16string_view kUnits =
        u"aAe\u0301\u0345\u0323\u200D\u00AD\u00C9\u1E9E\u017F\u0130I\u0307,- "
        u"\u00A0\u1100\u1161\u11A8"
        u"\uAC00\u2126\u0391\u03B1\u09C7\u09BE\u0344\uFB1D\xD800\xDC00";
    for (int round = 0; round < roundsOf(20000); ++round) {
        std::u16string const text = random.run(kUnits, random.below(12));
        Preparer preparer({random.oneIn(2), random.oneIn(2), random.oneIn(2)});
        if (random.oneIn(3)) preparer.drop(u"a ae");
        std::vector<near_text::Origin> origins;
        ASSERT_EQ(preparer.prepared(text, origins), preparer.prepared(text)) << ::shown(text);
        std::size_t begin = 0;
        for (auto const& origin : origins) {
            ASSERT_TRUE(begin <= origin.begin && origin.begin < origin.end) << ::shown(text);
            begin = origin.begin;
        }
        ASSERT_TRUE(origins.empty() || origins.back().end <= text.size());
    }
}

}  // namespace
