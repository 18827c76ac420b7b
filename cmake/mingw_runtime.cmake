# The libraries and the host exchange exceptions and strings, so all of them must use the same C++ runtime. MinGW's
# runtime DLLs are copied to the folder of the programs, without debug information, and are packed with their
# licences. ODBOMODULE_RUNTIME_LIBRARIES lists the copies.
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
