// How the program ends where something fails or a signal comes: no answer is lost, no line is cut.
#include <pty.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include <chrono>
#include <cstdlib>
#include <thread>

#include "tests/test_support.h"

namespace {

constexpr char const* kProgram = NEAR_TEXT_PROGRAM;

std::string repeated(std::string const& text, int times) {
    std::string all;
    while (times-- > 0)
        all += text;
    return all;
}

// The exit status of a shell's command, and what it wrote into the files out and err.
struct Ending {
    int status;
    std::string output, errors;
};

Ending endingOf(std::string const& command) {
    std::string const output = fileOf("out", {}), errors = fileOf("err", {});
    int const status = std::system(("{ " + command + "; } >" + output + " 2>" + errors).c_str());
    return {WEXITSTATUS(status), contentOf(output), contentOf(errors)};
}

std::string matchOf(std::string const& texts, std::string const& entries) {
    return kProgram + (" match --format tsv --part -t " + texts) + " -e " + entries;
}

TEST(Ending, AnswersWhatWasReadBeforeAFault) {
    int terminal = -1, writer = -1;
    ASSERT_EQ(openpty(&terminal, &writer, nullptr, nullptr, nullptr), 0);
    ASSERT_EQ(write(writer, "a\nb\n", 4), 4);
    close(writer);  // from then on reading the terminal fails
    Ending const ending =
        endingOf(matchOf("-", fileOf("entries", "b\n")) + " <&" + std::to_string(terminal));
    close(terminal);
    EXPECT_EQ(ending.status, 2);
    EXPECT_EQ(ending.output, "\ta\t\t\t\t\t\t\t\n\tb\t100\t0\t0\t0\t1\tb\t\n");
    EXPECT_EQ(ending.errors, "near_text: standard input: Input/output error\n");
}

TEST(Ending, LeavesWholeLinesInAFileThatIsFull) {
    std::string const texts = fileOf("texts", repeated("text\n", 100000));
    Ending const ending = endingOf("ulimit -f 64; " + matchOf(texts, fileOf("entries", "text\n")));
    EXPECT_EQ(ending.status, 2);
    EXPECT_EQ(ending.errors, "near_text: cannot write: File too large\n");
    EXPECT_GT(ending.output.size(), 30U << 10);
    EXPECT_TRUE(ending.output.ends_with("\ttext\t\n"));
}

TEST(Ending, RefusesAnInputThatIsTheOutput) {
    std::string const file = fileOf("self", "text\n");
    Ending const ending = endingOf(matchOf(file, fileOf("entries", "text\n")) + " >>" + file);
    EXPECT_EQ(ending.status, 2);
    EXPECT_EQ(ending.errors, "near_text: " + file + ": is also the output\n");
    EXPECT_EQ(contentOf(file), "text\n");
}

// Waits for a writer, or for a reader of more than a pipe takes.
TEST(Ending, EndsEveryWaitByASignal) {
    std::string const pipe = fileOf("entries", "text\n") + ".fifo";
    ASSERT_EQ(mkfifo(pipe.c_str(), S_IRWXU), 0);
    std::string const many = fileOf("texts", repeated("text\n", 20000));
    std::string const one = fileOf("entries", "text\n");
    std::string const waits[] = {matchOf(pipe, one),
                                 matchOf(one, pipe),
                                 std::string(kProgram) + " search text -e " + pipe,
                                 matchOf(many, one),
                                 std::string(kProgram) + " search text -e " + many,
                                 std::string(kProgram) + " duplicates -g " + many};
    for (std::string const& wait : waits) {
        for (int const signal : {SIGTERM, SIGHUP}) {
            int ends[2];
            ASSERT_EQ(::pipe(ends), 0);
            pid_t const process = fork();
            if (process == 0) {
                dup2(ends[1], STDOUT_FILENO);
                close(ends[0]);
                execl("/bin/sh", "sh", "-c", ("exec 2>/dev/null " + wait).c_str(), nullptr);
            }
            close(ends[1]);
            std::this_thread::sleep_for(std::chrono::milliseconds(700));
            kill(process, signal);
            int status = 0;
            waitpid(process, &status, 0);
            EXPECT_EQ(WIFEXITED(status) ? WEXITSTATUS(status) : -1, 128 + signal) << wait;
            std::string output(1 << 20, '\0');
            ssize_t const size = read(ends[0], output.data(), output.size());
            EXPECT_TRUE(size == 0 || output[static_cast<std::size_t>(size) - 1] == '\n') << wait;
            close(ends[0]);
        }
    }
}

TEST(Ending, GroupsEqualLinesInLinearTime) {
    std::string const texts = fileOf("texts", repeated("red ball of steel\n", 8000) + "blue\n");
    auto const start = std::chrono::steady_clock::now();
    Ending const ending = endingOf(std::string(kProgram) + " duplicates -g -f tsv " + texts);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
    EXPECT_TRUE(ending.output.ends_with("\n1\t8000\tred ball of steel\n"));
}

}  // namespace
