# What `cmake --install` puts in place and `cpack` packs: the library, the README and, where they are
# built, the program with its man pages and the samples.
install(TARGETS NearTextComparerLin64 LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(FILES README.md DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(DIRECTORY docs DESTINATION ${CMAKE_INSTALL_DOCDIR})

if(TARGET near_text)
    install(TARGETS near_text RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
    install(DIRECTORY samples DESTINATION ${CMAKE_INSTALL_DOCDIR})

    # The man pages are what the program says of itself.
    find_program(HELP2MAN help2man)
    if(HELP2MAN AND NOT NEAR_TEXT_SANITIZE)
        set(pages)
        foreach(command IN ITEMS near_text describe compare search match duplicates sweep)
            if(command STREQUAL "near_text")
                set(page near_text.1)
                set(call $<TARGET_FILE:near_text>)
                set(name "tell which texts are alike")
            else()
                set(page near_text-${command}.1)
                set(call "$<TARGET_FILE:near_text> ${command}")
                set(name "the command ${command} of near_text")
            endif()
            add_custom_command(OUTPUT ${page}
                COMMAND ${HELP2MAN} --no-info --no-discard-stderr --name=${name}
                    --version-string=${PROJECT_VERSION} --output=${page} ${call}
                DEPENDS near_text VERBATIM)
            list(APPEND pages ${PROJECT_BINARY_DIR}/${page})
        endforeach()
        add_custom_target(man ALL DEPENDS ${pages})
        install(FILES ${pages} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
    endif()
endif()

set(CPACK_GENERATOR "TGZ;DEB")
set(CPACK_PACKAGE_NAME near-text)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "the near-text maintainers <near-text@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_PACKAGE_DESCRIPTION
    "A shared library that a host application loads as an add-in, and a program to try it with.")
set(CPACK_RESOURCE_FILE_README ${PROJECT_SOURCE_DIR}/README.md)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "libc6, libgcc-s1, libstdc++6 (>= 12)")
set(CPACK_DEBIAN_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
include(CPack)
