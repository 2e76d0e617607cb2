# The file itself tells which version it is: in a note that tools which look into crashed processes
# read too, and by the linker's build id.
include(CheckLinkerFlag)
check_linker_flag(CXX "LINKER:--package-metadata={}" NEAR_TEXT_LINKER_WRITES_NOTE)
target_link_options(NearTextComparerLin64 PRIVATE LINKER:--build-id=sha1)
if(NEAR_TEXT_LINKER_WRITES_NOTE)
    # Not by LINKER:, which would cut the note at its commas.
    set(note "{\\\"name\\\":\\\"${NEAR_TEXT_PACKAGE}\\\",\\\"version\\\":\\\"${PROJECT_VERSION}\\\"}")
    target_link_options(NearTextComparerLin64 PRIVATE
        "SHELL:-Xlinker --package-metadata=${note}")
else()
    message(STATUS "The linker knows no --package-metadata: the library cannot tell its version")
endif()
