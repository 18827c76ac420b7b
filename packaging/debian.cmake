# The Debian packages, one for each component. The libraries are installed in Debian's multiarch folder, such as
# lib/x86_64-linux-gnu, which is where CMake puts them if the prefix is /usr.
if(NOT CMAKE_INSTALL_PREFIX STREQUAL /usr)
    message(FATAL_ERROR "Debian packages need -DCMAKE_INSTALL_PREFIX=/usr")
endif()
find_program(ODBOMODULE_DPKG_SHLIBDEPS dpkg-shlibdeps REQUIRED)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

# A program that is linked to the libraries of this version depends on this version or a later one.
set(runtime_package "libodbomodule${PROJECT_VERSION_MAJOR}")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME "${runtime_package}")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${PROJECT_BINARY_DIR}/support")
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")

set(same_runtime "${runtime_package} (= ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libodbomodule-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${same_runtime}")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SUGGESTS "cmake, pkgconf | pkg-config:any")
set(CPACK_DEBIAN_SYMBOLS_PACKAGE_NAME "${runtime_package}-dbgsym")
set(CPACK_DEBIAN_SYMBOLS_PACKAGE_SECTION debug)
set(CPACK_DEBIAN_SYMBOLS_PACKAGE_DEPENDS "${same_runtime}")
set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_NAME libodbomodule-doc)
set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_SECTION doc)
set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_ARCHITECTURE all)

foreach(component IN LISTS CPACK_COMPONENTS_ALL)
    string(TOUPPER "${component}" name)
    install(FILES packaging/copyright
        DESTINATION "share/doc/${CPACK_DEBIAN_${name}_PACKAGE_NAME}" COMPONENT ${component})
endforeach()
