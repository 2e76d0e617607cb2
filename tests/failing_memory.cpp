// Loaded before the program, lets its allocations fail: in one copy of the process after another,
// each with another allocation that fails, that one alone or all from it on. Each copy must tell
// that it is out of memory, with the status 2, or end as it does undisturbed. The environment says
// which are to fail, counted from where the program's static objects are made: FIRST_TO_FAIL, where
// the copies are made and where there is one thread, and LAST_TO_FAIL.
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
long first = 0;
long reached = 0;  // allocations before the copies are made
long failing = 0;
std::atomic<long>* allocations = nullptr;  // shared with the copy that runs

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

// Thrown in a copy, which is to go on as the program.
struct Copy {};

class Trial {
public:
    // False where one run went wrong, which is told.
    bool failEach(long last) {
        bool isGood = WIFEXITED(whole_.status) && whole_.errors.empty();
        for (long n = first; isGood && n <= last; ++n) {
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
    static Ending run(long allocation) {
        int const output = memfd_create("output", 0);
        int const errors = memfd_create("errors", 0);
        failing = allocation;
        *allocations = first;
        pid_t const process = fork();
        if (process == 0) {
            dup2(output, STDOUT_FILENO);
            dup2(errors, STDERR_FILENO);
            alarm(20);  // no run waits for ever
            throw Copy();
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
        return ending.errors.starts_with("near_text: cannot start ") && ++threads_ > 0;
    }

    void tell(long n, Ending const& ending) const {
        std::printf("allocation %ld: status %x\n%s%s", n, static_cast<unsigned>(ending.status),
                    ending.output.c_str(), ending.errors.c_str());
    }

    long told_ = 0;
    long harmless_ = 0;
    long threads_ = 0;
    Ending const whole_ = run(LONG_MAX);
};

// Returns in the copies alone.
void failFromHere() {
    isCounting = false;
    void* const shared = mmap(nullptr, sizeof *allocations, PROT_READ | PROT_WRITE,
                              MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    allocations = new (shared) std::atomic<long>;
    setvbuf(stdout, nullptr, _IONBF, 0);  // or the copies would print it too
    char const* const last = std::getenv("LAST_TO_FAIL");
    bool isGood = true;
    try {
        for (bool const isAlone : {true, false}) {
            isOnce = isAlone;
            isGood &= Trial().failEach(last == nullptr ? LONG_MAX : std::atol(last));
        }
        _exit(isGood ? 0 : 1);
    } catch (Copy const&) {
        isCounting = true;
    }
}

bool fails() {
    if (!isCounting) return false;
    if (allocations == nullptr) {
        if (reached++ < first) return false;
        failFromHere();
    }
    long const number = (*allocations)++;
    bool const isFailure = isOnce ? number == failing : number >= failing;
    if (isFailure) errno = ENOMEM;
    return isFailure;
}

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
    char const* const from = std::getenv("FIRST_TO_FAIL");
    first = from == nullptr ? 0 : std::atol(from);
    isCounting = true;
    return start(main, count, arguments, init, fini, loaderFini, stackEnd);
}

}  // extern "C"
