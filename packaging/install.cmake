# Components: `runtime` holds the libraries, `development` what a host is built with, `symbols` the libraries' debug
# symbols by themselves, `documentation` the HTML.
include(CMakePackageConfigHelpers)
set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/odbomodule")
set(doc_dir "${CMAKE_INSTALL_DATAROOTDIR}/doc/odbomodule") # that of CMake is a surrounding project's

install(TARGETS odbomodule support_dll EXPORT odbomodule
    RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT runtime
    LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT runtime NAMELINK_COMPONENT development
    ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT development
    INCLUDES DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}")
if(ODBOMODULE_RUNTIME_LIBRARIES)
    install(FILES ${ODBOMODULE_RUNTIME_LIBRARIES} DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT runtime)
    # Debian keeps the licences of these libraries with their compiler and its headers.
    function(install_licence file name)
        if(NOT EXISTS "${file}")
            message(FATAL_ERROR "${file} is missing, which goes into the package with the compiler's runtime")
        endif()
        install(FILES "${file}" DESTINATION "${doc_dir}/licences" RENAME "${name}" COMPONENT runtime)
    endfunction()
    install_licence(/usr/share/doc/gcc-mingw-w64-base/copyright libgcc_and_libstdc++.txt)
    install_licence(/usr/share/doc/mingw-w64-x86-64-dev/copyright libwinpthread.txt)
    install_licence(/usr/share/common-licenses/GPL-3 GPL-3.txt)
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
set(PC_SYSTEM_LIBS "")
if(WIN32)
    set(PC_SYSTEM_LIBS " -loleaut32") # the values of conditions
endif()
configure_file(packaging/odbomodule.pc.in "${PROJECT_BINARY_DIR}/odbomodule.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/odbomodule.pc"
    DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig" COMPONENT development)

if(ODBOMODULE_BUILD_DOCS)
    set(html_dir "${doc_dir}")
    if(ODBOMODULE_DEBIAN_PACKAGES)
        set(html_dir share/doc/libodbomodule-doc)
        install(FILES packaging/odbomodule.doc-base DESTINATION share/doc-base RENAME libodbomodule-doc
            COMPONENT documentation)
    endif()
    install(DIRECTORY "${PROJECT_BINARY_DIR}/html" DESTINATION "${html_dir}" COMPONENT documentation)
endif()

# What debuggers show. gdb loads a script by its library's name: from one folder of the system's, and from beside a
# library that its user trusts.
if(NOT WIN32)
    set(gdb_dir "${CMAKE_INSTALL_LIBDIR}")
    if(CMAKE_INSTALL_PREFIX STREQUAL /usr)
        set(gdb_dir "share/gdb/auto-load/usr/${CMAKE_INSTALL_LIBDIR}")
    endif()
    install(FILES debuggers/odbomodule-gdb.py DESTINATION "${gdb_dir}" COMPONENT runtime
        RENAME "$<TARGET_FILE_NAME:odbomodule>-gdb.py")
    # Left out of a whole installation, whose libraries have their symbols in them.
    install(CODE "set(libraries \"$<TARGET_FILE:odbomodule>;$<TARGET_FILE:support_dll>\")
        set(readelf \"${CMAKE_READELF}\")
        set(objcopy \"${CMAKE_OBJCOPY}\")"
        COMPONENT symbols EXCLUDE_FROM_ALL)
    install(SCRIPT packaging/install_symbols.cmake COMPONENT symbols EXCLUDE_FROM_ALL)
endif()

install(FILES README.md CHANGELOG.md DESTINATION "${doc_dir}" COMPONENT development)
install(DIRECTORY docs DESTINATION "${doc_dir}" COMPONENT development FILES_MATCHING PATTERN "*.md")
