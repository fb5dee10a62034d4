# SPDX-License-Identifier: Apache-2.0
# What every library of the SDK has in common.

# kxapi_add_subdirectory_if_present(folder)
function(kxapi_add_subdirectory_if_present folder)
    if(EXISTS "${CMAKE_CURRENT_SOURCE_DIR}/${folder}/CMakeLists.txt")
        add_subdirectory(${folder})
    endif()
endfunction()

# kxapi_configure_library(target): version, warnings, and no undefined symbols (a forgotten library would otherwise show
# up only in the programs of users). Sanitizer runtimes are linked by the program, hence the exception.
function(kxapi_configure_library target)
    kxapi_target_warnings(${target})
    set_target_properties(${target} PROPERTIES
        INSTALL_RPATH "$ORIGIN"
        VERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR}
        SOVERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
    if(NOT KXAPI_SANITIZE)
        target_link_options(${target} PRIVATE -Wl,--no-undefined)
    endif()
endfunction()
