// Library files that are cut off, foreign or silent about their version: told, and never the end of
// the process.
#include "host_client/library_file.h"

#include <elf.h>
#include <sys/wait.h>

#include <random>

#include "tests/test_support.h"

namespace {

std::string const& good() {
    static std::string const content = contentOf(NEAR_TEXT_LIBRARY);
    return content;
}

std::string replaced(std::string const& part, std::string const& by) {
    std::string content = good();
    for (std::size_t at = 0; (at = content.find(part, at)) != std::string::npos;)
        content.replace(at, part.size(), by);
    return content;
}

std::string with(std::size_t offset, std::string const& bytes) {
    return std::string(good()).replace(offset, bytes.size(), bytes);
}

TEST(LibraryFile, IsToldWithWhatIsWrongWithIt) {
    std::string const note = "{\"name\":";
    bool const isNoted = good().find(note) != std::string::npos;  // not by every linker
    struct {
        std::string command, content, complaint;
    } const cases[] = {
        {"compare a a --percent 1", replaced("DestroyObject", "DestroyObjecx"), "DestroyObje"},
        {"compare a a --percent 1", good().substr(0, good().size() / 2), "is cut off"},
        {"compare a a --percent 1", good().substr(0, good().size() - 1), "is cut off"},
        {"compare a a --percent 1", good().substr(0, 40), "is cut off"},
        {"compare a a --percent 1", with(offsetof(Elf64_Ehdr, e_machine), "\x03"),
         "is for another machine: 32-bit x86, not "},
        {"compare a a --percent 1", with(EI_CLASS, "\1"), "wrong ELF class"},
        {"compare a a --percent 1", with(EI_DATA, "\2"), "data encoding"},
        {"compare a a --percent 1", "a text", "is not a shared library"},
        {"describe", isNoted ? replaced("FDO", "ODF") : good(), "has no package note"},
        {"--version", isNoted ? replaced("FDO", "ODF") : good(), "has no package note"},
        {"--version", isNoted ? replaced(note, "(\"name\":") : good(), "has a package note"},
        {"--version", isNoted ? replaced("\"version\":\"", "\"versiom\":\"") : good(),
         "has a package note"},
    };
    for (auto const& [command, content, complaint] : cases) {
        std::string const file = fileOf("library.so", content);
        std::string const errors = fileOf("library.err", "");
        int const status = std::system(
            (NEAR_TEXT_PROGRAM " " + command + " --library " + file + " >/dev/null 2>" + errors)
                .c_str());
        EXPECT_EQ(WEXITSTATUS(status), 2) << complaint;
        EXPECT_NE(contentOf(errors).find(file + ": "), std::string::npos) << contentOf(errors);
        EXPECT_NE(contentOf(errors).find(complaint), std::string::npos) << contentOf(errors);
    }
}

// A page that is missing would end the process when it is touched.
TEST(LibraryFile, MayEndAnywhere) {
    std::mt19937 engine(1);
    int const rounds = roundsOf(500);
    for (int round = 0; round < rounds; ++round) {
        std::size_t const end = engine() % (round % 2 == 0 ? 2000 : good().size());
        std::string const path = fileOf("library.so", good().substr(0, end));
        EXPECT_THROW(host_client::libraryVersion(path), std::runtime_error) << end;
    }
}

}  // namespace
