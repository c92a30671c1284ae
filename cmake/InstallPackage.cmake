# SPDX-License-Identifier: MIT
# Installation: find_package(MWCore) with targets MWCore::NAME, and one pkg-config file per library.
include(CMakePackageConfigHelpers)

# Exports TARGET as MWCore::TARGET and writes TARGET.pc with the given DESCRIPTION and the required
# pkg-config packages REQUIRES.
function(mwcore_install_library TARGET DESCRIPTION)
    cmake_parse_arguments(LIBRARY "" "" "REQUIRES" ${ARGN})
    list(JOIN LIBRARY_REQUIRES " " REQUIRES)
    set_target_properties(${TARGET} PROPERTIES
        VERSION ${PROJECT_VERSION}
        SOVERSION ${PROJECT_VERSION_MAJOR})
    target_include_directories(${TARGET} INTERFACE
        $<BUILD_INTERFACE:${PROJECT_BINARY_DIR}/include>
        $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
    install(TARGETS ${TARGET} EXPORT MWCore LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
    set(LIBRARY ${TARGET})
    # Relative, so that the installation can be moved.
    file(RELATIVE_PATH PREFIX_FROM_PKGCONFIG
        ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
    configure_file(${PROJECT_SOURCE_DIR}/cmake/library.pc.in ${TARGET}.pc @ONLY)
    install(FILES ${CMAKE_CURRENT_BINARY_DIR}/${TARGET}.pc
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endfunction()

# Writes and installs the files that find_package(MWCore) reads.
function(mwcore_install_package)
    set(destination ${CMAKE_INSTALL_LIBDIR}/cmake/MWCore)
    set(built ${PROJECT_BINARY_DIR}/cmake)
    install(EXPORT MWCore NAMESPACE MWCore:: FILE MWCoreTargets.cmake DESTINATION ${destination})
    configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/MWCoreConfig.cmake.in
        ${built}/MWCoreConfig.cmake INSTALL_DESTINATION ${destination})
    write_basic_package_version_file(${built}/MWCoreConfigVersion.cmake
        COMPATIBILITY SameMajorVersion)
    install(FILES ${built}/MWCoreConfig.cmake ${built}/MWCoreConfigVersion.cmake
        DESTINATION ${destination})
    install(FILES ${PROJECT_SOURCE_DIR}/LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR})
endfunction()
