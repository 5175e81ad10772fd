# What "cmake --install" puts where: the library, its headers, the package files for CMake and
# pkg-config, the tzparse program and its manual page. The headers' folder carries the major version,
# so that two of them can be installed side by side.
include(CMakePackageConfigHelpers)

set(package_headers ${CMAKE_INSTALL_INCLUDEDIR}/tzparser-${PROJECT_VERSION_MAJOR})
set(package_config ${CMAKE_INSTALL_LIBDIR}/cmake/TzParser)
set(package_pkgconfig ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

install(TARGETS TzParser EXPORT TzParserTargets LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(DIRECTORY libsrc/ DESTINATION ${package_headers} FILES_MATCHING PATTERN "*.h")

install(EXPORT TzParserTargets NAMESPACE TzParser:: DESTINATION ${package_config})
configure_package_config_file(cmake/TzParserConfig.cmake.in ${PROJECT_BINARY_DIR}/TzParserConfig.cmake
    INSTALL_DESTINATION ${package_config} NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/TzParserConfigVersion.cmake
    COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/TzParserConfig.cmake ${PROJECT_BINARY_DIR}/TzParserConfigVersion.cmake
    DESTINATION ${package_config})

# The paths of the pkg-config file start at the file itself, so an installed tree can be moved.
file(RELATIVE_PATH package_prefix /prefix/${package_pkgconfig} /prefix)
string(REGEX REPLACE "/$" "" package_prefix "${package_prefix}")
configure_file(cmake/tzparser.pc.in ${PROJECT_BINARY_DIR}/tzparser.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/tzparser.pc DESTINATION ${package_pkgconfig})

if(TARGET tzparse)
    file(RELATIVE_PATH library_from_program /prefix/${CMAKE_INSTALL_BINDIR} /prefix/${CMAKE_INSTALL_LIBDIR})
    set_target_properties(tzparse PROPERTIES INSTALL_RPATH "$ORIGIN/${library_from_program}")
    install(TARGETS tzparse RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()
if(EXISTS ${PROJECT_SOURCE_DIR}/tools/tzparse/tzparse.1)
    install(FILES tools/tzparse/tzparse.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
endif()
