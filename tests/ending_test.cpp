// How the program ends where something fails or a signal comes: no answer is lost, no line is cut.
#include <pty.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include <algorithm>
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
    for (std::string const to : {">", ">>"}) {
        std::string const file = fileOf("full", "whole\n");
        Ending const ending = endingOf(
            "ulimit -f 64; " + matchOf(texts, fileOf("entries", "text\n")) + " " + to + file);
        EXPECT_EQ(ending.status, 2);
        EXPECT_EQ(ending.errors,
                  "near_text: cannot write: File too large; the last line, which was "
                  "cut, is taken back\n");
        EXPECT_GT(contentOf(file).size(), 30U << 10);
        EXPECT_TRUE(contentOf(file).ends_with("\ttext\t\n"));
    }
}

TEST(Ending, RefusesAnInputThatIsTheOutput) {
    std::string const file = fileOf("self", "text\n");
    std::string const match = matchOf(file, fileOf("entries", "text\n"));
    Ending const ending = endingOf(match + " >>" + file);
    EXPECT_EQ(ending.status, 2);
    EXPECT_EQ(ending.errors, "near_text: " + file + ": is also the output\n");
    EXPECT_EQ(contentOf(file), "text\n");
    EXPECT_EQ(endingOf(match + " 2>>" + file).output, "");
}

// Of a command that a signal ends after a while, and whose output nobody reads before that.
Ending interrupted(std::string const& command, int signal) {
    int ends[2];
    EXPECT_EQ(::pipe(ends), 0);
    pid_t const process = fork();
    if (process == 0) {
        dup2(ends[1], STDOUT_FILENO);
        close(ends[0]);
        execl("/bin/sh", "sh", "-c", ("exec " + command).c_str(), nullptr);
    }
    close(ends[1]);
    std::this_thread::sleep_for(std::chrono::milliseconds(700));
    kill(process, signal);
    auto const start = std::chrono::steady_clock::now();
    int status = 0;
    waitpid(process, &status, 0);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(3)) << command;
    std::string output(1 << 20, '\0');
    ssize_t const size = read(ends[0], output.data(), output.size());
    output.resize(static_cast<std::size_t>(std::max<ssize_t>(size, 0)));
    close(ends[0]);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, output, {}};
}

// It waits for a writer, or for a reader of more than a pipe takes, or is busy for long.
TEST(Ending, EndsBySignalsWhateverItDoes) {
    std::string const pipe = fileOf("entries", "text\n") + ".fifo";
    ASSERT_EQ(mkfifo(pipe.c_str(), S_IRWXU), 0);
    std::string const many = fileOf("texts", repeated("text\n", 20000));
    std::string const one = fileOf("entries", "text\n");
    std::string words, others;
    for (int i = 0; i < 180; ++i) {
        words += "w" + std::to_string(i) + ' ';
        others += "v" + std::to_string(i) + ' ';
    }
    std::string const longLines = fileOf("long", repeated(others + '\n', 20000));
    std::string const errors = fileOf("errors", {});
    std::string const waits[] = {
        matchOf(pipe, one),
        matchOf(one, pipe),
        std::string(kProgram) + " search text -e " + pipe,
        matchOf(many, one),
        std::string(kProgram) + " search text -e " + many,
        std::string(kProgram) + " search '" + words + "' -p 0 -e " + longLines,
        std::string(kProgram) + " duplicates -g " + many};
    for (std::string const& wait : waits) {
        for (int const signal : {SIGTERM, SIGHUP}) {
            Ending const ending = interrupted(wait + " 2>/dev/null", signal);
            EXPECT_EQ(ending.status, 128 + signal) << wait;
            EXPECT_TRUE(ending.output.empty() || ending.output.ends_with('\n')) << wait;
        }
    }
    // To the process and to its group, as one wish.
    Ending const asked = endingOf(waits[5] + " & sleep 1; kill $!; sleep 0.02; kill $!; wait $!");
    EXPECT_EQ(asked.status, 128 + SIGTERM);
    EXPECT_EQ(asked.errors, "near_text: interrupted\n");
    std::string const slow = fileOf("slow", "\n" + words + '\n');
    EXPECT_EQ(endingOf(matchOf(slow, longLines) + " -p 0 -j 1 & sleep 1; kill $!; wait $!").errors,
              "near_text: interrupted after 1 line\n");
    // A line that is longer than the pipe, and standard error, cannot go on.
    std::string const lines = fileOf("lines", repeated("text\n", 40000));
    std::string const longLine = std::string(kProgram) + " search text --indices -e " + lines;
    EXPECT_EQ(interrupted(longLine + " 2>&1", SIGTERM).status, 128 + SIGTERM);
    EXPECT_EQ(interrupted(longLine + " 2>" + errors, SIGTERM).output.size(), 1U << 16);
    EXPECT_EQ(contentOf(errors),
              "near_text: interrupted; the last line of the output is cut, since "
              "nobody took it\n");
    std::string const bad = fileOf("bad", repeated(std::string(1001, 'x') + '\n', 2000));
    EXPECT_EQ(interrupted(matchOf(bad, one) + " 2>&1 >/dev/null", SIGINT).status, 128 + SIGINT);
}

TEST(Ending, GroupsEqualLinesInLinearTime) {
    std::string const texts = fileOf("texts", repeated("red ball of steel\n", 8000) + "blue\n");
    auto const start = std::chrono::steady_clock::now();
    Ending const ending = endingOf(std::string(kProgram) + " duplicates -g -f tsv " + texts);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
    EXPECT_TRUE(ending.output.ends_with("\n1\t8000\tred ball of steel\n"));
}

}  // namespace
