# Components: `runtime` has the libraries and, except on Windows, the gdb printers; `development` has the headers,
# the files for CMake and pkg-config, and the guides; `symbols` has the debug symbols in separate files;
# `documentation` has the HTML.
include(CMakePackageConfigHelpers)
set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/odbomodule")
set(doc_dir "${CMAKE_INSTALL_DATAROOTDIR}/doc/odbomodule") # CMAKE_INSTALL_DOCDIR may be a surrounding project's

install(TARGETS odbomodule support_dll EXPORT odbomodule
    RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT runtime
    LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT runtime NAMELINK_COMPONENT development
    ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT development
    INCLUDES DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}")
if(MSVC)
    install(FILES "$<TARGET_PDB_FILE:odbomodule>" "$<TARGET_PDB_FILE:support_dll>"
        DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT development OPTIONAL)
endif()
if(ODBOMODULE_RUNTIME_LIBRARIES)
    install(FILES ${ODBOMODULE_RUNTIME_LIBRARIES} DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT runtime)
    # The licences of MinGW's runtime, from the Debian packages of its compiler and headers.
    function(install_licence file name)
        if(NOT EXISTS "${file}")
            message(FATAL_ERROR "The package contains the compiler's runtime and needs its licence: ${file}")
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

# The .pc file gives the prefix relative to itself, so the installed tree can be moved.
file(RELATIVE_PATH PC_PREFIX "${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig" "${CMAKE_INSTALL_PREFIX}")
string(REGEX REPLACE "/$" "" PC_PREFIX "${PC_PREFIX}")
file(RELATIVE_PATH PC_LIBDIR "${CMAKE_INSTALL_PREFIX}" "${CMAKE_INSTALL_FULL_LIBDIR}")
file(RELATIVE_PATH PC_INCLUDEDIR "${CMAKE_INSTALL_PREFIX}" "${CMAKE_INSTALL_FULL_INCLUDEDIR}")
set(PC_SYSTEM_LIBS "")
if(WIN32)
    set(PC_SYSTEM_LIBS " -loleaut32") # OLE automation, for the VARIANT values of conditions
endif()
configure_file(packaging/odbomodule.pc.in "${PROJECT_BINARY_DIR}/odbomodule.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/odbomodule.pc"
    DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig" COMPONENT development)

if(ODBOMODULE_BUILD_DOCS)
    install(DIRECTORY "${PROJECT_BINARY_DIR}/html" DESTINATION "${doc_dir}" COMPONENT documentation)
endif()

# The gdb printers. gdb loads a script that is named after a library. For a library in /usr it looks in a system
# folder, otherwise in the library's folder, which the user must have declared safe.
if(NOT WIN32)
    set(gdb_dir "${CMAKE_INSTALL_LIBDIR}")
    if(CMAKE_INSTALL_PREFIX STREQUAL /usr)
        set(gdb_dir "share/gdb/auto-load/usr/${CMAKE_INSTALL_LIBDIR}")
    endif()
    install(FILES debuggers/odbomodule-gdb.py DESTINATION "${gdb_dir}" COMPONENT runtime
        RENAME "$<TARGET_FILE_NAME:odbomodule>-gdb.py")
    # Installed only if this component is named. The libraries of a full installation contain the symbols.
    install(CODE "set(libraries \"$<TARGET_FILE:odbomodule>;$<TARGET_FILE:support_dll>\")
        set(readelf \"${CMAKE_READELF}\")
        set(objcopy \"${CMAKE_OBJCOPY}\")"
        COMPONENT symbols EXCLUDE_FROM_ALL)
    install(SCRIPT packaging/install_symbols.cmake COMPONENT symbols EXCLUDE_FROM_ALL)
endif()

install(FILES README.md CHANGELOG.md DESTINATION "${doc_dir}" COMPONENT development)
install(DIRECTORY docs examples DESTINATION "${doc_dir}" COMPONENT development
    FILES_MATCHING PATTERN "*.md" PATTERN "*.svg" PATTERN "*.cpp" PATTERN "*.h" PATTERN "*.json")
