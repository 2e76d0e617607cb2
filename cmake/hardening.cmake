# What ships is hardened as distributions build, as far as compiler, linker and system can.
include(CheckCXXCompilerFlag)
include(CheckPIESupported)
check_pie_supported()

option(NEAR_TEXT_HARDENED "Harden optimised builds of the library and the program" ON)

set(NEAR_TEXT_HARDENING)
if(NEAR_TEXT_HARDENED AND NOT NEAR_TEXT_SANITIZE)
    foreach(flag IN ITEMS -fstack-protector-strong -fstack-clash-protection -fcf-protection)
        string(MAKE_C_IDENTIFIER "NEAR_TEXT_HAS${flag}" known)
        check_cxx_compiler_flag(${flag} ${known})
        if(${known})
            list(APPEND NEAR_TEXT_HARDENING ${flag})
        endif()
    endforeach()
    # The system's headers check copies only in optimised code.
    list(APPEND NEAR_TEXT_HARDENING -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2)
endif()

# A source on a hot path, where one of these costs too much, goes without it:
#   set_source_files_properties(FILE PROPERTIES COMPILE_OPTIONS -fno-stack-protector)  # reason
# But -fcf-protection holds for a whole file or not at all: one object without its mark takes the mark
# from the library.
function(harden)
    foreach(target IN LISTS ARGN)
        target_compile_options(${target} PRIVATE
            "$<$<CONFIG:Release,RelWithDebInfo,MinSizeRel>:${NEAR_TEXT_HARDENING}>")
        target_link_options(${target} PRIVATE LINKER:-z,relro LINKER:-z,now LINKER:-z,noexecstack)
    endforeach()
endfunction()
