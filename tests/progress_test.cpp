#include "near_text/progress.h"

#include <fcntl.h>
#include <pty.h>

#include <thread>

#include "tests/test_support.h"

namespace {

// What is written to a terminal of so many columns while `lines` lines are run through.
std::string drawn(unsigned short columns, std::size_t lines) {
    int terminal = -1, program = -1;
    winsize const size = {.ws_row = 1, .ws_col = columns, .ws_xpixel = 0, .ws_ypixel = 0};
    EXPECT_EQ(openpty(&terminal, &program, nullptr, nullptr, &size), 0);
    int const errors = dup(STDERR_FILENO);
    dup2(program, STDERR_FILENO);
    {
        near_text::Progress progress(fileOf("lines", std::string(lines, '\n')));
        for (std::size_t i = 0; i < lines; ++i) {
            if (i == 1) std::this_thread::sleep_for(std::chrono::milliseconds(210));
            progress.step();
        }
    }
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
        {0, " left"},     {120, " left"},   {30, " left"}, {21, " lines"},
        {15, " of 1000"}, {12, " of 1000"}, {8, "%"},      {3, ""}};
    for (auto const& [columns, part] : cases) {
        std::string const output = drawn(columns, 1000);
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

}  // namespace
