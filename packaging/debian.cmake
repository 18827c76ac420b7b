# The Debian packages, by Debian's own tools. Their libraries go where CMake has them on Debian for the prefix /usr: into the folder of
# their processor.
if(NOT CMAKE_INSTALL_PREFIX STREQUAL /usr)
    message(FATAL_ERROR "Debian packages need -DCMAKE_INSTALL_PREFIX=/usr")
endif()
foreach(tool IN ITEMS dpkg-shlibdeps dpkg-gensymbols)
    find_program(ODBOMODULE_${tool} ${tool} REQUIRED)
endforeach()
set(runtime_package "libodbomodule${PROJECT_VERSION_MAJOR}")
set(development_package libodbomodule-dev)
set(symbols_package "${runtime_package}-dbgsym")
set(documentation_package libodbomodule-doc)

# The changelog says which revision of the packages this is.
set(debian "${CMAKE_CURRENT_LIST_DIR}/debian")
file(STRINGS "${debian}/changelog" entry LIMIT_COUNT 1)
if(NOT entry MATCHES "\\((.*)-(.*)\\)" OR NOT CMAKE_MATCH_1 VERSION_EQUAL PROJECT_VERSION)
    message(FATAL_ERROR "${debian}/changelog does not begin with version ${PROJECT_VERSION}")
endif()
set(CPACK_DEBIAN_PACKAGE_RELEASE "${CMAKE_MATCH_2}")

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME "${runtime_package}")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${PROJECT_BINARY_DIR}/support")
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA "${debian}/triggers" "${PROJECT_BINARY_DIR}/debian/symbols")
set(same_runtime "${runtime_package} (= ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME "${development_package}")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${same_runtime}")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SUGGESTS "cmake, pkgconf | pkg-config:any")
set(CPACK_DEBIAN_SYMBOLS_PACKAGE_NAME "${symbols_package}")
set(CPACK_DEBIAN_SYMBOLS_PACKAGE_SECTION debug)
set(CPACK_DEBIAN_SYMBOLS_PACKAGE_DEPENDS "${same_runtime}")
set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_NAME "${documentation_package}")
set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_SECTION doc)
set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_ARCHITECTURE all)

# A program that was linked to this version needs at least this version, whatever symbols it refers to: a new
# enumerator that it passes is not among them. So the list is made here and not kept.
set(symbols "${PROJECT_BINARY_DIR}/debian/symbols")
configure_file("${debian}/symbols.in" "${symbols}.in" @ONLY)
add_custom_command(OUTPUT "${symbols}"
    COMMAND "${ODBOMODULE_dpkg-gensymbols}" -c0 -q "-p${runtime_package}" "-v${PROJECT_VERSION}" "-I${symbols}.in"
        "-e$<TARGET_FILE:odbomodule>" "-e$<TARGET_FILE:support_dll>" "-O${symbols}"
    DEPENDS odbomodule support_dll "${symbols}.in" VERBATIM)
add_custom_target(debian_symbols ALL DEPENDS "${symbols}")

# compressed(FILE NAME): packs a file of this tree as debian/NAME of the build folder, the same each time.
function(compressed file name)
    execute_process(COMMAND gzip -9nc "${file}" OUTPUT_FILE "${PROJECT_BINARY_DIR}/debian/${name}"
        COMMAND_ERROR_IS_FATAL ANY)
endfunction()
file(MAKE_DIRECTORY "${PROJECT_BINARY_DIR}/debian")
compressed("${PROJECT_SOURCE_DIR}/CHANGELOG.md" changelog.gz)
compressed("${debian}/changelog" changelog.Debian.gz)
foreach(component IN LISTS CPACK_COMPONENTS_ALL)
    set(package "${${component}_package}")
    install(FILES "${debian}/copyright" "${PROJECT_BINARY_DIR}/debian/changelog.gz"
            "${PROJECT_BINARY_DIR}/debian/changelog.Debian.gz"
        DESTINATION "share/doc/${package}" COMPONENT ${component})
    file(READ "${debian}/lintian-overrides" overrides)
    if(EXISTS "${debian}/${component}.lintian-overrides")
        file(READ "${debian}/${component}.lintian-overrides" more)
        string(APPEND overrides "${more}")
    endif()
    file(WRITE "${PROJECT_BINARY_DIR}/debian/${package}" "${overrides}")
    install(FILES "${PROJECT_BINARY_DIR}/debian/${package}" DESTINATION share/lintian/overrides COMPONENT ${component})
endforeach()
