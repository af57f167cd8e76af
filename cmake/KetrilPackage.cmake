# What `cpack` gives: two Debian packages, the command with the libraries, and what an editor is built with.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME ketril)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "board tools for printed circuit boards")  # the first line of both
set(CPACK_PACKAGE_CONTACT "KetrilTools developers <developers@ketriltools.invalid>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_PACKAGE_DIRECTORY ${CMAKE_BINARY_DIR}/packages)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_COMPONENTS_ALL runtime development)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ketril)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION electronics)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SUGGESTS "bash-completion, man-db")
# What the libraries and the command need is read from them; they find each other in the build folder.
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY "=")
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "Teardrops, via stitching and shielding, arranging and placing of components,
reports, and more, for board files of the kind .kicad_pcb. A board is changed
in the places that a tool touches, and nowhere else.
.
This package has the command, and the libraries with the tools.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME ketril-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "ketril (= ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "Headers, a CMake package and an example for editors that call the board tools
of libKetrilTools.so, or that are built on the headless editor which comes
with them.")

include(CPack)
