# SPDX-License-Identifier: Apache-2.0
# What every library of the SDK has in common.

# kxapi_add_subdirectory_if_present(folder)
function(kxapi_add_subdirectory_if_present folder)
    if(EXISTS "${CMAKE_CURRENT_SOURCE_DIR}/${folder}/CMakeLists.txt")
        add_subdirectory(${folder})
    endif()
endfunction()

# kxapi_compile_jointly(target...): with KXAPI_COMPILE_JOINTLY up to 25 files of a target are compiled as one, which saves
# reading the same headers, and leaves two processors enough to share. The unnamed namespaces of its files must not use a
# name twice.
function(kxapi_compile_jointly)
    foreach(target IN LISTS ARGN)
        if(KXAPI_COMPILE_JOINTLY AND TARGET ${target})
            set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 25)
            target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-Wno-subobject-linkage>)
        endif()
    endforeach()
endfunction()

# kxapi_compile_quickly(target): with KXAPI_COMPILE_JOINTLY the target, which runs once at the start, isn't optimised. Its
# headers' templates for command lines take the compiler three times as long otherwise.
function(kxapi_compile_quickly target)
    if(KXAPI_COMPILE_JOINTLY)
        target_compile_options(${target} PRIVATE -O0)
    endif()
endfunction()

# kxapi_hide_others_names(target [FLOORS namespace...] [QT]): keeps what templates and inline functions of others' headers
# leave in a library out of its interface: those of the C++ library, of the namespaces of floors below, and of Qt.
# Programs would otherwise bind to such copies, and break when the next version of the library has them no more.
function(kxapi_hide_others_names target)
    cmake_parse_arguments(PARSE_ARGV 1 arg "QT" "" "FLOORS")
    set(scopes "St" "Sa" "Ss" "9__gnu_cxx")
    foreach(floor IN LISTS arg_FLOORS)
        string(LENGTH "${floor}" length)
        list(APPEND scopes "${length}${floor}")
    endforeach()
    if(arg_QT)
        list(APPEND scopes "[1-9]Q[A-Z]" "[1-9][0-9]Q[A-Z]" "9QtPrivate" "18QtMetaTypePrivate")
    endif()
    # Functions, constant ones, thunks, what is local to functions and its guards; tables and types.
    set(patterns _edata _end __bss_start "_ZSt*" "_ZT?St*" "_ZT?Sa*" "_ZT?PF*")
    foreach(scope IN LISTS scopes)
        foreach(kind IN ITEMS N NK ThnN ZN ZNK ZZN ZZNK GVN GVZN GVZNK GVZZN GVZZNK T?N)
            string(REPLACE "ThnN" "Thn[0-9]*_N" kind "${kind}")
            list(APPEND patterns "_Z${kind}${scope}*")
        endforeach()
    endforeach()
    list(JOIN patterns "; " patterns)
    set(map "${PROJECT_BINARY_DIR}/${target}.map")
    file(CONFIGURE OUTPUT "${map}" CONTENT "{ global: *; local: ${patterns}; };\n" @ONLY)
    target_link_options(${target} PRIVATE "-Wl,--version-script=${map}")
    set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS "${map}")
endfunction()

# kxapi_configure_library(target [FLOORS namespace...] [QT]): version, warnings, others' names hidden as above, and no
# undefined symbols (a forgotten library would otherwise show up only in the programs of users). Sanitizer runtimes are
# linked by the program, hence the exception.
function(kxapi_configure_library target)
    kxapi_hide_others_names(${target} ${ARGN})
    kxapi_target_warnings(${target})
    set_target_properties(${target} PROPERTIES
        INSTALL_RPATH "$ORIGIN"
        VERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR}
        SOVERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
    if(NOT KXAPI_SANITIZE)
        target_link_options(${target} PRIVATE -Wl,--no-undefined)
    endif()
endfunction()
