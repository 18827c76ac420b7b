# `cpack` in the build folder writes a .zip for Windows. Elsewhere it writes a .tar.gz, or Debian packages with
# ODBOMODULE_DEBIAN_PACKAGES.
set(CPACK_PACKAGE_CONTACT "The odbomodule maintainers <odbomodule@localhost>")
set(CPACK_PACKAGE_VENDOR "odbomodule")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_PACKAGE_DIRECTORY "${PROJECT_BINARY_DIR}/packages")
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL runtime development symbols)
if(ODBOMODULE_BUILD_DOCS)
    list(APPEND CPACK_COMPONENTS_ALL documentation)
endif()

set(about "An application composes sets, members, values and tuples step by step,
and the library writes one MDX statement from them.")
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "${about}\nThis package contains the libraries.")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION
    "${about}\nThis package contains the headers, the build files and the guides.")
set(CPACK_COMPONENT_SYMBOLS_DESCRIPTION "${about}\nThis package contains the debug symbols of the libraries.")
set(CPACK_COMPONENT_DOCUMENTATION_DESCRIPTION
    "${about}\nThis package contains the guides and the reference as HTML.")

if(WIN32)
    set(CPACK_GENERATOR ZIP)
elseif(ODBOMODULE_DEBIAN_PACKAGES)
    set(CPACK_GENERATOR DEB)
    include(packaging/debian.cmake)
else()
    set(CPACK_GENERATOR TGZ)
endif()
include(CPack)
