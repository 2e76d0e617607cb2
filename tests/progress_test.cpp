#include "near_text/output/progress.h"

#include <fcntl.h>
#include <pty.h>

#include <functional>
#include <thread>

#include "near_text/run/match_writer.h"
#include "tests/test_support.h"

namespace {

// What `run` writes to a terminal of so many columns on standard error.
std::string drawn(unsigned short columns, std::function<void()> const& run) {
    int terminal = -1, program = -1;
    winsize const size = {.ws_row = 1, .ws_col = columns, .ws_xpixel = 0, .ws_ypixel = 0};
    EXPECT_EQ(openpty(&terminal, &program, nullptr, nullptr, &size), 0);
    int const errors = dup(STDERR_FILENO);
    dup2(program, STDERR_FILENO);
    run();
    dup2(errors, STDERR_FILENO);
    close(errors);
    fcntl(terminal, F_SETFL, O_NONBLOCK);
    std::string output;
    char bytes[4096];
    for (ssize_t count = 0; (count = read(terminal, bytes, sizeof bytes)) > 0;)
        output.append(bytes, static_cast<std::size_t>(count));
    close(program);
    close(terminal);
    return output;
}

TEST(Progress, StaysWithinTheTerminal) {
    std::pair<unsigned short, std::string> const cases[] = {
        {0, " left"}, {120, " left"}, {30, " left"}, {13, " lines"}, {8, "1000"}, {3, ""}};
    auto const progress = [] {
        near_text::Progress line;
        line.show(999, 0.999);
        std::this_thread::sleep_for(std::chrono::milliseconds(210));
        line.show(1000, 1);
    };
    for (auto const& [columns, part] : cases) {
        std::string const output = drawn(columns, progress);
        EXPECT_NE(output.find(part + "\033[K"), std::string::npos) << columns << ' ' << output;
        std::size_t width = 0;
        for (std::size_t i = 0; i < output.size(); ++i) {
            bool const isErase = output.compare(i, 3, "\033[K") == 0;
            if (isErase) i += 2;
            width = output[i] == '\r' || isErase ? 0 : width + 1;
            EXPECT_LT(width, columns == 0 ? 80U : columns) << output;
        }
        EXPECT_TRUE(output.ends_with("\r\033[K")) << output;  // gone in the end
    }
}

TEST(MatchWriter, EndsWithASummary) {
    std::string const output = drawn(80, [] {
        near_text::Output unused;
        near_text::MatchWriter writer(unused, fileOf("lines", "\n\n\n"), false);
        writer.write({.isFound = true, .line = 1}, false);
        writer.write({.failure = "no", .line = 2}, false);
        writer.write({.line = 3}, false);
        EXPECT_EQ(writer.close(7), near_text::Status::Error);
    });
    std::size_t const last = output.rfind("\r\033[K");
    ASSERT_NE(last, std::string::npos) << output;
    EXPECT_EQ(output.substr(last + 4),
              "near_text: 3 lines: 1 with a match, 1 without, in 0.0 s\r\n");
    EXPECT_NE(output.find("note: 7 matches left out: other numbers"), std::string::npos);
}

}  // namespace
