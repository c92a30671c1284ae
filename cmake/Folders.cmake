# SPDX-License-Identifier: MIT
# Folders as targets, each of which sees the headers of the folders below it and no
# others, and the libraries that are made of them.

# Adds the folder PATH (from the top), with the CMakeLists.txt in it: an object library named after
# its path (platform_files). Paths of files are relative to the folder.
#   BELOW      the folders that it is built on; it sees what those see as well
#   USES       other libraries, which the folders above see too
#   SOURCES    sources, and the headers that no other folder sees
#   HEADERS    headers for the folders above, included by their path from the top
#   INSTALLED  headers for programs too, included as <MWCore/NAME.h>
function(mwcore_add_folder PATH)
    cmake_parse_arguments(FOLDER "" "" "BELOW;USES;SOURCES;HEADERS;INSTALLED" ${ARGN})
    if(FOLDER_UNPARSED_ARGUMENTS)
        message(FATAL_ERROR "${PATH}: what is ${FOLDER_UNPARSED_ARGUMENTS}?")
    endif()
    string(REPLACE "/" "_" target ${PATH})
    list(TRANSFORM FOLDER_BELOW REPLACE "/" "_")
    add_library(${target} OBJECT ${FOLDER_SOURCES} ${FOLDER_HEADERS} ${FOLDER_INSTALLED})
    set_target_properties(${target} PROPERTIES POSITION_INDEPENDENT_CODE ON)
    target_link_libraries(${target} PUBLIC ${FOLDER_BELOW} ${FOLDER_USES})

    # What a folder sees is what is linked here, and nothing else of the tree.
    set(seen ${PROJECT_BINARY_DIR}/headers/${target})
    file(REMOVE_RECURSE ${seen})
    set(own ${FOLDER_SOURCES})
    list(FILTER own INCLUDE REGEX "\\.h$")
    mwcore_link_headers(${seen}/own/${PATH} ${own})
    mwcore_link_headers(${seen}/above/${PATH} ${FOLDER_HEADERS} ${FOLDER_INSTALLED})
    mwcore_link_headers(${seen}/above/MWCore ${FOLDER_INSTALLED})
    target_include_directories(${target} PRIVATE ${seen}/own PUBLIC ${seen}/above)

    mwcore_link_headers(${PROJECT_BINARY_DIR}/include/MWCore ${FOLDER_INSTALLED})
    install(FILES ${FOLDER_INSTALLED} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/MWCore)
endfunction()

# Links headers of this folder into another, flat.
function(mwcore_link_headers INTO)
    file(MAKE_DIRECTORY ${INTO})
    foreach(header ${ARGN})
        cmake_path(GET header FILENAME name)
        file(CREATE_LINK ${CMAKE_CURRENT_SOURCE_DIR}/${header} ${INTO}/${name} SYMBOLIC)
    endforeach()
endfunction()

# Adds the shared library NAME, exported as MWCore::NAME, with NAME.pc.
#   DESCRIPTION  one line, for pkg-config
#   FOLDERS      what it is made of, from the bottom up; added here unless they were before
#   LINKS        the libraries that its headers need
#   REQUIRES     the same as pkg-config packages
function(mwcore_add_library NAME)
    cmake_parse_arguments(LIBRARY "" "DESCRIPTION" "FOLDERS;LINKS;REQUIRES" ${ARGN})
    foreach(folder ${LIBRARY_FOLDERS})
        string(REPLACE "/" "_" target ${folder})
        if(NOT TARGET ${target})
            add_subdirectory(${folder})
        endif()
    endforeach()
    list(TRANSFORM LIBRARY_FOLDERS REPLACE "/" "_")
    list(TRANSFORM LIBRARY_FOLDERS REPLACE "(.+)" "$<BUILD_INTERFACE:\\1>" OUTPUT_VARIABLE objects)
    add_library(${NAME} SHARED)
    add_library(MWCore::${NAME} ALIAS ${NAME})
    target_link_libraries(${NAME} PUBLIC ${LIBRARY_LINKS} PRIVATE ${objects})
    target_link_options(${NAME} PRIVATE -Wl,--as-needed)
    set_target_properties(${NAME} PROPERTIES INSTALL_RPATH $ORIGIN) # they lie beside one another
    mwcore_install_library(${NAME} "${LIBRARY_DESCRIPTION}" REQUIRES ${LIBRARY_REQUIRES})

    # For tests of what the library hides.
    add_library(${NAME}_inside INTERFACE)
    target_link_libraries(${NAME}_inside INTERFACE ${LIBRARY_LINKS})
    foreach(folder ${LIBRARY_FOLDERS})
        target_sources(${NAME}_inside INTERFACE $<TARGET_OBJECTS:${folder}>)
    endforeach()
endfunction()
