# SPDX-License-Identifier: Apache-2.0
# Debian packages, one per component of the installation; scripts/make-packages builds and checks them.

set(KXAPI_MAINTAINER "KxApi developers <kxapi@example.org>" CACHE STRING "Who packages name as their maintainer")
set(release "${PROJECT_VERSION}-1")
set(soname "${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR}")

# Laid out like the tree, or links between pages would lead nowhere; Debian has samples in a folder "examples".
set(documentation "${CMAKE_INSTALL_DATAROOTDIR}/doc/kxapi")
file(MAKE_DIRECTORY "${PROJECT_BINARY_DIR}/packaging")
install(FILES "${PROJECT_SOURCE_DIR}/README.md" DESTINATION "${documentation}" COMPONENT documentation)
install(DIRECTORY "${PROJECT_SOURCE_DIR}/docs" DESTINATION "${documentation}" COMPONENT documentation
    FILES_MATCHING PATTERN "*.md" PATTERN "*.png")
install(DIRECTORY "${PROJECT_SOURCE_DIR}/samples/" DESTINATION "${documentation}/examples" COMPONENT documentation)
file(CREATE_LINK examples "${PROJECT_BINARY_DIR}/packaging/samples" SYMBOLIC)
install(FILES "${PROJECT_BINARY_DIR}/packaging/samples" DESTINATION "${documentation}" COMPONENT documentation)

# What the binaries consist of: an SPDX document, and the notices of what is compiled in; the libraries' package has both.
set(spdx "${PROJECT_BINARY_DIR}/kxapi.spdx.json")
set(notices "${PROJECT_BINARY_DIR}/THIRD-PARTY-NOTICES.txt")
add_custom_command(OUTPUT "${spdx}" "${notices}"
    COMMAND "${PROJECT_SOURCE_DIR}/packaging/make-parts-list" ${PROJECT_VERSION} "${CMAKE_LIBRARY_OUTPUT_DIRECTORY}"
        "${spdx}" "${notices}"
    DEPENDS KxGenApi KxApiTL KxApiIP KxSimulator kx "${PROJECT_SOURCE_DIR}/packaging/make-parts-list"
        "${PROJECT_SOURCE_DIR}/packaging/dependencies.txt"
    COMMENT "Listing the parts" VERBATIM)
add_custom_target(parts-list ALL DEPENDS "${spdx}" "${notices}")
foreach(optional IN ITEMS KxApiGUI kxviewer KxAravis)
    if(TARGET ${optional})
        add_dependencies(parts-list ${optional})
    endif()
endforeach()
install(FILES "${spdx}" "${notices}" DESTINATION "${CMAKE_INSTALL_DATAROOTDIR}/doc/libkxapi${soname}" COMPONENT runtime)

# Debian has its manual pages compressed, without a time stamp.
install(CODE [[
    file(GLOB pages "$ENV{DESTDIR}${CMAKE_INSTALL_PREFIX}/share/man/man1/*.1")
    if(pages)
        execute_process(COMMAND gzip -9 -n -f ${pages} COMMAND_ERROR_IS_FATAL ANY)
    endif()]]
    COMPONENT viewer)

