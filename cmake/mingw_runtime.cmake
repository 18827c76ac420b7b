# Exceptions and strings go from library to library and to the host, so that all of them must share one C++ runtime.
# MinGW's runtime DLLs are copied beside what is built, without their debug information, and go into the package with
# their licences. ODBOMODULE_RUNTIME_LIBRARIES lists their paths.
set(ODBOMODULE_RUNTIME_LIBRARIES "")
if(MINGW AND CMAKE_CROSSCOMPILING)
    file(MAKE_DIRECTORY "${CMAKE_RUNTIME_OUTPUT_DIRECTORY}")
    foreach(library IN ITEMS libgcc_s_seh-1.dll libstdc++-6.dll libwinpthread-1.dll)
        execute_process(COMMAND "${CMAKE_CXX_COMPILER}" "-print-file-name=${library}"
            OUTPUT_VARIABLE path OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
        if(NOT IS_ABSOLUTE "${path}")
            message(FATAL_ERROR "The compiler has no ${library}.")
        endif()
        set(copy "${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/${library}")
        execute_process(COMMAND "${CMAKE_STRIP}" -o "${copy}" "${path}" COMMAND_ERROR_IS_FATAL ANY)
        list(APPEND ODBOMODULE_RUNTIME_LIBRARIES "${copy}")
    endforeach()
endif()
