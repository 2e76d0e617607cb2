#include "near_text/input/line_reader.h"

#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

#include <cstdlib>

#include "near_text/messages/messages.h"
#include "near_text/output/encoder.h"
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

using Lines = std::vector<std::string>;

// Until the end or a fault, which is told as a line of its own.
Lines linesOf(std::string const& file) {
    near_text::LineReader reader({file, "utf-8"});
    Lines lines;
    try {
        for (near_text::Line line; reader.next(line);)
            lines.push_back(line.text);
    } catch (std::runtime_error const& error) {
        lines.emplace_back(error.what());
    }
    return lines;
}

TEST(Input, TakesReturnsAloneForLineEnds) {
    std::string const longLine(1 << 16, 'x');
    std::pair<std::string, Lines> const cases[] = {{"a\rb\r", {"a", "b"}},
                                                   {"a\r\rb", {"a", "", "b"}},
                                                   {"a\rb\nc\r\nd\r\r\n", {"a", "b", "c", "d", ""}},
                                                   {"a\rb\rc\n", {"a", "b", "c"}},
                                                   {"a\nb\rc\r\n", {"a", "b\rc"}},
                                                   {"b\r" + longLine + "\nc", {"b", longLine, "c"}},
                                                   {"a\r", {"a"}},
                                                   {longLine + "\n\r\n", {longLine, ""}},
                                                   {"\r\n", {""}}};
    for (auto const& [content, lines] : cases) {
        EXPECT_EQ(linesOf(fileOf("lines", content)), lines) << content;
        if (content.size() > 100) continue;
        int ends[2];
        ASSERT_EQ(pipe(ends), 0);
        ASSERT_EQ(write(ends[1], content.data(), content.size()), ssize_t(content.size()));
        close(ends[1]);
        EXPECT_EQ(linesOf("/dev/fd/" + std::to_string(ends[0])), lines) << content;
        close(ends[0]);
    }
}

// What a terminal's other end leaves behind can be read, and then an error comes.
TEST(Input, HandsOutTheLinesAheadOfAFault) {
    int const reading = posix_openpt(O_RDWR | O_NOCTTY);
    ASSERT_EQ(grantpt(reading) | unlockpt(reading), 0);
    int const writing = open(ptsname(reading), O_RDWR | O_NOCTTY);
    termios settings = {};
    tcgetattr(writing, &settings);
    cfmakeraw(&settings);
    tcsetattr(writing, TCSANOW, &settings);
    ASSERT_EQ(write(writing, "a\rb\rc", 5), 5);
    close(writing);
    dup2(reading, STDIN_FILENO);
    EXPECT_EQ(linesOf("-"), (Lines{"a", "b", "standard input: Input/output error"}));
}

TEST(Input, TellsHowMuchOfAFileIsRead) {
    std::string text;
    for (int i = 0; i < 50000; ++i)
        text += "\u044F\n";
    std::string const marked = near_text::Encoder("utf-16").encoded(text);
    for (std::string const& content : {text, marked}) {
        near_text::LineReader reader(fileOf("lines", content));
        near_text::Line line;
        while (reader.next(line)) {
            ASSERT_NEAR(reader.share().value(), static_cast<double>(line.number) / 50000, 1e-3);
        }
        EXPECT_EQ(reader.share(), 1);
    }
    EXPECT_FALSE(near_text::LineReader({"/dev/null"}).share());
}

TEST(Input, KeepsToTextThatCanBeShown) {
    EXPECT_EQ(near_text::onOneLine("a\x7F\x1F\t\u044F\n~"), "a   \u044F ~");
    EXPECT_EQ(near_text::onOneLine("\u0085a\u009B\u2028\u2029b\u202A\u202E\u2066\u2069\u200E\u061Cc"
                                   "\u00A0\u200D\xFF"),
              " a   b      c\u00A0\u200D\xFF");
    testing::internal::CaptureStderr();
    near_text::complain("a\n\u009B\u202E\u044F");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "near_text: a\\x0A\\u009B\\u202E\u044F\n");
    for (std::size_t const shift : {0U, 1U}) {
        std::string ya(shift, 'x');
        while (ya.size() < 100000)
            ya += "\u044F";
        testing::internal::CaptureStderr();
        near_text::complain(ya + ": end");
        std::string const told = testing::internal::GetCapturedStderr();
        EXPECT_TRUE(told.size() < 1600 && near_text::isText(told)) << told;
        EXPECT_TRUE(told.find(" ... ") != std::string::npos && told.ends_with(": end\n")) << told;
    }
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

// A carriage return at the end of what is looked at may have its line feed behind it.
TEST(LineReader, FindsALineFeedBehindTheFirstBlock) {
    for (std::string const start : {"", "a\n", "a\rb\n"}) {
        std::string const longLine((1 << 16) - 1 - start.size(), 'x');
        near_text::TextFile const file(fileOf("long", start + longLine + "\r\ny\n"));
        near_text::LineReader reader(file);
        near_text::Line line;
        while (reader.next(line) && line.text.size() < 2) {
        }
        EXPECT_EQ(line.text, longLine);
        EXPECT_EQ(line.end, "\r\n");
        EXPECT_TRUE(reader.next(line));
        EXPECT_EQ(line.text, "y");
    }
}

}  // namespace
