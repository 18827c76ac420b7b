# Compiler and linker options. All of them are private, except that a host must compile as C++17 or later.
set(ODBOMODULE_HIDE_STD_MAP "${CMAKE_CURRENT_LIST_DIR}/hide_std.map")

# Whether the compiler accepts the options of g++. clang-cl, which accepts those of Visual Studio, does not.
set(ODBOMODULE_GNU_FLAGS OFF)
if(CMAKE_CXX_COMPILER_ID MATCHES "^(GNU|Clang)$" AND NOT MSVC)
    set(ODBOMODULE_GNU_FLAGS ON)
endif()
if(ODBOMODULE_SANITIZE AND NOT ODBOMODULE_GNU_FLAGS)
    message(FATAL_ERROR "ODBOMODULE_SANITIZE is for g++ and clang")
endif()

function(odbomodule_compile_options target)
    target_compile_features(${target} PRIVATE cxx_std_20)
    set_target_properties(${target} PROPERTIES CXX_STANDARD 20 CXX_STANDARD_REQUIRED ON CXX_EXTENSIONS OFF)
    if(ODBOMODULE_GNU_FLAGS)
        set(warnings -Wall -Wextra -Wpedantic -Wconversion -Wshadow $<$<BOOL:${ODBOMODULE_WERROR}>:-Werror>)
    elseif(MSVC)
        set(warnings /W4 /utf-8 $<$<BOOL:${ODBOMODULE_WERROR}>:/WX>)
    endif()
    target_compile_options(${target} PRIVATE "$<$<COMPILE_LANGUAGE:CXX>:${warnings}>")
    if(WIN32)
        target_compile_definitions(${target} PRIVATE WIN32_LEAN_AND_MEAN NOMINMAX)
    endif()
    if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
        # A false warning about the concatenation of std::string at -O3.
        target_compile_options(${target} PRIVATE $<$<COMPILE_LANGUAGE:CXX>:-Wno-restrict>)
    endif()
    if(ODBOMODULE_SANITIZE)
        # -fsanitize=function compares the addresses of type information, which each library has a copy of.
        set(sanitize -fsanitize=${ODBOMODULE_SANITIZE} -fno-sanitize-recover=all
            $<$<CXX_COMPILER_ID:Clang>:-fno-sanitize=function>)
        target_compile_options(${target} PRIVATE ${sanitize} -fno-omit-frame-pointer)
        target_compile_definitions(${target} PRIVATE _GLIBCXX_ASSERTIONS)
        target_link_options(${target} PRIVATE ${sanitize})
    endif()
endfunction()

# A shared library that exports only what is marked for export.
function(odbomodule_shared_library target)
    odbomodule_compile_options(${target})
    target_compile_features(${target} INTERFACE cxx_std_17)
    target_link_libraries(${target} PRIVATE Threads::Threads)
    set_target_properties(${target} PROPERTIES
        VERSION ${PROJECT_VERSION}
        SOVERSION ${PROJECT_VERSION_MAJOR}
        CXX_VISIBILITY_PRESET hidden
        VISIBILITY_INLINES_HIDDEN ON)
    if(MSVC)
        # The debug libraries need the debug runtime, so a host's release build must not find them.
        set_target_properties(${target} PROPERTIES DEBUG_POSTFIX d)
    endif()
    if(WIN32)
        set_target_properties(${target} PROPERTIES PREFIX "")
        configure_file("${PROJECT_SOURCE_DIR}/cmake/version.rc.in" "${target}.rc" @ONLY)
        target_sources(${target} PRIVATE "${CMAKE_CURRENT_BINARY_DIR}/${target}.rc")
    endif()
    if(ODBOMODULE_GNU_FLAGS)
        # With frame pointers, a sanitizer or profiler of the host can follow the stack through the library.
        target_compile_options(${target} PRIVATE -fno-omit-frame-pointer)
    endif()
    if(ODBOMODULE_GNU_FLAGS AND NOT WIN32)
        set_target_properties(${target} PROPERTIES
            INSTALL_RPATH "$ORIGIN"
            LINK_DEPENDS "${ODBOMODULE_HIDE_STD_MAP}")
        # Packages have the debug symbols in a separate file. It names sources relative to the root of the tree.
        set(prefixes "-ffile-prefix-map=${PROJECT_SOURCE_DIR}=." "-ffile-prefix-map=${PROJECT_BINARY_DIR}=build")
        target_compile_options(${target} PRIVATE -fno-semantic-interposition -g "$<$<CONFIG:Release>:${prefixes}>")
        # Distributions harden with these too.
        set(hardening -fstack-protector-strong -fstack-clash-protection -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2)
        if(CMAKE_SYSTEM_PROCESSOR STREQUAL x86_64)
            list(APPEND hardening -fcf-protection)
        endif()
        target_compile_options(${target} PRIVATE "$<$<CONFIG:Release>:${hardening}>")
        target_link_options(${target} PRIVATE
            "LINKER:--version-script=${ODBOMODULE_HIDE_STD_MAP}" LINKER:-z,relro,-z,now LINKER:--build-id)
        if(NOT ODBOMODULE_SANITIZE)
            target_link_options(${target} PRIVATE LINKER:--no-undefined)
        endif()
    endif()
endfunction()
