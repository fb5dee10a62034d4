# SPDX-License-Identifier: Apache-2.0
# Takes floor 0 from another installation of the standard's GenApi interface at KXAPI_GENAPI_ROOT. File names of such
# libraries carry compiler and version in ways that differ, so they are found by the part that never does.
# Used by our own build, and as component GenApi of a package that was built this way.

function(kxapi_import_genapi_library target header stem)
    find_path(KXAPI_${stem}_INCLUDE_DIR ${header}
        PATHS "${KXAPI_GENAPI_ROOT}"
        PATH_SUFFIXES include include/kxapi library/CPP/include
        NO_DEFAULT_PATH)
    file(GLOB_RECURSE libraries "${KXAPI_GENAPI_ROOT}/lib*/*${stem}*.so" "${KXAPI_GENAPI_ROOT}/bin/*${stem}*.so")
    if(NOT KXAPI_${stem}_INCLUDE_DIR OR NOT libraries)
        message(FATAL_ERROR "KXAPI_GENAPI_ROOT=${KXAPI_GENAPI_ROOT} holds no <${header}> or no *${stem}*.so")
    endif()
    list(GET libraries 0 library)
    add_library(${target} SHARED IMPORTED GLOBAL)
    set_target_properties(${target} PROPERTIES
        IMPORTED_LOCATION "${library}"
        INTERFACE_INCLUDE_DIRECTORIES "${KXAPI_${stem}_INCLUDE_DIR}")
endfunction()

if(TARGET KxApi::GenApi)
    return()
endif()
kxapi_import_genapi_library(KxApi::GCBase Base/GCString.h GCBase)
kxapi_import_genapi_library(KxApi::GenApi GenApi/GenApi.h GenApi)
set_property(TARGET KxApi::GenApi APPEND PROPERTY INTERFACE_LINK_LIBRARIES KxApi::GCBase)
