# `cpack` in the build folder: a .zip for Windows; elsewhere a .tar.gz, or the Debian packages when they are wanted.
set(CPACK_PACKAGE_CONTACT "The odbomodule maintainers <odbomodule@localhost>")
set(CPACK_PACKAGE_VENDOR "odbomodule")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_PACKAGE_DIRECTORY "${PROJECT_BINARY_DIR}/packages")
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL runtime development symbols)
if(ODBOMODULE_BUILD_DOCS)
    list(APPEND CPACK_COMPONENTS_ALL documentation)
endif()

set(about "A host asks a generator for sets, members, values and tuples,
composes them by analytical steps, and gets the text of one MDX statement.")
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "${about}\nThese are the libraries that it needs in order to run.")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION
    "${about}\nThese are the headers, build files and guides for writing a host.")
set(CPACK_COMPONENT_SYMBOLS_DESCRIPTION "${about}\nThese are the debug symbols of the libraries.")
set(CPACK_COMPONENT_DOCUMENTATION_DESCRIPTION "${about}\nThese are the guides and the reference, as HTML.")

if(WIN32)
    set(CPACK_GENERATOR ZIP)
elseif(ODBOMODULE_DEBIAN_PACKAGES)
    set(CPACK_GENERATOR DEB)
    include(packaging/debian.cmake)
else()
    set(CPACK_GENERATOR TGZ)
endif()
include(CPack)