# kxapi_package(component name section SUMMARY text DESCRIPTION text [DEPENDS package...])
#
# What a package needs of others is found by dpkg-shlibdeps; DEPENDS adds what no library tells.
function(kxapi_package component name section)
    cmake_parse_arguments(PARSE_ARGV 3 arg "" "SUMMARY;DESCRIPTION" "DEPENDS;RECOMMENDS")
    string(TOUPPER "${component}" key)
    list(JOIN arg_DEPENDS ", " depends)
    list(JOIN arg_RECOMMENDS ", " recommends)
    # Files that dpkg keeps with each package; lintian wants changelogs compressed without a time stamp.
    set(folder "${PROJECT_BINARY_DIR}/packaging/${name}")
    file(MAKE_DIRECTORY "${folder}")
    configure_file("${PROJECT_SOURCE_DIR}/packaging/debian-copyright.in" "${folder}/copyright" @ONLY)
    string(TIMESTAMP KXAPI_PACKAGE_DATE "%a, %d %b %Y %H:%M:%S +0000" UTC)
    configure_file("${PROJECT_SOURCE_DIR}/packaging/debian-changelog.in" "${folder}/changelog.Debian" @ONLY)
    execute_process(COMMAND gzip -9 -n -k -f changelog.Debian WORKING_DIRECTORY "${folder}" COMMAND_ERROR_IS_FATAL ANY)
    install(FILES "${folder}/copyright" "${folder}/changelog.Debian.gz"
        DESTINATION "${CMAKE_INSTALL_DATAROOTDIR}/doc/${name}" COMPONENT ${component})
    set(overrides "${PROJECT_SOURCE_DIR}/packaging/lintian/${name}")
    if(EXISTS "${overrides}")
        install(FILES "${overrides}" DESTINATION "${CMAKE_INSTALL_DATAROOTDIR}/lintian/overrides" COMPONENT ${component})
    endif()
    set(CPACK_DEBIAN_${key}_PACKAGE_NAME "${name}" PARENT_SCOPE)
    set(CPACK_DEBIAN_${key}_FILE_NAME DEB-DEFAULT PARENT_SCOPE)
    set(CPACK_DEBIAN_${key}_PACKAGE_SECTION "${section}" PARENT_SCOPE)
    set(CPACK_DEBIAN_${key}_PACKAGE_DEPENDS "${depends}" PARENT_SCOPE)
    set(CPACK_DEBIAN_${key}_PACKAGE_RECOMMENDS "${recommends}" PARENT_SCOPE)
    # The first line is the synopsis.
    set(CPACK_DEBIAN_${key}_DESCRIPTION "${arg_SUMMARY}\n${arg_DESCRIPTION}" PARENT_SCOPE)
    set(CPACK_COMPONENTS_ALL ${CPACK_COMPONENTS_ALL} ${component} PARENT_SCOPE)
endfunction()

set(CPACK_COMPONENTS_ALL "")
kxapi_package(runtime libkxapi${soname} libs
    SUMMARY "windows and transport for machine-vision cameras"
    DESCRIPTION "Libraries of the KxApi SDK: GenICam node maps, GenTL transport, image\nconversion and files, and ready-made windows."
    DEPENDS libminizip1) # loaded when a zipped description is read, which no library tells
kxapi_package(development libkxapi-dev libdevel
    SUMMARY "windows and transport for machine-vision cameras (development)"
    DESCRIPTION "Headers, CMake package and pkg-config files of the KxApi SDK."
    DEPENDS "libkxapi${soname} (= ${release})")
kxapi_package(viewer kxapi-viewer science
    SUMMARY "viewer and command-line tool for machine-vision cameras"
    DESCRIPTION "kxviewer shows live images of GenICam cameras with their features, measures and\nsaves; kx lists, sets, grabs and converts on the command line."
    DEPENDS "libkxapi${soname} (= ${release})"
    RECOMMENDS "kxapi-producers")
kxapi_package(producers kxapi-producers science
    SUMMARY "GenTL producers for network, USB and simulated cameras"
    DESCRIPTION "Let programs with a GenTL consumer use GigE Vision and USB3 Vision cameras, and\nsimulated ones that need no camera at all.")
kxapi_package(documentation kxapi-doc doc
    SUMMARY "documentation and samples of the KxApi SDK"
    DESCRIPTION "How to use the windows and libraries of the KxApi SDK, references of their\nfeatures, and short programs to begin with.")

set(CPACK_GENERATOR DEB)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_PACKAGE_DIRECTORY "${PROJECT_BINARY_DIR}/packages")
set(CPACK_PACKAGING_INSTALL_PREFIX "/usr")
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGE_CONTACT "${KXAPI_MAINTAINER}")
set(CPACK_DEBIAN_PACKAGE_VERSION "${PROJECT_VERSION}")
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_ARCHITECTURE all)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SHLIBDEPS OFF)
set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_SHLIBDEPS OFF)
# The packages see each other's libraries: the tools' one depends on the libraries' one.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${PROJECT_BINARY_DIR}/lib")
# New libraries are made known by a trigger of dpkg, no script of ours.
file(WRITE "${PROJECT_BINARY_DIR}/packaging/triggers" "activate-noawait ldconfig\n")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA "${PROJECT_BINARY_DIR}/packaging/triggers")
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY "=")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
include(CPack)
