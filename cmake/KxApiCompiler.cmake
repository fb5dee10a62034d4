# SPDX-License-Identifier: Apache-2.0
# How everything of ours is compiled: language, places of the results, warnings, sanitizers.

set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

# One bin and one lib folder for the whole tree: programs find our libraries and producers there as they would find
# them in an installation.
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/bin")
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/lib")
set(CMAKE_ARCHIVE_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/lib")
set(KXAPI_PRODUCER_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/lib/kxapi/producers")

# Relative, so that both the build tree and an installation can be moved as a whole; this one is the programs', libraries
# have theirs from kxapi_configure_library. Packages for the system's own folders are built with CMAKE_SKIP_INSTALL_RPATH.
file(RELATIVE_PATH KXAPI_LIB_FROM_BIN "${CMAKE_INSTALL_FULL_BINDIR}" "${CMAKE_INSTALL_FULL_LIBDIR}")
set(CMAKE_INSTALL_RPATH "$ORIGIN/${KXAPI_LIB_FROM_BIN}")
set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)

if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
    set(CMAKE_BUILD_TYPE Release CACHE STRING "Build type" FORCE)
endif()
# Line tables cost nothing at run time and make stack traces of users' reports readable, but a tenth of the build.
set(CMAKE_CXX_FLAGS_RELEASE "-O2 -DNDEBUG")
if(KXAPI_LINE_TABLES)
    set(CMAKE_CXX_FLAGS_RELEASE "-O2 -g1 -DNDEBUG")
endif()

if(KXAPI_FUZZ)
    # Every object reports its coverage to libFuzzer, and every fault found has to stop the program.
    set(KXAPI_SANITIZE address undefined)
    add_compile_options(-fsanitize=fuzzer-no-link)
endif()
if(KXAPI_SANITIZE)
    list(JOIN KXAPI_SANITIZE "," KXAPI_SANITIZE_LIST)
    add_compile_options(-fsanitize=${KXAPI_SANITIZE_LIST} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${KXAPI_SANITIZE_LIST})
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        # The instrumentation confuses this flow analysis of GCC 12; the plain builds keep it as an error.
        add_compile_options(-Wno-error=maybe-uninitialized)
    endif()
endif()

set(KXAPI_WARNINGS
    -Wall
    -Wextra
    -Wpedantic
    -Wshadow
    -Wconversion
    -Wsign-conversion
    -Wnon-virtual-dtor
    -Woverloaded-virtual)
if(KXAPI_WERROR)
    # Packagers switch this off: another compiler warns of something else.
    list(APPEND KXAPI_WARNINGS -Werror)
endif()

# Applies to our own targets only; dependencies' headers come as system headers.
function(kxapi_target_warnings target)
    target_compile_options(${target} PRIVATE ${KXAPI_WARNINGS})
endfunction()
