# Run by cpack for each kind of package, before it moves the new files to the others of this version.
file(GLOB packages
    ${CPACK_PACKAGE_DIRECTORY}/${CPACK_PACKAGE_NAME}*${CPACK_PACKAGE_VERSION}*.deb
    ${CPACK_PACKAGE_DIRECTORY}/${CPACK_PACKAGE_NAME}*${CPACK_PACKAGE_VERSION}*.rpm
    ${CPACK_PACKAGE_DIRECTORY}/${CPACK_PACKAGE_NAME}*${CPACK_PACKAGE_VERSION}*.tar.gz)
set(names "")
set(sums "")
foreach(package IN LISTS CPACK_PACKAGE_FILES packages)
    cmake_path(GET package FILENAME name)
    if(NOT name IN_LIST names)
        list(APPEND names ${name})
        file(SHA256 ${package} sum)
        string(APPEND sums "${sum}  ${name}\n")
    endif()
endforeach()
file(WRITE ${CPACK_PACKAGE_DIRECTORY}/SHA256SUMS "${sums}")
