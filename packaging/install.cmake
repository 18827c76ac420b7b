# Components: `runtime` holds the libraries, `development` what a host is built with, `documentation` the HTML.
include(CMakePackageConfigHelpers)
set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/odbomodule")

install(TARGETS odbomodule support_dll EXPORT odbomodule
    RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT runtime
    LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT runtime NAMELINK_COMPONENT development
    ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT development
    FILE_SET HEADERS DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}" COMPONENT development
    INCLUDES DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}")
if(ODBOMODULE_RUNTIME_LIBRARIES)
    install(FILES ${ODBOMODULE_RUNTIME_LIBRARIES} DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT runtime)
endif()
install(EXPORT odbomodule NAMESPACE odbomodule:: FILE odbomodule-targets.cmake
    DESTINATION "${package_dir}" COMPONENT development)

configure_package_config_file(packaging/odbomodule-config.cmake.in
    "${PROJECT_BINARY_DIR}/odbomodule-config.cmake" INSTALL_DESTINATION "${package_dir}")
write_basic_package_version_file("${PROJECT_BINARY_DIR}/odbomodule-config-version.cmake"
    COMPATIBILITY SameMajorVersion)
install(FILES
    "${PROJECT_BINARY_DIR}/odbomodule-config.cmake"
    "${PROJECT_BINARY_DIR}/odbomodule-config-version.cmake"
    DESTINATION "${package_dir}" COMPONENT development)

# The prefix is found from the place of the .pc file, so that the installed tree may be moved.
file(RELATIVE_PATH PC_PREFIX "${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig" "${CMAKE_INSTALL_PREFIX}")
string(REGEX REPLACE "/$" "" PC_PREFIX "${PC_PREFIX}")
file(RELATIVE_PATH PC_LIBDIR "${CMAKE_INSTALL_PREFIX}" "${CMAKE_INSTALL_FULL_LIBDIR}")
file(RELATIVE_PATH PC_INCLUDEDIR "${CMAKE_INSTALL_PREFIX}" "${CMAKE_INSTALL_FULL_INCLUDEDIR}")
configure_file(packaging/odbomodule.pc.in "${PROJECT_BINARY_DIR}/odbomodule.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/odbomodule.pc"
    DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig" COMPONENT development)

if(ODBOMODULE_BUILD_DOCS)
    install(DIRECTORY "${PROJECT_BINARY_DIR}/html" DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/libodbomodule-doc"
        COMPONENT documentation)
endif()
