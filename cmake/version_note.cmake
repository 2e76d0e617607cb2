# The file itself says which version it is: in a note, which tools that look into crashed processes
# read too, and by the linker's build id.
include(CheckLinkerFlag)
check_linker_flag(CXX "LINKER:--package-metadata={}" NEAR_TEXT_LINKER_WRITES_NOTE)
target_link_options(NearTextComparerLin64 PRIVATE LINKER:--build-id=sha1)
if(NEAR_TEXT_LINKER_WRITES_NOTE)
    set(NEAR_TEXT_NOTE "{\"name\":\"${NEAR_TEXT_PACKAGE}\",\"version\":\"${PROJECT_VERSION}\"}")
    # Not by LINKER:, which would cut the note at its commas.
    string(REPLACE "\"" "\\\"" quoted "${NEAR_TEXT_NOTE}")
    target_link_options(NearTextComparerLin64 PRIVATE
        "SHELL:-Xlinker --package-metadata=${quoted}")
else()
    message(STATUS "The linker knows no --package-metadata: the library cannot say its version")
endif()
