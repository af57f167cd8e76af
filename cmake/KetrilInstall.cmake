# What `cmake --install` gives: the libraries, the command with its manual page and completions, the public
# headers, an example and a CMake package, so that `find_package(KetrilTools)` in somebody's project finds all
# of it.
include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/KetrilTools)
set(header_dir ${CMAKE_INSTALL_INCLUDEDIR}/ketril)

target_include_directories(KetrilInterfaces INTERFACE $<INSTALL_INTERFACE:${header_dir}>)
set_target_properties(KetrilInterfaces PROPERTIES EXPORT_NAME Interfaces)
set_target_properties(KetrilPlatform PROPERTIES EXPORT_NAME Platform)
set_target_properties(KetrilTools PROPERTIES EXPORT_NAME Tools)
set_target_properties(KetrilEditor PROPERTIES EXPORT_NAME Editor)

# Everything finds its libraries relative to itself, wherever the tree is put.
file(RELATIVE_PATH to_libraries /${CMAKE_INSTALL_BINDIR} /${CMAKE_INSTALL_LIBDIR})
set_target_properties(KetrilTools KetrilEditor KetrilPlatform PROPERTIES INSTALL_RPATH "$ORIGIN")
set_target_properties(ketril PROPERTIES INSTALL_RPATH "$ORIGIN/${to_libraries}")

install(TARGETS KetrilInterfaces KetrilPlatform KetrilTools KetrilEditor ketril EXPORT KetrilToolsTargets
        RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT runtime
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT development)
install(DIRECTORY ${CMAKE_SOURCE_DIR}/Templates DESTINATION ${CMAKE_INSTALL_DATADIR}/ketril COMPONENT runtime)
foreach(folder man bash-completion zsh fish)
  install(DIRECTORY ${CMAKE_BINARY_DIR}/share/${folder} DESTINATION ${CMAKE_INSTALL_DATADIR} COMPONENT runtime)
endforeach()

set(doc_dir ${CMAKE_INSTALL_DATADIR}/doc/ketril)
install(FILES ${CMAKE_SOURCE_DIR}/README.md DESTINATION ${doc_dir} COMPONENT runtime)
install(FILES ${CMAKE_SOURCE_DIR}/Samples/blinker.kicad_pcb DESTINATION ${doc_dir}/examples COMPONENT runtime)

install(DIRECTORY ${CMAKE_SOURCE_DIR}/Interfaces ${CMAKE_SOURCE_DIR}/Platform ${CMAKE_SOURCE_DIR}/Editor
        DESTINATION ${header_dir} COMPONENT development
        FILES_MATCHING PATTERN "*.h" PATTERN "XmlErrors.h" EXCLUDE)
install(DIRECTORY ${CMAKE_SOURCE_DIR}/Examples/ DESTINATION ${doc_dir}/examples COMPONENT development)
install(EXPORT KetrilToolsTargets NAMESPACE Ketril:: DESTINATION ${package_dir} COMPONENT development)

configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/KetrilToolsConfig.cmake.in
                              ${CMAKE_BINARY_DIR}/KetrilToolsConfig.cmake INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(${CMAKE_BINARY_DIR}/KetrilToolsConfigVersion.cmake
                                 COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_BINARY_DIR}/KetrilToolsConfig.cmake ${CMAKE_BINARY_DIR}/KetrilToolsConfigVersion.cmake
        DESTINATION ${package_dir} COMPONENT development)
