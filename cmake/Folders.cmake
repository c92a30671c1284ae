# SPDX-License-Identifier: MIT
# The build structure: each folder is a target that can include only its own headers and those of the
# folders below it. Libraries are made of folders.

# Adds the folder PATH (from the top of the tree) as an object library that is named after its path
# (platform_files). Called from the folder's CMakeLists.txt; file names are relative to the folder.
#   BELOW      the folders that it depends on; their dependencies are inherited
#   USES       other libraries; folders above inherit them
#   SOURCES    sources and private headers
#   HEADERS    headers for the folders above, included by their path from the top
#   INSTALLED  public headers, also included as <MWCore/NAME.h>
function(mwcore_add_folder PATH)
    cmake_parse_arguments(FOLDER "" "" "BELOW;USES;SOURCES;HEADERS;INSTALLED" ${ARGN})
    if(FOLDER_UNPARSED_ARGUMENTS)
        message(FATAL_ERROR "${PATH}: unknown arguments ${FOLDER_UNPARSED_ARGUMENTS}")
    endif()
    string(REPLACE "/" "_" target ${PATH})
    list(TRANSFORM FOLDER_BELOW REPLACE "/" "_")
    add_library(${target} OBJECT ${FOLDER_SOURCES} ${FOLDER_HEADERS} ${FOLDER_INSTALLED})
    set_target_properties(${target} PROPERTIES POSITION_INDEPENDENT_CODE ON)
    target_link_libraries(${target} PUBLIC ${FOLDER_BELOW} ${FOLDER_USES})
    if(NOT PATH MATCHES "^core") # the core does not use Qt
        mwcore_precompile(${target} precompiled)
    endif()

    # The compiler finds only the headers that are linked here, and no others of the tree.
    set(visible ${PROJECT_BINARY_DIR}/headers/${target})
    file(REMOVE_RECURSE ${visible})
    set(own ${FOLDER_SOURCES})
    list(FILTER own INCLUDE REGEX "\\.h$")
    mwcore_link_headers(${visible}/own/${PATH} ${own})
    mwcore_link_headers(${visible}/above/${PATH} ${FOLDER_HEADERS} ${FOLDER_INSTALLED})
    mwcore_link_headers(${visible}/above/MWCore ${FOLDER_INSTALLED})
    target_include_directories(${target} PRIVATE ${visible}/own PUBLIC ${visible}/above)

    mwcore_link_headers(${PROJECT_BINARY_DIR}/include/MWCore ${FOLDER_INSTALLED})
    install(FILES ${FOLDER_INSTALLED} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/MWCore)
endfunction()

# Makes symbolic links to headers of the current folder in the folder INTO.
function(mwcore_link_headers INTO)
    file(MAKE_DIRECTORY ${INTO})
    foreach(header ${ARGN})
        cmake_path(GET header FILENAME name)
        file(CREATE_LINK ${CMAKE_CURRENT_SOURCE_DIR}/${header} ${INTO}/${name} SYMBOLIC)
    endforeach()
endfunction()

# Adds the shared library NAME, exported as MWCore::NAME, with NAME.pc.
#   DESCRIPTION  one line for pkg-config
#   FOLDERS      the folders that it consists of, lowest first; added here if they are not yet
#   LINKS        the libraries that its headers need
#   REQUIRES     the same libraries as pkg-config packages
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
    set_target_properties(${NAME} PROPERTIES INSTALL_RPATH $ORIGIN) # installed beside one another
    mwcore_install_library(${NAME} "${LIBRARY_DESCRIPTION}" REQUIRES ${LIBRARY_REQUIRES})

    # For tests of functions that the library does not export.
    add_library(${NAME}_inside INTERFACE)
    target_link_libraries(${NAME}_inside INTERFACE ${LIBRARY_LINKS})
    foreach(folder ${LIBRARY_FOLDERS})
        target_sources(${NAME}_inside INTERFACE $<TARGET_OBJECTS:${folder}>)
        target_link_libraries(${NAME}_inside INTERFACE $<LINK_ONLY:${folder}>) # what it USES
    endforeach()
endfunction()
