# Exceptions and strings cross the libraries' boundary, so that all share one C++ runtime, as DLLs: MinGW's own are put
# beside what is built, and into the package. ODBOMODULE_RUNTIME_LIBRARIES is the list of them.
set(ODBOMODULE_RUNTIME_LIBRARIES "")
if(MINGW AND CMAKE_CROSSCOMPILING)
    foreach(library IN ITEMS libgcc_s_seh-1.dll libstdc++-6.dll libwinpthread-1.dll)
        execute_process(COMMAND "${CMAKE_CXX_COMPILER}" "-print-file-name=${library}"
            OUTPUT_VARIABLE path OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
        if(NOT IS_ABSOLUTE "${path}")
            message(FATAL_ERROR "The compiler has no ${library}.")
        endif()
        list(APPEND ODBOMODULE_RUNTIME_LIBRARIES "${path}")
        file(COPY "${path}" DESTINATION "${CMAKE_RUNTIME_OUTPUT_DIRECTORY}")
    endforeach()
endif()
