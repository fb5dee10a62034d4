# SPDX-License-Identifier: Apache-2.0
# Installation: libraries, headers, the CMake package KxApi with one component per library, pkg-config files.
#
# `cmake --install ... --component NAME` installs a part: runtime (libraries), development (headers, CMake and pkg-config
# files), viewer (kxviewer and kx), producers (simulated and real cameras), documentation.
include(CMakePackageConfigHelpers)

# A folder of our own: Base/ and GenApi/ are the standard's header paths, and another implementation of it may lie in
# the same prefix.
set(KXAPI_INSTALL_INCLUDEDIR "${CMAKE_INSTALL_INCLUDEDIR}/kxapi")
set(KXAPI_INSTALL_CMAKEDIR "${CMAKE_INSTALL_LIBDIR}/cmake/KxApi")
set(KXAPI_INSTALL_PKGCONFIGDIR "${CMAKE_INSTALL_LIBDIR}/pkgconfig")

# kxapi_install_component(component TARGETS target... HEADERS folder [REQUIRES component...])
#
# Makes the targets a component of the package KxApi, together with the components it requires.
function(kxapi_install_component component)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "HEADERS" "TARGETS;REQUIRES")
    install(TARGETS ${arg_TARGETS}
        EXPORT KxApi${component}
        LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT runtime NAMELINK_COMPONENT development
        INCLUDES DESTINATION "${KXAPI_INSTALL_INCLUDEDIR}")
    install(DIRECTORY "${arg_HEADERS}/" DESTINATION "${KXAPI_INSTALL_INCLUDEDIR}"
        COMPONENT development
        FILES_MATCHING PATTERN "*.h")
    install(EXPORT KxApi${component}
        NAMESPACE KxApi::
        FILE KxApi${component}Targets.cmake
        DESTINATION "${KXAPI_INSTALL_CMAKEDIR}"
        COMPONENT development)
    set_property(GLOBAL APPEND PROPERTY KXAPI_COMPONENTS ${component})
    set_property(GLOBAL APPEND_STRING PROPERTY KXAPI_COMPONENT_REQUIREMENTS
        "set(_KxApi_${component}_requires ${arg_REQUIRES})\n")
endfunction()

# kxapi_install_foreign_genapi(): component GenApi, and pkg-config file, of a package that was built against another
# installation.
function(kxapi_install_foreign_genapi)
    file(CONFIGURE OUTPUT "${PROJECT_BINARY_DIR}/KxApiGenApiTargets.cmake" @ONLY CONTENT
        "set(KXAPI_GENAPI_ROOT [[@KXAPI_GENAPI_ROOT@]])\ninclude(\"\${CMAKE_CURRENT_LIST_DIR}/KxApiForeignGenApi.cmake\")\n")
    install(FILES "${PROJECT_BINARY_DIR}/KxApiGenApiTargets.cmake" "${PROJECT_SOURCE_DIR}/cmake/KxApiForeignGenApi.cmake"
        DESTINATION "${KXAPI_INSTALL_CMAKEDIR}"
        COMPONENT development)
    set_property(GLOBAL APPEND PROPERTY KXAPI_COMPONENTS GenApi)

    set(cflags "")
    set(libs "")
    foreach(target KxApi::GenApi KxApi::GCBase)
        get_target_property(includeDir ${target} INTERFACE_INCLUDE_DIRECTORIES)
        get_target_property(library ${target} IMPORTED_LOCATION)
        list(APPEND cflags "-I${includeDir}")
        list(APPEND libs "${library}")
    endforeach()
    list(REMOVE_DUPLICATES cflags)
    list(JOIN cflags " " cflags)
    list(JOIN libs " " libs)
    file(CONFIGURE OUTPUT "${PROJECT_BINARY_DIR}/kxgenapi.pc" @ONLY CONTENT
        "Name: kxgenapi\nDescription: GenApi that the KxApi SDK was built against\nVersion: @PROJECT_VERSION@\nLibs: @libs@\nCflags: @cflags@\n")
    install(FILES "${PROJECT_BINARY_DIR}/kxgenapi.pc" DESTINATION "${KXAPI_INSTALL_PKGCONFIGDIR}" COMPONENT development)
endfunction()

# kxapi_install_pkgconfig(name LIBRARY library DESCRIPTION text [REQUIRES module...])
function(kxapi_install_pkgconfig name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "LIBRARY;DESCRIPTION" "REQUIRES")
    # The prefix is told relative to the file, so that an installation can be moved.
    cmake_path(SET pkgconfigDir NORMALIZE "${CMAKE_INSTALL_PREFIX}/${KXAPI_INSTALL_PKGCONFIGDIR}")
    file(RELATIVE_PATH prefixFromFile "${pkgconfigDir}" "${CMAKE_INSTALL_PREFIX}")
    string(REGEX REPLACE "/$" "" prefixFromFile "${prefixFromFile}")
    list(JOIN arg_REQUIRES ", " requires)
    configure_file("${PROJECT_SOURCE_DIR}/packaging/kxapi.pc.in" "${PROJECT_BINARY_DIR}/${name}.pc" @ONLY)
    install(FILES "${PROJECT_BINARY_DIR}/${name}.pc" DESTINATION "${KXAPI_INSTALL_PKGCONFIGDIR}" COMPONENT development)
endfunction()

# kxapi_install_package(): the package files; called once, after all components.
function(kxapi_install_package)
    get_property(KXAPI_COMPONENTS GLOBAL PROPERTY KXAPI_COMPONENTS)
    get_property(KXAPI_COMPONENT_REQUIREMENTS GLOBAL PROPERTY KXAPI_COMPONENT_REQUIREMENTS)
    configure_package_config_file(
        "${PROJECT_SOURCE_DIR}/packaging/KxApiConfig.cmake.in" "${PROJECT_BINARY_DIR}/KxApiConfig.cmake"
        INSTALL_DESTINATION "${KXAPI_INSTALL_CMAKEDIR}"
        NO_SET_AND_CHECK_MACRO
        NO_CHECK_REQUIRED_COMPONENTS_MACRO)
    write_basic_package_version_file("${PROJECT_BINARY_DIR}/KxApiConfigVersion.cmake" COMPATIBILITY SameMinorVersion)
    install(FILES "${PROJECT_BINARY_DIR}/KxApiConfig.cmake" "${PROJECT_BINARY_DIR}/KxApiConfigVersion.cmake"
        DESTINATION "${KXAPI_INSTALL_CMAKEDIR}"
        COMPONENT development)
endfunction()
