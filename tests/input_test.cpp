#include "near_text/input/line_reader.h"

#include "near_text/messages/messages.h"
#include "tests/test_support.h"

namespace {

using namespace std::string_literals;

TEST(Input, CutsALongLineBetweenCharacters) {
    std::pair<std::string, std::string> const cases[] = {
        {"abcd", "abcd"},     {"abcd\r", "abcd"},
        {"abcde", "abcd"},    {"abcd\r\r", "abcd"},
        {"abc\u044F", "abc"}, {"\U0001F600x", "\U0001F600"},
        {"a\U0001F600", "a"}, {"\x80\x80\x80\x80\x80", "\x80"}};
    for (auto const& [text, kept] : cases) {
        near_text::LineReader reader({fileOf("lines", text + "\nz"), "utf-8"}, 4);
        near_text::Line line;
        ASSERT_TRUE(reader.next(line));
        EXPECT_EQ(line.text, kept) << text;
        ASSERT_TRUE(reader.next(line));
        EXPECT_EQ(line.text, "z");
    }
}

TEST(Input, KeepsToTextThatCanBeShown) {
    EXPECT_EQ(near_text::onOneLine("a\x7F\x1F\t\u044F\n~"), "a   \u044F ~");
    EXPECT_EQ(near_text::onOneLine("\u0085a\u009B\u2028\u2029b\u202A\u202E\u2066\u2069\u200E\u061Cc"
                                   "\u00A0\u200D\xFF"),
              " a   b      c\u00A0\u200D\xFF");
    testing::internal::CaptureStderr();
    near_text::complain("a\n\u009B\u202E\u044F");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "near_text: a\\x0A\\u009B\\u202E\u044F\n");
    EXPECT_EQ(near_text::toUtf8(u"\xDE00x\xD83Dy\xD83D"), "\uFFFDx\uFFFDy\uFFFD");
    EXPECT_EQ(near_text::toUtf8(u"\xD83D\xD83D\xDE00"), "\uFFFD\U0001F600");
}

TEST(Input, DropsReportsOfEarlierCalls) {
    Component component(addIn());
    for (int i = 0; i < 3; ++i) {
        EXPECT_FALSE(component.compare(u"a", u"b", 101));
        EXPECT_EQ(component.connection.reports.size(), 1U);
        EXPECT_FALSE(component.search({u"a", u"b", u',', 0, 101, 101, u""}));
        EXPECT_EQ(component.connection.reports.size(), 1U);
    }
}

}  // namespace
