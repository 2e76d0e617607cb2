# What `cmake --install` puts in place and what `cpack` packs: a .deb of everything; an .rpm of the
# library and one of the program, which asks for newer systems than the library does; a .tar.gz of the
# library alone for a host without a package manager; and SHA256SUMS of them all. Among the documents is
# what a host is built with.
set(documents README.md README.ru.md CONTRIBUTING.md CHANGELOG.md)
set(folders docs examples samples)  # which those link to
set(CMAKE_INSTALL_DEFAULT_COMPONENT_NAME library)
install(TARGETS NearTextComparerLin64 LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(FILES ${documents} DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(DIRECTORY ${folders} DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(FILES host/component_base.h DESTINATION ${CMAKE_INSTALL_DOCDIR}/host)

set(alone COMPONENT library_alone EXCLUDE_FROM_ALL)
install(TARGETS NearTextComparerLin64 LIBRARY DESTINATION . ${alone})
install(FILES ${documents} DESTINATION . ${alone})
install(DIRECTORY ${folders} DESTINATION . ${alone})
install(FILES host/component_base.h DESTINATION host ${alone})

set(CMAKE_INSTALL_DEFAULT_COMPONENT_NAME program)

if(TARGET near_text)
    install(TARGETS near_text RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})

    # The man pages and the completions of command lines come out of the program.
    if(NOT NEAR_TEXT_SANITIZE)
        set(pages)
        foreach(command IN ITEMS "" describe compare search match duplicates sweep)
            string(REGEX REPLACE "-$" "" name near_text-${command})
            set(page ${PROJECT_BINARY_DIR}/${name}.1)
            add_custom_command(OUTPUT ${page}
                COMMAND near_text help ${command} --man > ${page}
                DEPENDS near_text VERBATIM)
            list(APPEND pages ${page})
        endforeach()
        add_custom_target(man ALL DEPENDS ${pages})
        install(FILES ${pages} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)

        # Where each shell looks; zsh by one of two folders, each distribution's own.
        set(shells bash zsh fish)
        set(completions near_text.bash _near_text near_text.fish)
        set(paths)
        foreach(shell completion IN ZIP_LISTS shells completions)
            add_custom_command(OUTPUT ${PROJECT_BINARY_DIR}/${completion}
                COMMAND near_text help --completion ${shell} > ${PROJECT_BINARY_DIR}/${completion}
                DEPENDS near_text VERBATIM)
            list(APPEND paths ${PROJECT_BINARY_DIR}/${completion})
        endforeach()
        add_custom_target(completions ALL DEPENDS ${paths})
        set(share ${CMAKE_INSTALL_DATAROOTDIR})
        install(FILES ${PROJECT_BINARY_DIR}/near_text.bash RENAME near_text
            DESTINATION ${share}/bash-completion/completions)
        install(FILES ${PROJECT_BINARY_DIR}/_near_text DESTINATION ${share}/zsh/vendor-completions)
        install(FILES ${PROJECT_BINARY_DIR}/_near_text DESTINATION ${share}/zsh/site-functions)
        install(FILES ${PROJECT_BINARY_DIR}/near_text.fish
            DESTINATION ${share}/fish/vendor_completions.d)
    endif()
endif()

# Each kind of package with the tools that it takes.
set(CPACK_GENERATOR TGZ)
set(takes_DEB dpkg-shlibdeps file)
set(takes_RPM rpmbuild)
foreach(kind IN ITEMS DEB RPM)
    list(APPEND CPACK_GENERATOR ${kind})
    foreach(tool IN LISTS takes_${kind})
        find_program(NEAR_TEXT_TOOL_${tool} ${tool})
        if(NOT NEAR_TEXT_TOOL_${tool})
            list(REMOVE_ITEM CPACK_GENERATOR ${kind})
            string(TOLOWER .${kind} suffix)
            message(STATUS "${tool} is missing: no ${suffix} is packed")
        endif()
    endforeach()
endforeach()
set(CPACK_PACKAGE_NAME ${NEAR_TEXT_PACKAGE})
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "the ${NEAR_TEXT_PACKAGE} maintainers <${NEAR_TEXT_PACKAGE}@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_PACKAGE_DESCRIPTION
    "A shared library that a host application loads as an add-in, and a program to try it with.")
set(CPACK_RESOURCE_FILE_README ${PROJECT_SOURCE_DIR}/README.md)
set(CPACK_STRIP_FILES ON)
set(CPACK_SYSTEM_NAME Linux-${CMAKE_SYSTEM_PROCESSOR})
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_PROJECT_CONFIG_FILE ${PROJECT_SOURCE_DIR}/cmake/each_package.cmake)
set(CPACK_POST_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/sum_packages.cmake)

# Version 1.0.0 was packed under this name.
set(former near-text)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_REPLACES ${former})
set(CPACK_DEBIAN_PACKAGE_CONFLICTS ${former})

set(CPACK_RPM_FILE_NAME RPM-DEFAULT)
set(CPACK_RPM_MAIN_COMPONENT library)
set(CPACK_RPM_PROGRAM_PACKAGE_REQUIRES "${NEAR_TEXT_PACKAGE} = ${PROJECT_VERSION}")
set(CPACK_RPM_PACKAGE_LICENSE "see the documents")
set(CPACK_RPM_LIBRARY_PACKAGE_OBSOLETES ${former})
# Folders that belong to the system.
set(CPACK_RPM_EXCLUDE_FROM_AUTO_FILELIST_ADDITION
    /usr/${CMAKE_INSTALL_MANDIR} /usr/${CMAKE_INSTALL_MANDIR}/man1
    /usr/share/bash-completion /usr/share/bash-completion/completions
    /usr/share/zsh /usr/share/zsh/vendor-completions /usr/share/zsh/site-functions
    /usr/share/fish /usr/share/fish/vendor_completions.d)
# No links by build id, which are for debuggers.
set(CPACK_RPM_SPEC_MORE_DEFINE "%define _build_id_links none")
include(CPack)
