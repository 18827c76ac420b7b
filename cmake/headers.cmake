# odbomodule_headers([FOLDER FOLDER] PUBLIC HEADER... PRIVATE HEADER...) declares the headers of the current folder.
# Code outside source/ includes each of them as a host does, <odbomodule/FOLDER/HEADER>, by a forwarding header in
# the build folder. The public ones are installed. The global property ODBOMODULE_PUBLIC_HEADERS lists the public
# headers as a host includes them, ODBOMODULE_PUBLIC_HEADER_FILES their paths.
function(odbomodule_headers)
    cmake_parse_arguments(PARSE_ARGV 0 arg "" "FOLDER" "PUBLIC;PRIVATE")
    cmake_path(SET target_folder "odbomodule/${arg_FOLDER}")
    foreach(header IN LISTS arg_PUBLIC arg_PRIVATE)
        set(path "${CMAKE_CURRENT_SOURCE_DIR}/${header}")
        cmake_path(APPEND target_folder "${header}" OUTPUT_VARIABLE included)
        file(CONFIGURE OUTPUT "${PROJECT_BINARY_DIR}/include/${included}" CONTENT "#include \"@path@\"\n" @ONLY)
        if(header IN_LIST arg_PUBLIC)
            set_property(GLOBAL APPEND PROPERTY ODBOMODULE_PUBLIC_HEADERS "${included}")
            set_property(GLOBAL APPEND PROPERTY ODBOMODULE_PUBLIC_HEADER_FILES "${path}")
            if(ODBOMODULE_INSTALL)
                cmake_path(GET included PARENT_PATH folder)
                install(FILES "${path}" DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/${folder}" COMPONENT development)
            endif()
        endif()
    endforeach()
endfunction()
