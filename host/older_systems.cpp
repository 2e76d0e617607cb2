// Two symbols of newer system libraries, defined in here, so that the library also loads where they
// do not exist yet. Compilers refer to both unasked; everything else that they ask for has been
// there since glibc 2.17 and the C++ runtime of g++ 5. Both stay inside the library: no other code
// of the process sees them.
#include <new>

extern "C" {

// Reference counts read this byte (glibc 2.32). 1 would promise that the process has one thread. 0
// says that there may be others, which holds everywhere and costs a count its atomic instruction
// even in a process with one thread.
extern char __libc_single_threaded;
[[gnu::visibility("hidden")]] char __libc_single_threaded = 0;
}

// Throws for an array whose size is beyond all bounds (GLIBCXX_3.4.29), just as the function in the
// runtime does; the exception itself is known to every version. Costs nothing.
[[noreturn, gnu::visibility("hidden")]] void throwBadArrayNewLength() __asm__(
    "_ZSt28__throw_bad_array_new_lengthv");

void throwBadArrayNewLength() {
    throw std::bad_array_new_length();
}
