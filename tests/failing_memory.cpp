// Loaded before the program, runs it over and over, each time in a process of its own with another
// allocation that fails: that one alone, or all from it on. Each run must tell that it is out of
// memory, with the status 2, or end as it does undisturbed. The first to fail is FIRST_TO_FAIL in
// the environment, counted from where the program's static objects are made.
#include <dlfcn.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

bool isCounting = false;
bool isOnce = false;
long failing = 0;
std::atomic<long>* allocations = nullptr;  // shared with the process that runs the program

bool fails() {
    if (!isCounting) return false;
    long const number = (*allocations)++;
    bool const isFailure = isOnce ? number == failing : number >= failing;
    if (isFailure) errno = ENOMEM;
    return isFailure;
}

struct Ending {
    int status;  // as waitpid has it
    std::string output, errors;

    bool operator==(Ending const&) const = default;
};

std::string contentOf(int file) {
    std::string content(static_cast<std::size_t>(lseek(file, 0, SEEK_END)), '\0');
    lseek(file, 0, SEEK_SET);
    if (read(file, content.data(), content.size()) < 0) content = "unread";
    close(file);
    return content;
}

template <class Program>
class Trial {
public:
    explicit Trial(Program const& program) : program_(program), whole_(run(LONG_MAX)) {}

    // False where one run went wrong, which is told.
    bool failEach(long first) {
        bool isGood = WIFEXITED(whole_.status) && whole_.errors.empty();
        for (long n = first; isGood; ++n) {
            Ending const ending = run(n);
            if (*allocations <= n) break;
            isGood = isRight(ending);
            if (!isGood) tell(n, ending);
        }
        std::printf("%ld failed %s: %ld told, %ld harmless, %ld where a thread began\n",
                    told_ + harmless_ + threads_, isOnce ? "once" : "from then on", told_,
                    harmless_, threads_);
        return isGood && told_ > harmless_;
    }

private:
    Ending run(long allocation) {
        int const output = memfd_create("output", 0);
        int const errors = memfd_create("errors", 0);
        failing = allocation;
        *allocations = 0;
        pid_t const process = fork();
        if (process == 0) {
            dup2(output, STDOUT_FILENO);
            dup2(errors, STDERR_FILENO);
            alarm(20);  // no run waits for ever
            isCounting = true;
            std::exit(program_());
        }
        int status = 0;
        waitpid(process, &status, 0);
        return {status, contentOf(output), contentOf(errors)};
    }

    bool isRight(Ending const& ending) {
        if (ending == whole_) return ++harmless_ > 0;
        bool const isError = WIFEXITED(ending.status) && WEXITSTATUS(ending.status) == 2;
        bool const isWholeLines = ending.output.empty() || ending.output.back() == '\n';
        if (!isError || !isWholeLines || !whole_.output.starts_with(ending.output)) return false;
        if (ending.errors == "near_text: out of memory\n") return ++told_ > 0;
        return ending.errors.starts_with("near_text: cannot start thread ") && ++threads_ > 0;
    }

    void tell(long n, Ending const& ending) const {
        std::printf("allocation %ld: status %x\n%s%s", n, static_cast<unsigned>(ending.status),
                    ending.output.c_str(), ending.errors.c_str());
    }

    Program const& program_;
    long told_ = 0;
    long harmless_ = 0;
    long threads_ = 0;
    Ending const whole_;
};

}  // namespace

extern "C" {

void* __libc_malloc(std::size_t);
void* __libc_calloc(std::size_t, std::size_t);
void* __libc_realloc(void*, std::size_t);
void* __libc_memalign(std::size_t, std::size_t);

void* malloc(std::size_t size) noexcept {
    return fails() ? nullptr : __libc_malloc(size);
}
void* calloc(std::size_t count, std::size_t size) noexcept {
    return fails() ? nullptr : __libc_calloc(count, size);
}
void* realloc(void* block, std::size_t size) noexcept {
    return fails() ? nullptr : __libc_realloc(block, size);
}
void* aligned_alloc(std::size_t alignment, std::size_t size) noexcept {
    return fails() ? nullptr : __libc_memalign(alignment, size);
}

using Main = int(int, char**, char**);

int __libc_start_main(Main* main, int count, char** arguments, void (*init)(), void (*fini)(),
                      void (*loaderFini)(), void* stackEnd) {
    auto const start =
        reinterpret_cast<decltype(&__libc_start_main)>(dlsym(RTLD_NEXT, "__libc_start_main"));
    auto const program = [=] {
        return start(main, count, arguments, init, fini, loaderFini, stackEnd);
    };
    void* const shared = mmap(nullptr, sizeof *allocations, PROT_READ | PROT_WRITE,
                              MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    allocations = new (shared) std::atomic<long>;
    std::setvbuf(stdout, nullptr, _IONBF, 0);  // or the copies would print it too
    char const* const first = std::getenv("FIRST_TO_FAIL");
    bool isGood = true;
    for (bool const isAlone : {true, false}) {
        isOnce = isAlone;
        isGood &= Trial(program).failEach(first == nullptr ? 0 : std::atol(first));
    }
    std::exit(isGood ? 0 : 1);
}

}  // extern "C"
