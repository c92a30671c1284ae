# SPDX-License-Identifier: MIT
# Compile options for every target of this project.

# 64-bit file sizes, inode numbers and times on every processor; GNU and Linux interfaces.
add_compile_definitions(_GNU_SOURCE _FILE_OFFSET_BITS=64 _TIME_BITS=64)

add_compile_options(-Wall -Wextra -Wpedantic -Wconversion -Wshadow)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    add_compile_options(-Wno-restrict) # false positive for "text" + std::string (GCC bug 105651)
endif()
if(MWCORE_WARNINGS_AS_ERRORS)
    add_compile_options(-Werror)
endif()

if(MWCORE_SANITIZE)
    set(sanitizers -fsanitize=${MWCORE_SANITIZE} -fno-sanitize=vptr)
    # -g1: reports need only line numbers.
    add_compile_options(
        ${sanitizers} -fno-sanitize-recover=all -fno-omit-frame-pointer -O1 -g1)
    add_link_options(${sanitizers})
endif()

if(MWCORE_FUZZ)
    add_compile_options(-fsanitize=fuzzer-no-link) # coverage feedback for the fuzzer
endif()
