# SPDX-License-Identifier: MIT
# Precompiled headers: only those of Qt, the standard library and GoogleTest, so a folder still finds
# only the project headers of the folders below it. They hide missing includes; the `sanitize` preset
# builds without them to find those.

set(MWCORE_STANDARD_HEADERS
    <algorithm> <filesystem> <fstream> <functional> <map> <memory> <optional> <sstream> <string>
    <string_view> <vector>)
set(MWCORE_QT_HEADERS <QByteArray> <QDateTime> <QList> <QString> <QVariant>)

# Adds NAME, a set of precompiled headers for mwcore_precompile(): HEADERS, compiled with OPTIONS and
# the flags of LIBRARIES.
function(mwcore_add_precompiled NAME)
    cmake_parse_arguments(PRECOMPILED "" "" "HEADERS;LIBRARIES;OPTIONS" ${ARGN})
    if(NOT MWCORE_PRECOMPILE_HEADERS)
        return()
    endif()
    file(CONFIGURE OUTPUT ${NAME}.cpp CONTENT "")
    add_library(${NAME} OBJECT EXCLUDE_FROM_ALL ${CMAKE_CURRENT_BINARY_DIR}/${NAME}.cpp)
    target_link_libraries(${NAME} PRIVATE ${PRECOMPILED_LIBRARIES})
    target_compile_options(${NAME} PRIVATE ${PRECOMPILED_OPTIONS})
    list(TRANSFORM PRECOMPILED_HEADERS REPLACE "(.+)" "$<$<COMPILE_LANGUAGE:CXX>:\\1>")
    target_precompile_headers(${NAME} PRIVATE ${PRECOMPILED_HEADERS})
endfunction()

# Compiles TARGET with the precompiled headers NAME. The flags of both must be the same.
function(mwcore_precompile TARGET NAME)
    if(MWCORE_PRECOMPILE_HEADERS)
        target_precompile_headers(${TARGET} REUSE_FROM ${NAME})
    endif()
endfunction()
